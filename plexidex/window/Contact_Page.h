#pragma once

#include "Page_Place.h"

class QLabel;
class QPushButton;
class QTabBar;

namespace Plexidex {

class TContact_Details_View;

/// A contact: name and details, and below the contact's own calendar in the view that was shown last, its
/// tasks, its links or its journal.
class TContact_Page : public TBook_Page {
  Q_OBJECT

 public:
  TContact_Page();
  void Reload() override;

 signals:
  /// Name or details were changed here.
  void Contact_Changed();

 protected:
  bool FormCloseQuery() override;
  void FormClose() override;
  void Handle_Message(const Kt_forms::TMessage& message) override;
  /// The calendar looks for itself.
  void Rows_Changed() override { Show_Contact(); }

 private:
  void Show_Contact();
  /// Another page than a view of the calendar is the day.
  void Show_View(int page);
  void Show_Tab();
  void Show_Details();
  void Edit();
  void Permit();
  void Tag();

  QLabel* name;
  QPushButton *tag, *edit, *permissions;
  TContact_Details_View* details;
  QTabBar* tabs;
  QWidget* view_panel;
  Kt_forms::TForm_Reference view;
};

}  // namespace Plexidex
