#pragma once

// The rights of users, as they are set; Access_Allowed says what follows from them. Administrators have all.
// All of it throws EData_Error.

#include <optional>
#include <string_view>

namespace Kt_data_01 {

struct TRights {
  bool Create = false, Update = false, Delete = false, See = false;
};
/// Stands for every user without rights of their own on an owner.
inline constexpr std::string_view Global_User = "GLOBAL";
/// The owner of rights that hold where nothing nearer has some, in all books.
inline constexpr std::string_view Whole_Database = "";
/// `owner` is the key of a contact, folder, calendar record or book, or Whole_Database; inside an update
/// bracket.
void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights);
/// What Set_Rights has set for just this owner and user.
std::optional<TRights> Find_Rights(std::string_view owner, std::string_view user);

}  // namespace Kt_data_01
