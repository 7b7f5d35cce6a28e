#include "Database_Test.h"
#include "Row_Sets.h"

namespace {

struct Rights : TDatabase_Test {
  // The levels that are allowed, as digits.
  static std::string Of(std::string_view owner, std::string_view user = {}) {
    std::string levels;
    for (int level = 0; level <= 5; ++level) {
      if (Access_Allowed(owner, level, user)) levels += std::to_string(level);
    }
    return levels;
  }
};

TEST_F(Rights, A_Database_Without_Users_Allows_Everything_Until_Another_Connection_Adds_One) {
  const std::string book = database.Book().Key;
  EXPECT_EQ(Of(book) + " " + Of("unknown", "anybody") + Get_UserName("anybody"), "012345 012345");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("INSERT INTO KT_Users (Key) VALUES ('anna')");
  EXPECT_EQ(Of(book, "anna"), "");
  other.Engine().Execute("INSERT INTO KT_Rights VALUES ('" + book + "', 'GLOBAL', 1, 1, 1, 1, NULL)");
  EXPECT_EQ(Of(book, "anna"), "1234");
}

TEST_F(Rights, Each_Level_Reaches_What_Lies_Below_Its_Place_Until_A_Nearer_One_Says_Otherwise) {
  const std::string book = database.Book().Key;
  std::string anna, outer, inner, contact;
  In_Update([&] {
    Create_User("Boss", true);
    anna = Create_User("Anna", false);
    outer = Create_Contact(book, "Outer", {}, Contact_Type_Folder);
    inner = Create_Contact(book, "Inner", outer, Contact_Type_Folder);
    contact = Create_Contact(book, "Contact", inner);
  });
  Set_User_Key(anna);
  const std::vector<std::string> places{contact, inner, outer, book, std::string(Whole_Database)};
  const std::pair<bool TRights::*, const char*> levels[] = {
      {&TRights::Create, "1"}, {&TRights::Update, "2"}, {&TRights::Delete, "3"}, {&TRights::See, "4"}};
  const auto all = [&] {
    std::string allowed;
    for (const std::string& place : places) allowed += Of(place) + "|";
    return allowed;
  };
  for (const char* secure : {"", "1"}) {
    for (const std::string& user : {anna, std::string(Global_User)}) {
      for (std::size_t at = 0; at < places.size(); ++at) {
        for (const auto& [right, level] : levels) {
          std::string expected, closed;
          for (std::size_t i = 0; i < places.size(); ++i) {
            expected += std::string(i <= at ? level : "") + "|";
            closed += std::string(i == at ? level : "") + "|";
          }
          TRights rights;
          rights.*right = true;
          const auto set = [&](const std::string& place, const std::string& of, const TRights& given) {
            In_Update([&] {
              Store_Setting("Secure", secure);
              Set_Rights(place, of, given);
            });
            return all();
          };
          Run_Sql("DELETE FROM KT_Rights");
          EXPECT_EQ(set(places[at], user, rights), expected) << at << user << secure;
          // Everybody's at a nearer place, and one's own at the same, go before what was set.
          if (at > 0) {
            EXPECT_EQ(set(places[at - 1], std::string(Global_User), {}), closed) << at << user;
          }
          if (user != anna) {
            EXPECT_EQ(set(places[at], anna, {}), "|||||") << at;
          }
        }
      }
    }
  }
}

TEST_F(Rights, Fall_Back_From_Contact_To_Folders_To_Book_And_Are_Separate) {
  const std::string book = database.Book().Key;
  std::string anna, boss, folder, inner, contact;
  In_Update([&] {
    boss = Create_User("Boss", true);
    anna = Create_User("Anna", false);
    folder = Create_Contact(book, "Folder", {}, Contact_Type_Folder);
    inner = Create_Contact(book, "Inner", folder, Contact_Type_Folder);
    contact = Create_Contact(book, "Contact", inner);
  });
  Set_User_Key(anna);
  EXPECT_EQ(Of(contact), "") << "no row at all";
  EXPECT_EQ(Of(contact, boss), "1234");
  EXPECT_EQ(Of("unknown"), "");
  EXPECT_EQ(Get_UserName(anna), "Anna");
  const auto with = [&](std::string_view owner, std::string_view user, const TRights& rights) {
    In_Update([&] { Set_Rights(owner, user, rights); });
    return Of(contact);
  };
  EXPECT_EQ(with(Whole_Database, Global_User, {.Delete = true}), "3");
  EXPECT_EQ(Of("unknown") + "/" + Of(book) + "/" + Of(contact, "removed"), "/3/");
  EXPECT_EQ(with(book, Global_User, {.See = true}), "4");
  EXPECT_EQ(Of(database.Book().Calendar), "4");
  EXPECT_EQ(with(book, anna, {.Create = true, .Delete = true}), "13") << "the user's own row goes first";
  EXPECT_EQ(with(folder, Global_User, {.Update = true}), "2");
  EXPECT_EQ(with(contact, anna, {}), "");
  EXPECT_EQ(Of(inner), "2");
  In_Update([&] {
    Delete_Rows("KT_Rights", "Owner", folder);
    Run_Sql("UPDATE KT_Contacts SET Parent = Key WHERE Key = '" + folder + "'");
  });
  EXPECT_EQ(Of(inner), "13") << "a circle of folders ends";
  for (const char* secure : {"1", ""}) {
    In_Update([&] { Store_Setting("Secure", secure); });
    EXPECT_EQ(Of(inner) + "/" + Of(inner, boss), "13/1234");
  }
  EXPECT_TRUE(Visible_Books().empty());
  with(inner, anna, {.See = true});
  EXPECT_EQ(Visible_Books().size(), 1U) << "the book leads to the folder";
  database.Reopen();
  EXPECT_EQ(Of(inner), "") << "nobody has said who it is";
}

TEST_F(Rights, The_Journal_Forgets_One_Occurrence) {
  In_Update([] {
    for (const char* of : {"o1", "o1", "o2"}) LogJournal(18, of, "c", "Title", 45000.5, "Text", 0, 45001);
    RemoveLog("o1");
  });
  EXPECT_EQ(Query_Rows("Title, LogDate, Occurrence", "KT_Log"), "Title|45000.5|o2");
}

}  // namespace
