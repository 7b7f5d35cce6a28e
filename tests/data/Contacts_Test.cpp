#include "Contacts.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

namespace {

class Contacts : public testing::Test {
 protected:
  std::string Names(bool deleted) {
    std::string names;
    for (const TContact& contact : List_Contacts(database.Book().Key, deleted)) names += contact.Name + ' ';
    return names;
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(Contacts, Deleted_Ones_Are_Kept_With_Their_Details_And_Come_Back) {
  std::string zoe;
  In_Update([&] {
    zoe = Create_Contact(database.Book().Key, "Zoe");
    Create_Contact(database.Book().Key, "anna");
    Create_Contact(database.Book().Key, "Bert");
    Create_Contact(database.Book().Key, "Folder", {}, Contact_Type_Folder);
    EXPECT_TRUE(Write_Contact(zoe, "Zoë", {{"Tel 1", "", "", "", "", "", "", "last"}, "two\nlines"}));
    EXPECT_TRUE(Set_Contact_Deleted(zoe, true));
  });
  EXPECT_EQ(Names(false), "anna Bert ");
  EXPECT_EQ(Names(true), "Zoë ");
  In_Update([&] {
    EXPECT_TRUE(Write_Contact(zoe, "Zoe", {{"Tel 2"}, "one"})) << "written over, not twice";
    Set_Contact_Deleted(zoe, false);
    EXPECT_FALSE(Write_Contact("nobody", "N", {}));
    EXPECT_FALSE(Set_Contact_Deleted("nobody", true));
  });
  EXPECT_EQ(Names(false), "anna Bert Zoe ");
  const auto found = Find_Contact(zoe);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Name + "|" + Read_Contact_Details(zoe).Other[0] + "|" + Read_Contact_Details(zoe).Notes,
            "Zoe|Tel 2|one");
  EXPECT_FALSE(Find_Contact(database.Book().Calendar)) << "a calendar is no contact";
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Contacts_Data"), 1);
}

TEST_F(Contacts, Labels_Belong_To_A_Book_And_Empty_Ones_Are_Counted) {
  In_Update([&] {
    Set_Other_Labels(database.Book().Key, {"Phone"});
    Set_Other_Labels(database.Book().Key, {"Phone", "Mail"});
    Rename_Book(database.Book().Key, "Home");
  });
  const TOther_Texts labels = Other_Labels(database.Book().Key);
  EXPECT_EQ(labels[0] + labels[1] + labels[7], "PhoneMailOther 8");
  EXPECT_EQ(Other_Labels("other book")[0], "Other 1");
  EXPECT_EQ(List_Books().front().Name, "Home");
}

TEST_F(Contacts, A_Removed_Book_Leaves_Nothing_And_Takes_Nothing_From_Another) {
  const auto rows = [](const std::string& table) { return Query_Number("SELECT count(*) FROM " + table); };
  // A row for the book in every table that may hold one.
  const auto fill = [](const TBook& book) {
    const std::string contact = Create_Contact(book.Key, "Somebody");
    Write_Contact(contact, "Somebody", {});
    Set_Rights(contact, Global_User, {});
    Set_Rights(book.Key, Global_User, {});
    Set_Other_Labels(book.Key, {"x"});
    std::string sql = R"(
      INSERT INTO KT_Events (Key) VALUES ('m%');
      INSERT INTO KT_Events_Data (Key, Contact, Book, Event) VALUES ('o%', '@', '%', 'm%');
      INSERT INTO KT_Alarms (Key) VALUES ('o%');
      INSERT INTO KT_Alerts (Occurrence) VALUES ('o%');
      INSERT INTO KT_Log (Occurrence) VALUES ('o%');
      INSERT INTO KT_Log (Contact) VALUES ('@');
      INSERT INTO KT_Open_Editors (Event) VALUES ('m%');
      INSERT INTO KT_Imports (Book) VALUES ('%');
      INSERT INTO KT_Import_Events (Book, Event) VALUES ('%', 'm%');
      INSERT INTO KT_Filters (BookKey) VALUES ('%');
      INSERT INTO KT_Templates (Key, Book) VALUES ('t%', '%');
      INSERT INTO KT_Categories (Key, Book) VALUES ('c%', '%');
      INSERT INTO KT_Categories_InUse (Category, Contact) VALUES ('c%', '@');
      INSERT INTO KT_Flags (Contact) VALUES ('@');
      INSERT INTO KT_Links (Contact) VALUES ('@');)";
    sql = std::regex_replace(sql, std::regex("%"), book.Key);
    Run_Sql(std::regex_replace(sql, std::regex("@"), contact));
  };
  TBook second;
  In_Update([&] { fill(database.Book()); });
  std::map<std::string, std::int64_t> before;
  for (const TTable_Def& table : Schema()) before[std::string(table.Name)] = rows(std::string(table.Name));
  In_Update([&] {
    second = Create_Book("Second");
    fill(second);
  });
  const std::int64_t two = rows("KT_Events_Data");
  EXPECT_NE(second.Calendar, database.Book().Calendar);
  In_Update([&] { Delete_Book(second.Key); });
  EXPECT_EQ(two, 2);
  for (const auto& [table, count] : before) EXPECT_EQ(rows(table), count) << table;
  EXPECT_EQ(Calendar_Of_Book(second.Key), "");
  ASSERT_EQ(List_Books().size(), 1u);
  EXPECT_EQ(List_Books().front().Key, database.Book().Key);
}

}  // namespace
