#pragma once

#include "Kt_event_key.h"
#include "Page_Place.h"

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

/// The entries and holidays of a book from today on, by day.
class TUpcoming_Page : public TBook_Page {
  Q_OBJECT

 public:
  TUpcoming_Page();
  void Reload() override;

 private:
  const Kt_data_01::TEventKey* Entry_Of(const QTreeWidgetItem* item) const;
  const Kt_data_01::TEventKey* Selected_For(int level) const;
  void Open(const QTreeWidgetItem* item);
  void Delete();
  void Toggle_Done();

  QLabel* heading;
  QTreeWidget* list;
  Kt_data_01::TEventKey_List entries;
};

}  // namespace Plexidex
