#pragma once

#include "Calendar_View.h"

namespace Ui {
class Contacts_Page3d_Frm;
class View_Tools;
}  // namespace Ui

namespace KTReminds {

/// The all-events view: the entries of all days, without holidays.
class TContacts_Page3d_Frm : public TCalendar_View {
  Q_OBJECT

 public:
  TContacts_Page3d_Frm();
  ~TContacts_Page3d_Frm() override;

  /// Shows the first rows early where they are known before the others, and what is going on all the while.
  /// Refused from inside itself. The page may be closed meanwhile, which ends it, or be shown for somebody
  /// else, whose entries it goes on to then.
  void DoRefresh() override;

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;

 private:
  void Set_Up_Commands();
  void Fill_List();

  std::unique_ptr<Ui::Contacts_Page3d_Frm> ui;
  std::unique_ptr<Ui::View_Tools> tools;
  bool building = false;
};

/// Shows the all-events view in a parent, in place of the page that the reference holds, if that is another
/// one. With `WholeCalendar` it shows all entries of the book `NodeKey`, otherwise those of the owner. False,
/// with nothing changed, when the other page refuses to close.
bool Display_Calendar_Allview(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                              const std::string& OwnerKey, bool WholeCalendar);

}  // namespace KTReminds
