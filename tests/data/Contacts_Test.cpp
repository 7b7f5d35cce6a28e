#include "Contacts.h"

#include <regex>

#include "Database_Test.h"

namespace {

struct Contacts : TDatabase_Test {
  std::string Names(bool deleted) {
    std::string names;
    for (const TContact& contact : List_Contacts(database.Book().Key, deleted)) names += contact.Name + ' ';
    return names;
  }
};

TEST_F(Contacts, Deleted_Ones_Are_Kept_With_Their_Details_And_Come_Back) {
  std::string zoe;
  In_Update([&] {
    for (const char* name : {"Bert", "anna", "Zoe"}) zoe = Create_Contact(database.Book().Key, name);
    Create_Contact(database.Book().Key, "Folder", {}, Contact_Type_Folder);
    EXPECT_TRUE(Write_Contact(zoe, "Zoë", {{"Tel 1", "", "", "", "", "", "", "last"}, "two\nlines"}));
    EXPECT_TRUE(Set_Contact_Deleted(zoe, true));
  });
  EXPECT_EQ(Names(false) + "/" + Names(true), "anna Bert /Zoë ");
  In_Update([&] {
    EXPECT_TRUE(Write_Contact(zoe, "Zoe", {{"Tel 2"}, "one"})) << "written over, not twice";
    Set_Contact_Deleted(zoe, false);
    EXPECT_FALSE(Write_Contact("nobody", "N", {}) || Set_Contact_Deleted("nobody", true));
  });
  EXPECT_EQ(Names(false), "anna Bert Zoe ");
  const TContact_Details details = Read_Contact_Details(zoe);
  EXPECT_EQ(Find_Contact(zoe).value().Name + "|" + details.Other[0] + "|" + details.Notes, "Zoe|Tel 2|one");
  EXPECT_FALSE(Find_Contact(database.Book().Calendar)) << "a calendar is no contact";
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Contacts_Data"), 3) << "each its own";
}

TEST_F(Contacts, Labels_Belong_To_A_Book_And_Empty_Ones_Are_Counted) {
  In_Update([&] {
    for (const char* second : {"", "Mail"}) Set_Other_Labels(database.Book().Key, {"Phone", second});
    Rename_Book(database.Book().Key, "House");
  });
  const TOther_Texts labels = Other_Labels(database.Book().Key);
  EXPECT_EQ(labels[0] + labels[1] + labels[7] + Other_Labels("other book")[0], "PhoneMailOther 8Other 1");
  EXPECT_EQ(List_Books().front().Name, "House");
}

TEST_F(Contacts, A_Removed_Book_Leaves_Nothing_And_Takes_Nothing_From_Another) {
  const auto count_rows = [] {
    std::string counts;
    for (const TTable_Def& table : Schema()) {
      const std::string name(table.Name);
      counts += name + ' ' + Query_Text("SELECT count(*) FROM " + name) + '\n';
    }
    return counts;
  };
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
      INSERT INTO KT_Import_Texts (Book) VALUES ('%');
      INSERT INTO KT_Import_Zones (Book) VALUES ('%');
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
  In_Update([&] { fill(database.Book()); });
  const std::string before = count_rows();
  In_Update([&] {
    const TBook second = Create_Book("Second");
    fill(second);
    EXPECT_EQ(Counts(), "2 2 2 +2");
    Delete_Book(second.Key);
    EXPECT_EQ(Calendar_Of_Book(second.Key), "");
  });
  EXPECT_EQ(count_rows(), before);
  EXPECT_EQ(List_Books().front().Key, database.Book().Key);
}

}  // namespace
