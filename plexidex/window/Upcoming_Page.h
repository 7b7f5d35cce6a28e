#pragma once

#include "Kt_event_key.h"
#include "Page_Place.h"

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

/// The entries of a book from today on, by day.
class TUpcoming_Page : public TBook_Page {
  Q_OBJECT

 public:
  TUpcoming_Page();
  /// Tasks alone, or all entries and the holidays.
  void Show_Tasks_Only(bool tasks) { tasks_only = tasks; }
  void Reload() override;

 private:
  const Kt_data_01::TEventKey* Entry_Of(const QTreeWidgetItem* item) const;
  const Kt_data_01::TEventKey* Selected_For(int level) const;
  void Open(const QTreeWidgetItem* item);
  void Delete();
  void Toggle_Done();

  bool tasks_only = false;
  QLabel* heading;
  QTreeWidget* list;
  Kt_data_01::TEventKey_List entries;
};

}  // namespace Plexidex
