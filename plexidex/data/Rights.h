#pragma once

// Users and their rights, as an administrator sets them; Access_Allowed says what follows from them. To be
// called inside an update bracket; throw EData_Error.

#include <string>
#include <string_view>

namespace Kt_data_01 {

/// A database that has users grants rights only by Set_Rights, except to administrators.
std::string Create_User(std::string_view name, bool administrator);

struct TRights {
  bool Create = false, Update = false, Delete = false, See = false;
};
/// Stands for every user without rights of their own on an owner.
inline constexpr std::string_view Global_User = "GLOBAL";
/// `owner` is the key of a contact, folder, calendar record or book.
void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights);

}  // namespace Kt_data_01
