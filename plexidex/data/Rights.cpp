#include "Rights.h"

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

#include "Database.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

// Both are for databases with users, which the windows cannot set up yet.
bool DB_Permissions = false, DB_Secure = false;

namespace {

// Caches the rights by owner until a table that they depend on changes.
class TRights_Cache {
 public:
  bool Allowed(std::string_view owner, int level, std::string_view user) {
    Keep_Up();
    if (open) return true;
    if (level < Access_Create || level > Access_See) return false;
    if (user.empty()) user = Kt_util_01::User_Key();
    if (user != current) {
      current = user;
      answers.clear();
      administrator = Is_Administrator(user);
    }
    if (administrator) return true;
    auto [answer, fresh] = answers.try_emplace(std::string(owner));
    if (fresh) answer->second = Levels_Of(owner, user);
    return answer->second[static_cast<std::size_t>(level - 1)];
  }

 private:
  using TLevels = std::array<bool, 4>;

  void Keep_Up() {
    TDatabase& database = Shared_Database();
    if (!database.Is_Stable()) TSnapshot glance;  // notices changes of other connections
    const std::array<std::uint64_t, 4> now{database.Opening(), database.Table_Serial(users),
                                           database.Table_Serial(rights), database.Table_Serial(contacts)};
    if (now == seen) return;
    seen = now;
    answers.clear();
    current.clear();
    TTable table("KT_Users");
    table.First();
    open = table.Eof();
  }

  static bool Is_Administrator(std::string_view user) {
    TTable table("KT_Users", "Key");
    return table.FindKey({user}) && table.Boolean(table.Field("Administrator"));
  }

  static std::optional<TLevels> Find_Levels(std::string_view owner, std::string_view user) {
    TTable table("KT_Rights", "OwnerandUser");
    if (!table.FindKey({owner, user}) && !table.FindKey({owner, Global_User})) return {};
    return TLevels{table.Boolean(table.Field("Level1")), table.Boolean(table.Field("Level2")),
                   table.Boolean(table.Field("Level3")), table.Boolean(table.Field("Level4"))};
  }

  // The owner's own rights, or else those of the nearest folder that has some, or of its book.
  static TLevels Levels_Of(std::string_view owner, std::string_view user) {
    constexpr int Deepest_Folder = 64;  // also ends a cycle of folders
    std::string at(owner), book;
    TTable table("KT_Contacts", "Key");
    const TField parent = table.Field("Parent"), book_field = table.Field("Book");
    for (int depth = 0; depth < Deepest_Folder && !at.empty(); ++depth) {
      if (const auto levels = Find_Levels(at, user)) return *levels;
      if (!table.FindKey({at})) break;
      book = table.Text(book_field);
      at = table.Text(parent);
    }
    return book.empty() ? TLevels{} : Find_Levels(book, user).value_or(TLevels{});
  }

  const std::size_t users = Table_Number(Table_Def("KT_Users"));
  const std::size_t rights = Table_Number(Table_Def("KT_Rights"));
  const std::size_t contacts = Table_Number(Table_Def("KT_Contacts"));
  std::array<std::uint64_t, 4> seen{};
  bool open = true;
  bool administrator = false;
  std::string current;
  std::unordered_map<std::string, TLevels> answers;
};

TRights_Cache& Cache() {
  static TRights_Cache cache;
  return cache;
}

}  // namespace

bool Access_Allowed(std::string_view owner, int level, std::string_view user) {
  return Cache().Allowed(owner, level, user);
}

std::string Get_UserName(std::string_view user) {
  for (const TUser& known : Get_User_List()) {
    if (known.Key == user) return known.Name;
  }
  return {};
}

std::vector<TUser> Get_User_List() {
  std::vector<TUser> users;
  TTable table("KT_Users", "Name");
  const TField key = table.Field("Key"), name = table.Field("Name");
  for (table.First(); !table.Eof(); table.Next()) {
    users.push_back({std::string(table.Text(key)), std::string(table.Text(name))});
  }
  if (users.empty()) users.push_back({Kt_util_01::User_Key(), "Owner"});
  return users;
}

std::string Create_User(std::string_view name, bool administrator) {
  std::string key = Kt_util_01::Get_GUID();
  TTable cursor("KT_Users");
  cursor.Insert();
  cursor.SetFields({key, name, administrator});
  PostUpdate(cursor);
  return key;
}

void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights) {
  TTable cursor("KT_Rights", "OwnerandUser");
  if (cursor.FindKey({owner, user})) {
    cursor.Edit();
  } else {
    cursor.Insert();
  }
  cursor.SetFields({owner, user, rights.Create, rights.Update, rights.Delete, rights.See});
  PostUpdate(cursor);
}

}  // namespace Kt_data_01
