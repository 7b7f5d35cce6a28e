#pragma once

#include <string>

#include "Kt_forms.h"

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

/// The entries of a book from today on, by day.
class TUpcoming_Page : public Kt_forms::TForm {
  Q_OBJECT

 public:
  explicit TUpcoming_Page(QWidget* parent = nullptr);
  /// Shows a book, or none.
  void Show_Book(const std::string& book_key, const std::string& calendar_key);
  void Reload();

  void New_Event();
  void New_Task();

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;

 private:
  void Open(QTreeWidgetItem* item);
  void Delete();
  void Toggle_Done();

  std::string book, calendar;
  QLabel* heading;
  QTreeWidget* list;
};

}  // namespace Plexidex
