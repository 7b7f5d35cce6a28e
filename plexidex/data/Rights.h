#pragma once

// The rights of users, as they are set; Access_Allowed says what follows from them. Administrators have all.
// All of it throws EData_Error.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

struct TRights {
  bool Create = false, Update = false, Delete = false, See = false;
};
/// Stands for every user without rights of their own on an owner.
inline constexpr std::string_view Global_User = "GLOBAL";
/// The owner of rights that hold where nothing nearer has some, in all books. Whether a user may make books
/// is asked for it.
inline constexpr std::string_view Whole_Database = "";
/// `owner` is the key of a contact, folder, calendar record or book, or Whole_Database; inside an update
/// bracket.
void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights);
/// What Set_Rights has set for just this owner and user.
std::optional<TRights> Find_Rights(std::string_view owner, std::string_view user);

/// Takes them back, so that those of what lies above hold again; inside an update bracket.
void Clear_Rights(std::string_view owner, std::string_view user);

struct TNearest_Rights {
  std::string Owner, User;  // for whom they are set
  TRights Rights;
};
/// What holds for a user who is no administrator, or for Global_User: what is set for the owner, or else for
/// the nearest folder, the book or the whole database; for the user, or else for everybody.
/// Nothing when nobody has set anything.
std::optional<TNearest_Rights> Nearest_Rights(std::string_view owner, std::string_view user);

/// The contacts, folders and calendar record of a book for which rights are set: all others of the book have
/// those of one of them, of the book or of the whole database.
std::vector<std::string> Owners_With_Rights(std::string_view book);

}  // namespace Kt_data_01
