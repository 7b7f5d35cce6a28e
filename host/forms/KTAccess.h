#pragma once

// Permissions and passwords: windows of the host that the module opens.

#include <string>

#include "Kt_forms.h"

namespace KTAccess {

/// The page on which the rights on an owner's objects are set.
class TPermissions_Page : public Kt_forms::TForm {
  Q_OBJECT

 public:
  using TForm::TForm;
  virtual void Set_Title(const std::string& title) = 0;
  /// What the rights mean for the kind of object shown; hidden until asked for.
  virtual void Show_Explanation() = 0;
};

/// What the permissions are for.
enum TKind { Kind_Calendar, Kind_Contact, Kind_Folder, Kind_Book };
/// Embeds the page for an owner, a contact, folder or calendar record of the book `node`, or the book itself;
/// "" is the book's calendar. `in_dialog` leaves out its frame. Who may not change the permissions sees them
/// read-only too. False, with nothing changed, when the page in the reference refuses to close.
bool Display_Permissions_Page(QWidget* parent, Kt_forms::TForm_Reference& form, bool in_dialog,
                              const std::string& node, const std::string& owner, int kind, bool read_only);
/// Lets the current user change the password by which the database is opened.
void Change_Password();

}  // namespace KTAccess
