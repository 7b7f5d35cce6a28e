#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

namespace {

class Rights : public testing::Test {
 protected:
  // The four rights as digits, so that a case reads as one text.
  std::string Of(std::string_view owner, std::string_view user = {}) {
    std::string levels;
    for (int level = 0; level <= 5; ++level) {
      if (Access_Allowed(owner, level, user)) levels += std::to_string(level);
    }
    return levels;
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(Rights, A_Database_Without_Users_Allows_Everything) {
  EXPECT_EQ(Of(database.Book().Calendar), "012345");
  EXPECT_EQ(Of("unknown", "anybody"), "012345");
  EXPECT_EQ(Get_UserName("anybody"), "");
}

TEST_F(Rights, Fall_Back_From_Contact_To_Folders_To_Book_And_Are_Separate) {
  std::string anna, boss, folder, inner, contact;
  In_Update([&] {
    boss = Create_User("Boss", true);
    anna = Create_User("Anna", false);
    folder = Create_Contact(database.Book().Key, "Folder", {}, Contact_Type_Folder);
    inner = Create_Contact(database.Book().Key, "Inner", folder, Contact_Type_Folder);
    contact = Create_Contact(database.Book().Key, "Contact", inner);
  });
  Kt_util_01::Set_User_Key(anna);
  EXPECT_EQ(Of(contact), "") << "no row at all";
  EXPECT_EQ(Of(contact, boss), "1234");
  EXPECT_EQ(Of("unknown"), "");
  EXPECT_EQ(Get_UserName(anna), "Anna");

  In_Update([&] { Set_Rights(database.Book().Key, Global_User, {.See = true}); });
  EXPECT_EQ(Of(contact), "4");
  EXPECT_EQ(Of(database.Book().Calendar), "4");
  In_Update([&] { Set_Rights(database.Book().Key, anna, {.Create = true, .Delete = true}); });
  EXPECT_EQ(Of(contact), "13") << "the user's own row goes before everybody's";
  In_Update([&] { Set_Rights(folder, Global_User, {.Update = true}); });
  EXPECT_EQ(Of(contact), "2");
  In_Update([&] { Set_Rights(contact, anna, {}); });
  EXPECT_EQ(Of(contact), "");
  EXPECT_EQ(Of(inner), "2");
}

TEST_F(Rights, Changes_Of_Other_Connections_Are_Noticed) {
  std::string anna;
  In_Update([&] { anna = Create_User("Anna", false); });
  EXPECT_EQ(Of(database.Book().Calendar, anna), "");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("INSERT INTO KT_Rights VALUES ('" + database.Book().Key +
                         "', 'GLOBAL', 1, 1, 1, 1, NULL)");
  EXPECT_EQ(Of(database.Book().Calendar, anna), "1234");
}

TEST_F(Rights, A_Circle_Of_Folders_Ends) {
  In_Update([&] {
    Create_User("Anna", false);
    const std::string folder = Create_Contact(database.Book().Key, "Folder", "x", Contact_Type_Folder);
    Run_Sql("UPDATE KT_Contacts SET Parent = Key WHERE Key = '" + folder + "'");
    EXPECT_EQ(Of(folder), "");
  });
}

TEST_F(Rights, The_Journal_And_The_Holidays_Give_Back_What_Was_Written) {
  In_Update([&] {
    LogJournal(18, "o1", "c", "Title", 45000.5, "Text", 0, 45001);
    LogJournal(18, "o1", "c", "Again", 45002, "Text", 0, 45001);
    LogJournal(18, "o2", "c", "Other", 45003, "Text", 0, 45001);
    RemoveLog("o1");
    Run_Sql(
        "INSERT INTO KT_Holidays (HolidayDate, Name, Country) VALUES (45001, 'B', 'X'), (45000, 'A', ''), "
        "(45002, 'C', 'X')");
  });
  EXPECT_EQ(Query_Text("SELECT group_concat(Title || LogDate || Occurrence) FROM KT_Log"), "Other45003.0o2");
  TEventKey_List holidays;
  Build_Holidays_Data(holidays, 45000.7, 45001.2);
  ASSERT_EQ(holidays.size(), 2u);
  EXPECT_TRUE(holidays[0]->Description == "A");
  EXPECT_TRUE(holidays[1]->FirstText == "B (X)");
  EXPECT_EQ(holidays[1]->EventType, TEntry_Type::Other);
  EXPECT_TRUE(holidays[1]->Timeless && holidays[1]->Key.Empty());
}

}  // namespace
