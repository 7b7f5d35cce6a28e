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

  static TLevels Levels_Of(std::string_view owner, std::string_view user) {
    const auto nearest = Nearest_Rights(owner, user);
    if (!nearest) return {};
    const TRights& rights = nearest->Rights;
    return {rights.Create, rights.Update, rights.Delete, rights.See};
  }

  const std::size_t users = Table_Number(Table_Def("KT_Users"));
  const std::size_t rights = Table_Number(Table_Def("KT_Rights"));
  const std::size_t contacts = Table_Number(Table_Def("KT_Contacts"));
  std::array<std::uint64_t, 4> seen{};
  std::string current;
  TAccount account;  // the current one's
  std::unordered_map<std::string, TLevels> answers;
};

// The owner, its folders from the nearest on, its book and the whole database, until `take` says true; of an
// unknown owner nothing more.
template <class TTake>
void Walk_Owners(std::string_view owner, TTake take) {
  constexpr int Deepest_Folder = 64;  // also ends a cycle of folders
  std::string at(owner), book;
  TTable table("KT_Contacts", "Key");
  const TField parent = table.Field("Parent"), book_field = table.Field("Book");
  for (int depth = 0; depth < Deepest_Folder && !at.empty(); ++depth) {
    if (take(at)) return;
    if (!table.FindKey({at})) break;
    book = table.Text(book_field);
    at = table.Text(parent);
  }
  if (!book.empty() && take(book)) return;
  if (book.empty() && owner != Whole_Database && !TTable("KT_Books", "Key").FindKey({owner})) return;
  take(std::string(Whole_Database));
}

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

void Clear_Rights(std::string_view owner, std::string_view user) {
  TTable cursor("KT_Rights", "OwnerandUser");
  if (cursor.FindKey({owner, user})) cursor.Delete();
}

std::optional<TNearest_Rights> Nearest_Rights(std::string_view owner, std::string_view user) {
  std::optional<TNearest_Rights> nearest;
  Walk_Owners(owner, [&](const std::string& at) {
    for (const std::string_view whose : {user, Global_User}) {
      if (const auto rights = Find_Rights(at, whose)) {
        nearest = {at, std::string(whose), *rights};
        return true;
      }
    }
    return false;
  });
  return nearest;
}

std::vector<std::string> Owners_With_Rights(std::string_view book) {
  std::vector<std::string> owners;
  TTable rights("KT_Rights", "OwnerandUser"), contacts("KT_Contacts", "Key");
  const TField owner = rights.Field("Owner"), of_book = contacts.Field("Book");
  for (rights.First(); !rights.Eof(); rights.Next()) {
    const std::string_view at = rights.Text(owner);
    if ((owners.empty() || owners.back() != at) && contacts.FindKey({at}) && contacts.Text(of_book) == book)
      owners.emplace_back(at);
  }
  return owners;
}

}  // namespace Kt_data_01
