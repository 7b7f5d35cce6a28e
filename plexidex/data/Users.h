#pragma once

// The users of a database. A database without users belongs to its owner, who may do everything in it; the
// first user that is added is this owner. What changes users must be called inside an update bracket, gives
// "" when it is done, and otherwise says as a sentence for the user why it was not; in a database with users
// only an administrator may. All of it throws EData_Error.

#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

struct TAccount {
  std::string Key, Name;
  bool Administrator = false, Has_Password = false;
};
/// By name; none in a database without users.
std::vector<TAccount> List_Accounts();
/// The one of this name, in whatever case; its key is "" when there is none.
TAccount Find_Account(std::string_view name);
/// The one with this key; its key is "" when there is none.
TAccount Account_Of(std::string_view user);

/// The key under which a database without users writes, and which its first user keeps.
std::string Database_Owner();
/// By what a database is known from others, also in its backups; stays when its owner is removed.
std::string Database_Identity();

/// The first one becomes an administrator, and then everybody may do everything until rights say otherwise.
std::string Add_User(std::string_view name, bool administrator, std::string& key);
std::string Rename_User(std::string_view user, std::string_view name);
/// The last administrator who can log in stays one, in this and in Remove_User.
std::string Set_Administrator(std::string_view user, bool administrator);
/// Leaves entries, contacts, filters, alarms and tags to the heir, and no rights.
std::string Remove_User(std::string_view user, std::string_view heir);
/// What Hash_Password gave. Users may also set their own.
std::string Set_Password(std::string_view user, std::string_view hash);
/// Whether passwords are asked for. Not before the current user has one.
std::string Set_Secure(bool secure);
/// Why the current user may not do what is for administrators, or "".
std::string Administrator_Fault();

/// Of a user who is there; forgets wrong passwords.
void Store_Password(std::string_view user, std::string_view hash);
/// The row alone, with a new key unless one is given.
std::string Create_User(std::string_view name, bool administrator, std::string_view key = {});

/// A value of the database's own settings; "" when there is none.
std::string Stored_Setting(std::string_view name);
/// Inside an update bracket.
void Store_Setting(std::string_view name, std::string_view value);

/// Sets DB_Permissions and DB_Secure by the open database, if its users have changed, by whomever.
void Follow_Users();

}  // namespace Kt_data_01
