#pragma once

// The rights on one owner, a contact, folder, calendar record or book, as they are shown to be changed. All
// of it throws EData_Error.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Rights.h"

namespace Kt_data_01 {

/// Of a user, or of everybody.
struct TPermission_Row {
  std::string User, Name;
  bool Administrator = false;
  bool Own = false;  // set for just this owner, and not inherited
  TRights Rights;
  std::string Remark;  // where they come from
};
struct TPermissions {
  std::string Of;     // 'the folder "Friends"'; "" when it is gone
  std::string Fault;  // why the current user may not change them, or ""
  std::vector<TPermission_Row> Rows;
};
/// Everybody first, and then the users by name.
TPermissions Read_Permissions(std::string_view owner);

/// Sets the rights of a user, or of Global_User, for just this owner, or takes them back. Administrators may,
/// and who owns the contact, the folder, or the calendar of the book. Must be called inside an update
/// bracket, gives "" when it is done, and otherwise says as a sentence for the user why the bracket must be
/// undone.
std::string Change_Permissions(std::string_view owner, std::string_view user,
                               const std::optional<TRights>& rights);

}  // namespace Kt_data_01
