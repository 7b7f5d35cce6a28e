#pragma once

// Books, contacts, users and their rights, as the host keeps them. What writes must be called inside an
// update bracket, and throws EData_Error.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// Owner of rights rows that hold for every user.
inline constexpr std::string_view Global_User = "GLOBAL";

struct TBook {
  std::string Key, Name;
  std::string Calendar;  // key of the book's calendar record
};

/// In the order they were made.
std::vector<TBook> List_Books();
/// The book of exactly this name.
std::optional<TBook> Find_Book(std::string_view name);
/// With its calendar record.
TBook Create_Book(std::string_view name);

/// Returns the key of the new contact or folder; `parent` is a folder of the same book or empty.
std::string Create_Contact(std::string_view book, std::string_view display_name, std::string_view parent = {},
                           int type = Contact_Type_Contact);
/// Deleted contacts are kept, with their entries, and can be restored. False when there is no such contact.
bool Set_Contact_Deleted(std::string_view contact, bool deleted);

/// The first user makes the database one with users, in which everybody but administrators needs rights.
std::string Create_User(std::string_view name, bool administrator);
struct TRights {
  bool Create = false, Update = false, Delete = false, See = false;
};
/// `owner` is a contact, folder, calendar record or book; `user` may be Global_User.
void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights);

}  // namespace Kt_data_01
