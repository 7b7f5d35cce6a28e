#include "Contacts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "Kt_util_01.h"
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
  const auto fill = [&](const TBook& book) {
    const std::string &b = book.Key, master = "m" + b, occurrence = "o" + b;
    const std::string contact = Create_Contact(b, "Somebody");
    Write_Contact(contact, "Somebody", {});
    Set_Rights(contact, Global_User, {});
    Set_Rights(b, Global_User, {});
    Set_Other_Labels(b, {"x"});
    LogJournal(1, occurrence, contact, "t", 1, "", 0, 1);
    const auto insert = [&](const std::string& table, const std::string& columns, const std::string& values) {
      TTable rows_of(table);
      rows_of.Insert();
      std::size_t at = 0, value = 0;
      while (at < columns.size()) {
        const std::size_t end = std::min(columns.find(' ', at), columns.size());
        const std::size_t value_end = std::min(values.find(' ', value), values.size());
        rows_of.Set(rows_of.Field(columns.substr(at, end - at)), values.substr(value, value_end - value));
        at = end + 1;
        value = value_end + 1;
      }
      PostUpdate(rows_of);
    };
    insert("KT_Events", "Key Title", master + " t");
    insert("KT_Events_Data", "Key Contact Book Event", occurrence + ' ' + contact + ' ' + b + ' ' + master);
    insert("KT_Alarms", "Key User", occurrence + " u");
    insert("KT_Alerts", "User Occurrence", "u " + occurrence);
    insert("KT_Open_Editors", "User Event", "u " + master);
    insert("KT_Imports", "Book UID", b + " uid");
    insert("KT_Import_Events", "Book UID Event", b + " uid " + master);
    insert("KT_Filters", "User BookKey Name", "u " + b + " f");
    insert("KT_Templates", "Key Book Name", "t" + b + ' ' + b + " t");
    insert("KT_Categories", "Key Book Name", "c" + b + ' ' + b + " c");
    insert("KT_Categories_InUse", "Category Contact", "c" + b + ' ' + contact);
    insert("KT_Flags", "User Contact", "u " + contact);
    insert("KT_Links", "Contact Title", contact + " l");
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
  In_Update([&] { Delete_Book(second.Key); });
  EXPECT_EQ(two, 2);
  for (const auto& [table, count] : before) EXPECT_EQ(rows(table), count) << table;
  ASSERT_EQ(List_Books().size(), 1u);
  EXPECT_EQ(List_Books().front().Key, database.Book().Key);
}

}  // namespace
