#include "Users.h"

#include <algorithm>
#include <array>

#include "Database.h"
#include "In_Quotes.h"
#include "Kt_util_01.h"
#include "Rights.h"
#include "Row_Sets.h"

namespace Kt_data_01 {

bool DB_Permissions = false, DB_Secure = false;

namespace {

constexpr const char* Gone = "The user has been removed meanwhile.";

TAccount Read_Account(const TTable& users) {
  return {std::string(users.Text(users.Field("Key"))), std::string(users.Text(users.Field("Name"))),
          users.Boolean(users.Field("Administrator")), !users.Text(users.Field("Password")).empty()};
}

// Whether somebody else can still set up users and security.
bool Is_Last_Administrator(std::string_view user) {
  const auto accounts = List_Accounts();
  return std::none_of(accounts.begin(), accounts.end(), [&](const TAccount& one) {
    return one.Key != user && one.Administrator && (one.Has_Password || !DB_Secure);
  });
}

std::string Last_Administrator_Fault(const TAccount& account) {
  return In_Quotes(account.Name) + " is the last administrator" + (DB_Secure ? " with a password" : "") +
         "; make somebody else an administrator first.";
}

std::string Name_Fault(std::string_view name, std::string_view own) {
  if (name.empty()) return "A user needs a name.";
  const TAccount same = Find_Account(name);
  if (same.Key.empty() || same.Key == own) return {};
  return "There is a user " + In_Quotes(same.Name) + " already; choose another name.";
}

void Edit_User(std::string_view user, std::string_view column, const TValue& value) {
  TTable users("KT_Users", "Key");
  if (!users.FindKey({user})) return;
  users.Edit();
  users.Set(users.Field(column), value);
  PostUpdate(users);
}

// Rows of which a user has one for each thing: what the heir has too goes.
void Leave_Pairs(std::string_view table, std::string_view thing, std::string_view user,
                 std::string_view heir) {
  std::vector<std::string> things;
  TTable rows(table);
  const TIndex_Def& index = Table_Def(table).Indexes.front();
  rows.Set_Index(index.Name);
  rows.SetRange({user}, {user});
  for (rows.First(); !rows.Eof(); rows.Next()) things.emplace_back(rows.Text(rows.Field(thing)));
  rows.CancelRange();
  for (const std::string& one : things) {
    const bool has_both = rows.FindKey({heir, one});
    if (!rows.FindKey({user, one})) continue;
    if (has_both) {
      rows.Delete();
      continue;
    }
    rows.Edit();
    rows.Set(rows.Field("User"), heir);
    PostUpdate(rows);
  }
}

// A filter whose name the heir uses already gets the former user's name behind its own.
void Leave_Filters(const TAccount& user, std::string_view heir) {
  struct TName {
    std::string Book, Name;
  };
  std::vector<TName> names;
  TTable filters(Filters_Table, "User");
  const TField book = filters.Field("BookKey"), name = filters.Field("Name");
  filters.SetRange({user.Key}, {user.Key});
  for (filters.First(); !filters.Eof(); filters.Next())
    names.push_back({std::string(filters.Text(book)), std::string(filters.Text(name))});
  filters.CancelRange();
  for (const TName& one : names) {
    std::string free = one.Name;
    while (filters.FindKey({heir, one.Book, free})) free += " (" + user.Name + ")";
    if (!filters.FindKey({user.Key, one.Book, one.Name})) continue;
    filters.Edit();
    filters.Set(filters.Field("User"), heir);
    filters.Set(name, free);
    PostUpdate(filters);
  }
}

}  // namespace

std::vector<TAccount> List_Accounts() {
  std::vector<TAccount> accounts;
  TTable users("KT_Users");
  for (users.First(); !users.Eof(); users.Next()) accounts.push_back(Read_Account(users));
  std::sort(accounts.begin(), accounts.end(),
            [](const TAccount& a, const TAccount& b) { return Kt_util_01::CompareText(a.Name, b.Name) < 0; });
  return accounts;
}

TAccount Find_Account(std::string_view name) {
  for (TAccount& one : List_Accounts()) {
    if (Kt_util_01::CompareText(one.Name, name) == 0) return std::move(one);
  }
  return {};
}

TAccount Account_Of(std::string_view user) {
  TTable users("KT_Users", "Key");
  return users.FindKey({user}) ? Read_Account(users) : TAccount();
}

std::string Get_UserName(std::string_view user) {
  for (const TUser& known : Get_User_List()) {
    if (known.Key == user) return known.Name;
  }
  return {};
}

std::vector<TUser> Get_User_List() {
  std::vector<TUser> users;
  for (const TAccount& one : List_Accounts()) users.push_back({one.Key, one.Name});
  if (users.empty()) users.push_back({Kt_util_01::User_Key(), "Owner"});
  return users;
}

std::string Database_Owner() {
  return Stored_Setting("Owner");
}

std::string Database_Identity() {
  const std::string identity = Stored_Setting("Identity");
  return identity.empty() ? Database_Owner() : identity;
}

std::string Administrator_Fault() {
  Follow_Users();
  if (!DB_Permissions || Account_Of(Kt_util_01::User_Key()).Administrator) return {};
  return "Only an administrator may set up users and the security of the database.";
}

std::string Create_User(std::string_view name, bool administrator, std::string_view key) {
  std::string used = key.empty() ? Kt_util_01::Get_GUID() : std::string(key);
  TTable cursor("KT_Users");
  cursor.Insert();
  cursor.SetFields({used, name, administrator});
  PostUpdate(cursor);
  return used;
}

std::string Add_User(std::string_view name, bool administrator, std::string& key) {
  std::string fault = Administrator_Fault();
  if (fault.empty()) fault = Name_Fault(name, {});
  if (!fault.empty()) return fault;
  const bool first = List_Accounts().empty();
  key = Create_User(name, administrator || first, first ? Database_Owner() : std::string());
  if (first && !Find_Rights(Whole_Database, Global_User))
    Set_Rights(Whole_Database, Global_User, {true, true, true, true});
  return {};
}

std::string Rename_User(std::string_view user, std::string_view name) {
  std::string fault = Administrator_Fault();
  if (fault.empty() && Account_Of(user).Key.empty()) fault = Gone;
  if (fault.empty()) fault = Name_Fault(name, user);
  if (fault.empty()) Edit_User(user, "Name", name);
  return fault;
}

std::string Set_Administrator(std::string_view user, bool administrator) {
  std::string fault = Administrator_Fault();
  const TAccount account = Account_Of(user);
  if (fault.empty() && account.Key.empty()) fault = Gone;
  if (!fault.empty() || account.Administrator == administrator) return fault;
  if (!administrator && Is_Last_Administrator(user)) return Last_Administrator_Fault(account);
  Edit_User(user, "Administrator", administrator);
  return {};
}

std::string Remove_User(std::string_view user, std::string_view heir) {
  if (std::string fault = Administrator_Fault(); !fault.empty()) return fault;
  const TAccount account = Account_Of(user);
  if (account.Key.empty() || Account_Of(heir).Key.empty()) return Gone;
  if (account.Administrator && Is_Last_Administrator(user)) return Last_Administrator_Fault(account);
  if (user == heir) return "Name somebody else who gets what belongs to " + In_Quotes(account.Name) + ".";
  for (const auto& [table, column] : {std::pair("KT_Contacts", "User"),
                                      {"KT_Contacts", "ModifiedBy"},
                                      {"KT_Events", "User"},
                                      {"KT_Log", "PrivateTo"},
                                      {"KT_Alarms", "User"},
                                      {"KT_Alerts", "User"}})
    Replace_In_Rows(table, column, user, heir);
  Leave_Pairs("KT_Flags", "Contact", user, heir);
  Leave_Pairs("KT_Open_Editors", "Event", user, heir);
  Leave_Filters(account, heir);
  Delete_Rows("KT_Rights", "User", user);
  Delete_Rows("KT_Users", "Key", user);
  if (Database_Owner() == user) {
    Store_Setting("Identity", Database_Identity());
    const std::vector<TAccount> accounts = List_Accounts();
    const auto owner = std::find_if(accounts.begin(), accounts.end(),
                                    [](const TAccount& each) { return each.Administrator; });
    Store_Setting("Owner", Account_Of(heir).Administrator ? heir : owner->Key);
  }
  return {};
}

std::string Set_Password(std::string_view user, std::string_view hash) {
  std::string fault = user == Kt_util_01::User_Key() ? std::string() : Administrator_Fault();
  if (fault.empty() && Account_Of(user).Key.empty()) fault = Gone;
  if (fault.empty()) Store_Password(user, hash);
  return fault;
}

void Store_Password(std::string_view user, std::string_view hash) {
  Edit_User(user, "Password", hash);
  Edit_User(user, "Failures", 0);
}

std::string Set_Secure(bool secure) {
  std::string fault = Administrator_Fault();
  if (fault.empty() && secure && !Account_Of(Kt_util_01::User_Key()).Has_Password)
    fault = "Set a password for yourself first: without one nobody could set up the database any more.";
  if (fault.empty()) Store_Setting("Secure", secure ? "1" : "");
  return fault;
}

std::string Stored_Setting(std::string_view name) {
  TTable settings("KT_Settings", "Name");
  return settings.FindKey({name}) ? std::string(settings.Text(settings.Field("Value"))) : std::string();
}

void Store_Setting(std::string_view name, std::string_view value) {
  TTable settings("KT_Settings", "Name");
  if (settings.FindKey({name})) {
    settings.Edit();
  } else {
    settings.Insert();
  }
  settings.SetFields({name, value});
  PostUpdate(settings);
}

void Follow_Users() {
  static const std::size_t users = Table_Number(Table_Def("KT_Users")),
                           settings = Table_Number(Table_Def("KT_Settings"));
  static std::array<std::uint64_t, 3> seen{};
  TDatabase& database = Shared_Database();
  if (!database.Is_Open()) {
    DB_Permissions = DB_Secure = false;
    return;
  }
  if (!database.Is_Stable()) TSnapshot glance;  // notices changes of other connections
  const std::array<std::uint64_t, 3> now{database.Opening(), database.Table_Serial(users),
                                         database.Table_Serial(settings)};
  if (now == seen) return;
  TTable table("KT_Users");
  table.First();
  DB_Permissions = !table.Eof();
  DB_Secure = DB_Permissions && !Stored_Setting("Secure").empty();
  seen = now;
}

}  // namespace Kt_data_01
