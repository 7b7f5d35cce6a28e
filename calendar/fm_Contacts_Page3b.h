#pragma once

#include "Calendar_View.h"

namespace Ui {
class Contacts_Page3b_Frm;
class View_Tools;
}  // namespace Ui

namespace KTReminds {

/// The day view: the entries and holidays of CurrentDate.
class TContacts_Page3b_Frm : public TCalendar_View {
  Q_OBJECT

 public:
  TContacts_Page3b_Frm();
  ~TContacts_Page3b_Frm() override;

  void DoRefresh() override;

 private:
  void Step_Day(int days);

  std::unique_ptr<Ui::Contacts_Page3b_Frm> ui;
  std::unique_ptr<Ui::View_Tools> tools;
};

/// Shows the day view in a parent, in place of the page that the reference holds, if that is another one.
/// With `WholeCalendar` it shows all entries of the book `NodeKey`, otherwise those of the owner. False, with
/// nothing changed, when the other page refuses to close.
bool Display_Calendar_Dayview(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                              const std::string& OwnerKey, bool WholeCalendar);

}  // namespace KTReminds
