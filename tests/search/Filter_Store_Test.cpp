#include "Filter_Store.h"

#include "Current_Search.h"
#include "Database_Test.h"

using namespace KTReminds;
using namespace std::string_literals;

namespace {

// A literal with its zeros.
std::string Stored() {
  return "\1\0\0\0"
         "\3\0\0\0key"
         "\0"
         "\2\0\0\0"

         "\1\0\0\0"
         "\xFF\xFF\xFF\xFF"
         "\x16\0\0\0"
         "\x78\0\0\0"
         "\x07\0\0\0a and b"
         "\0\0\0\0"
         "\0\0\0\0"
         "\0\0\0\0\0\0\xF8\x3F"
         "\0\0\0\0\0\0\0\xC0"
         "\0"
         "\1"

         "\1\0\0\0"
         "\x09\0\0\0"
         "\1\0\0\0"
         "\x06\0\0\0"
         "\2\0\0\0\xC3\xA4"
         "\6\0\0\0Person"
         "\xFE\xFF\xFF\xFF"
         "\0\0\0\0\0\0\0\0"
         "\0\0\0\0\0\0\0\0"
         "\1"
         "\0"s;
}

TSearchRecord Record() {
  TSearchRecord record;
  record.Group = "key";
  record.SubGroups = false;
  TSearchItem first;
  first.Field = -1;
  first.Action = 22;
  first.SearchType = 120;
  first.Value = "a and b";
  first.KeyValue = "not stored";
  first.Date1Value = 1.5;
  first.Date2Value = -2;
  first.WholeWord = true;
  record.Items.push_back(first);
  TSearchItem second;
  second.Field = 9;
  second.Action = 1;
  second.SearchType = 6;
  second.Value = "ä";
  second.Template = "Person";
  second.IntegerValue = -2;
  second.MatchCase = true;
  record.Items.push_back(second);
  return record;
}

struct Filter_Store : TDatabase_Test {
  ~Filter_Store() override { CurrentSearch.reset(); }
  std::string Book() const { return database.Book().Key; }
};

TEST_F(Filter_Store, Bytes_Are_As_They_Always_Were) {
  EXPECT_EQ(Stored_Settings(Record()), Stored());
  TSearchRecord read;
  read.Name = "kept";
  std::string other_version = Stored();
  other_version[0] = 9;
  Read_Settings(other_version, read);
  EXPECT_EQ(read.Name + read.Get_KeyValue(0), "kept");
  EXPECT_EQ(Stored_Settings(read), Stored());
  Read_Settings("\1\0\0\0\2\0\0\0k\xE4\1\0\0\0\0"s, read);
  EXPECT_EQ(read.Group, "kä") << "read as Windows-1252";
  EXPECT_TRUE(read.SubGroups && read.Items.empty());
  Read_Settings("\1\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\0"s, read);
  EXPECT_EQ(read.Group, "") << "of a length below 0";
}

TEST_F(Filter_Store, What_Is_Cut_Short_Or_Wild_Is_Refused_Whole) {
  TSearchRecord record;
  record.Group = "as it was";
  const std::string whole = Stored();
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_THROW(Read_Settings(whole.substr(0, length), record), EFilter_Error) << length;
  // The length of the group, the number of items, the length of a value.
  const std::string longest = "\xFF\xFF\xFF\x7F"s, negative = "\0\0\0\x80"s;
  for (const auto& [at, wild] : {std::pair(4U, longest), {12U, longest}, {12U, negative}, {32U, longest}}) {
    std::string bytes = whole;
    EXPECT_THROW(Read_Settings(bytes.replace(at, 4, wild), record), EFilter_Error) << at;
  }
  EXPECT_EQ(record.Group, "as it was");
}

TEST_F(Filter_Store, Filters_Are_The_Users_Or_Everybodys) {
  TSearchRecord search = Record();
  EXPECT_TRUE(search.SavetoTable(Book(), "One", false));
  EXPECT_EQ(search.Name, "One");
  search.Group = "shared";
  EXPECT_TRUE(search.SavetoTable(Book(), "One", true));
  search.Group = "again";
  EXPECT_TRUE(search.SavetoTable(Book(), "One", true)) << "over the one that there was";
  EXPECT_TRUE(search.SavetoTable(Book(), "Two", true));
  EXPECT_TRUE(search.SavetoTable("other", "Three", true));
  EXPECT_EQ(Filter_Names(Book(), false), std::vector<std::string>({"One"}));
  EXPECT_EQ(Filter_Names(Book(), true), (std::vector<std::string>{"One", "Two"}));
  EXPECT_EQ(TSearchRecord(Book(), "One", false).Group, "key");
  EXPECT_EQ(TSearchRecord(Book(), "One", true).Group, "again");
  EXPECT_EQ(TSearchRecord(Book(), "Two", false).Name, "<New Filter>");
  EXPECT_FALSE(Has_Filter(Book(), "Two", false));
  EXPECT_TRUE(Delete_Filter(Book(), "One", true));
  EXPECT_TRUE(Has_Filter(Book(), "One", false) && !Has_Filter(Book(), "One", true));
  Plant("UPDATE ON KT_Filters");
  seams.Prompts.Expect_Undone("planted fault", "Search_Record: SavetoTable [KT_Filters]");
  EXPECT_FALSE(search.SavetoTable(Book(), "One", false));
  EXPECT_EQ(TSearchRecord(Book(), "One", false).Group, "key");
}

TEST_F(Filter_Store, The_Current_Search_Is_Replaced_Only_By_What_Can_Be_Read) {
  Clear_Search();
  CurrentSearch->Group = "edited";
  Record().SavetoTable(Book(), "Good", false);
  Record().SavetoTable(Book(), "Bad", false);
  Run_Sql("UPDATE KT_Filters SET Settings = substr(Settings, 1, 60) WHERE Name = 'Bad'");
  seams.Prompts.Expect_Error(
      "Load Search Filter",
      "The Search Filter \"Bad\" cannot be loaded: its stored settings hold fewer criteria than they say.");
  EXPECT_FALSE(Load_Filter_Settings(Book(), "Bad", false));
  EXPECT_EQ(CurrentSearch->Group, "edited");
  EXPECT_TRUE(Load_Filter_Settings(Book(), "Good", false));
  EXPECT_EQ(CurrentSearch->Name + CurrentSearch->Group, "Goodkey");
  EXPECT_TRUE(Load_Filter_Settings(Book(), "None", false));
  EXPECT_EQ(CurrentSearch->Name + CurrentSearch->Group, "<New Filter>");
  CurrentSearch->Group = "edited";
  Clear_Search();
  EXPECT_EQ(CurrentSearch->Group, "");
}

}  // namespace
