#include "Rights.h"

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

#include "Database.h"
#include "Kt_util_01.h"
#include "Users.h"

namespace Kt_data_01 {

namespace {

// Caches the rights by owner until a table that they depend on changes.
class TRights_Cache {
 public:
  bool Allowed(std::string_view owner, int level, std::string_view user) {
    Keep_Up();
    if (!DB_Permissions) return true;
    if (level < Access_Create || level > Access_See) return false;
    if (user.empty()) user = Kt_util_01::User_Key();
    if (user != current) {
      answers.clear();
      account = Account_Of(user);
      current = user;
    }
    // Nobody has logged in, or somebody who has been removed since.
    if (account.Key.empty()) return false;
    if (account.Administrator) return true;
    auto [answer, fresh] = answers.try_emplace(std::string(owner));
    if (fresh) answer->second = Levels_Of(owner, user);
    return answer->second[static_cast<std::size_t>(level - 1)];
  }

 private:
  using TLevels = std::array<bool, 4>;

  void Keep_Up() {
    Follow_Users();
    const TDatabase& database = Shared_Database();
    const std::array<std::uint64_t, 4> now{database.Opening(), database.Table_Serial(users),
                                           database.Table_Serial(rights), database.Table_Serial(contacts)};
    if (now == seen) return;
    seen = now;
    answers.clear();
    current.clear();
    account = {};
  }

  static TLevels Levels(const TRights& rights) {
    return {rights.Create, rights.Update, rights.Delete, rights.See};
  }

  static std::optional<TLevels> Find_Levels(std::string_view owner, std::string_view user) {
    for (const std::string_view whose : {user, Global_User}) {
      if (const auto rights = Find_Rights(owner, whose)) return Levels(*rights);
    }
    return {};
  }

  // The owner's own rights, or else those of the nearest folder that has some, of its book, or of
  // the whole database.
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
    if (book.empty() && !TTable("KT_Books", "Key").FindKey({owner})) return {};
    for (const std::string_view last : {std::string_view(book), Whole_Database}) {
      if (const auto levels = Find_Levels(last, user)) return *levels;
    }
    return {};
  }

  const std::size_t users = Table_Number(Table_Def("KT_Users"));
  const std::size_t rights = Table_Number(Table_Def("KT_Rights"));
  const std::size_t contacts = Table_Number(Table_Def("KT_Contacts"));
  std::array<std::uint64_t, 4> seen{};
  std::string current;
  TAccount account;  // the current one's
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

std::optional<TRights> Find_Rights(std::string_view owner, std::string_view user) {
  TTable table("KT_Rights", "OwnerandUser");
  if (!table.FindKey({owner, user})) return {};
  return TRights{table.Boolean(table.Field("Level1")), table.Boolean(table.Field("Level2")),
                 table.Boolean(table.Field("Level3")), table.Boolean(table.Field("Level4"))};
}

}  // namespace Kt_data_01
