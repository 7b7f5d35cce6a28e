#include "Search_Record.h"

#include "Database_Test.h"
#include "Templates.h"

using namespace KTReminds;

namespace {

struct Search_Record : TDatabase_Test {
  std::string Book() const { return database.Book().Key; }
  /// "1 Contact Details, 2 ..."
  static std::string Shown(const TSearch_Choices& list) {
    std::string shown;
    for (const TSearch_Choice& each : list)
      shown += (shown.empty() ? "" : ", ") + std::to_string(each.Code) + " " + each.Name;
    return shown;
  }
  std::string Fields(int group, const std::string& text = {}) const {
    TSearch_Choices list{{7, "left"}};
    Populate_Type_Fields(group, list, Book(), text);
    return Shown(list);
  }
  static std::string Actions(int field, int group) {
    TSearch_Choices list{{7, "left"}};
    Populate_Search_Actions(list, field, group);
    return Shown(list);
  }
  void Add_Template(const std::string& name, TAddress_Style style) const {
    TTemplate added;
    added.Book = Book();
    added.Name = name;
    added.Address_Style = style;
    for (std::size_t i = 0; i < added.Labels.size(); ++i)
      added.Labels[i] = "L" + std::to_string(Template_Fields[i].Label_Column);
    In_Update([&] { Write_Template(added); });
  }
};

constexpr auto Text_Actions =
    "1 Contains, 2 Equals, 3 Doesn't Contain, 4 Is Blank, 5 Is not Blank, 6 Starts With";

TEST_F(Search_Record, The_Vocabulary_Is_As_It_Is_Stored) {
  Run_Sql("INSERT INTO KT_Fields (Book, Other_2) VALUES ('" + Book() + "', 'Shoe size')");
  EXPECT_EQ(Fields(-1), "120 Date, 121 Description");
  EXPECT_EQ(Fields(0), "110 Holiday Date, 111 Holiday Description, 112 Country");
  EXPECT_EQ(Fields(1),
            "1 Contact Name, 2 Contact Last Modified By, 3 Contact Last Modified, 4 Contact Status, "
            "5 Category Membership, 6 Contact Notes");
  EXPECT_EQ(Fields(4),
            "40 Other 1, 41 Shoe size, 42 Other 3, 43 Other 4, 44 Other 5, 45 Other 6, 46 Other 7, "
            "47 Other 8");
  EXPECT_EQ(Fields(2),
            "70 Event Date, 71 Event Description, 72 Event Location, 73 Event Owner, 74 Event Status, "
            "75 Event Priority");
  EXPECT_EQ(Fields(3),
            "90 Task Description, 91 Scheduled Start Date, 92 Scheduled End Date, 93 Actual Start Date, "
            "94 Actual Completion Date, 95 Task Status, 96 Percentage Complete, 97 Budget Allowed, "
            "98 Actual Worked, 99 Budget Remaining, 100 Task Owner, 101 Task Priority");
  EXPECT_EQ(Fields(5), "50 Link Title, 51 Document File or URL Name, 52 Link Status");
  EXPECT_EQ(Fields(6),
            "10 Phone Call Made, 11 Phone Call Received, 12 EMail Sent, 13 EMail Received, 14 Fax Sent, "
            "15 Fax Received, 16 Letter Sent, 17 Letter Received, 18 Meeting, 19 Conversation, "
            "20 Other Journal Event, 21 Internet Visit, 22 Contact Imported, 23 Contact Created, "
            "24 Contact Updated, 25 Contact Deleted, 26 Contact Restored, 27 Owner Changed, 28 Link Added, "
            "29 Link Opened, 30 Link Removed, 31 Journal Description");
  EXPECT_EQ(Fields(7),
            "60 Any Text Field, 61 Any EMail Address, 62 Any Telephone Number, 63 Any Web Address, "
            "64 Any Field");
  EXPECT_EQ(Fields(8),
            "80 Event Date, 81 Event Description, 82 Event Location, 83 Event Owner, 84 Event Status, "
            "85 Event Priority");
  EXPECT_EQ(Fields(9, "Template none"), "");

  const std::pair<int, std::string> actions[] = {
      {6, Text_Actions},
      {3,
       "10 Anytime, 11 Never, 12 Yesterday, 13 Today, 14 Tomorrow, 15 In the next (x) Days, "
       "16 In the last (x) Days, 17 Not in the next (x) Days, 18 Not in the last (x) Days, 19 On the, "
       "20 On or after the, 21 On or before the, 22 Between"},
      {4, "30 Is Tagged, 31 Is Not Tagged"},
      {5, "40 Is a Member of, 41 Is not a Member of, 42 Is not in any Category, 43 Is in a Category"},
      {52, "50 Has a Link Attached, 51 Has no Links Attached"},
      {74,
       "60 Has an Alarm Set, 61 Has no Alarms Set, 62 Has an Event Outstanding, "
       "63 Has no Outstanding Events"},
      {99, "70 Equals, 71 Less than, 72 Greater than"},
      {84,
       "80 Has an Alarm Set, 81 Does not have an Alarm Set, 82 Is Outstanding, "
       "83 Is marked Complete"},
      {95, "90 Not Started, 91 In Progress, 92 Completed, 93 Pending, 94 Postponed, 95 Cancelled"},
      {64, Text_Actions},
      {7, ""},
      {122, ""}};
  for (const auto& [field, expected] : actions) EXPECT_EQ(Actions(field, 1), expected) << field;
  EXPECT_EQ(Actions(7, 9), Text_Actions) << "of a template";
  for (const std::string& name : {Get_Group_Name(-2, ""), Get_Group_Name(9, ""), Get_Field_Name(48, Book()),
                                  Get_Field_Name(122, Book()), Get_Action_Name(7)})
    EXPECT_EQ(name, "<Search Field Error>");

  // Which boxes go with which actions: value, choice, case, word.
  std::string boxes;
  for (int action = 0; action <= 96; ++action) {
    const std::string shown =
        std::string(Show_Value_Field(action) ? "" : "-") + (Show_Selection_Button(action) ? "b" : "") +
        (Show_MatchCase_Box(action) ? "c" : "") + (Show_WholeWord_Box(action) ? "w" : "");
    if (!shown.empty()) boxes += " " + std::to_string(action) + shown;
  }
  EXPECT_EQ(boxes,
            " 1cw 2c 3cw 4- 5- 6c 10- 11- 12- 13- 14- 30- 31- 40b 41b 42- 43- 50- 51- 60- 61- 62- 63- 80- "
            "81- 82- 83- 90- 91- 92- 93- 94- 95-");
}

TEST_F(Search_Record, Templates_Are_Groups_With_Their_Labels) {
  Run_Sql("DELETE FROM KT_Templates");
  Add_Template("UK", TAddress_Style::UK);
  Add_Template("Plain", TAddress_Style::International);
  Add_Template("US", TAddress_Style::US);
  TSearch_Choices list;
  Populate_Search_Fields(Book(), list);
  EXPECT_EQ(Shown(list),
            "1 Contact Details, 2 Contact Events, 3 Tasks, 4 Other Fields, 5 Document Links, "
            "6 Contact Journal, 7 By Field Type, 9 Template Plain, 10 Template UK, 11 Template US");
  const std::string before = "1 L38, 2 L39, 3 L40, 4 L4, 5 L5, 6 L6",
                    after = ", 12 L7, 13 L8, 14 L9, 15 L10, 16 L11, 17 L29, 18 L30, 19 L31";
  EXPECT_EQ(Fields(9, "Template Plain"), before + after);
  EXPECT_EQ(Fields(9, "Template US"), before +
                                          " [Whole Address], 7 L6 [Street], 8 L6 [City], 9 L6 [State], "
                                          "10 L6 [ZIP Code], 20 L6 [Country]" +
                                          after);
  EXPECT_EQ(Fields(9, "Template UK"), before + " [Whole Address], 11 L6 [Postcode], 20 L6 [Country]" + after);
  std::string name;
  Get_Template_Name(9, "Template  UK ", Book(), name, true);
  EXPECT_EQ(name, "UK");
  Get_Template_Name(9, "Template Gone", Book(), name, true);
  EXPECT_EQ(name, "");
  Get_Template_Name(9, "Template Gone", Book(), name, false);
  EXPECT_EQ(name, "Gone");
  Get_Template_Name(8, "Template UK", Book(), name, false);
  EXPECT_EQ(name, "");

  TSearchRecord search;
  const std::tuple<int, const char*, const char*> texts[] = {
      {4, "Plain", "L4 Field"},
      {6, "Plain", "L6 Field"},
      {6, "UK", "L6 Field [Whole Address]"},
      {7, "UK", "L6 Field [Street]"},
      {21, "UK", "<Search Field Error>"},
      {6, "Gone", "<Search Field Error>"},
  };
  for (const auto& [field, of, text] : texts) {
    search.Clear_Fields();
    search.Add_Field(10, field, Action_Starts_With, "x", of, false, false);
    EXPECT_EQ(search.Get_Search_Criteria(0, Book()),
              std::string("Template ") + of + ": " + text + "  --  Starts With:  x");
  }
  search.PreProcess_Criteria(Book());
  EXPECT_EQ(search.Get_KeyValue(0), "");
  search.Add_Field(9, 1, Action_Blank, "", "UK", false, false);
  Run_Sql("INSERT INTO KT_Categories (Key, Book, Name) VALUES ('k2', '" + Book() + "', 'Red'), ('k1', '" +
          Book() + "', 'Blue')");
  search.Add_Field(1, 5, Action_Member, "Blue", "", false, false);
  search.Add_Field(1, 5, Action_Not_Member, "Green", "", false, false);
  search.PreProcess_Criteria(Book());
  EXPECT_EQ(search.Get_KeyValue(1), Query_Text("SELECT Key FROM KT_Templates WHERE Name = 'UK'"));
  EXPECT_EQ(search.Get_KeyValue(2) + search.Get_KeyValue(3), "k1");
  Populate_Value_List(Book(), Search_Category, list);
  EXPECT_EQ(Shown(list), "0 Red, 0 Blue");
  Populate_Value_List(Book(), Search_Notes, list);
  EXPECT_EQ(Shown(list), "");
  Run_Sql("ALTER TABLE KT_Templates RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Templates",
                              "Search_Record:Get_SearchType_Name [KT_Templates]");
  EXPECT_EQ(search.Get_Search_Criteria(1, Book()), "Template UK: <Search Field Error>  --  Is Blank");
}

TEST_F(Search_Record, Values_Are_Taken_Apart_Or_Refused) {
  struct TCase {
    int Action;
    std::string Typed, Value;
    std::int32_t Number = 0;
    double First = 0, Second = 0;
  };
  const TCase taken[] = {
      {Action_Contains, " x", " x"},
      {Action_Not_Blank, "", ""},
      {Action_In_Next, " -3 ", " -3 ", -3},
      {Action_Greater, "2147483647", "2147483647", 2147483647},
      {Action_On, "2024-01-15", "1/15/2024", 0, Monday},
      {Action_Between, "1/15/2024 aNd january 16 2024", "1/15/2024 and 1/16/2024", 0, Monday, Monday + 1},
      {Action_Member, "x", "x"},
      {96, "", ""}};
  for (const TCase& each : taken) {
    const TSearchItem item(1, 1, each.Action, each.Typed, "", false, false);
    EXPECT_EQ(item.Value, each.Value);
    EXPECT_EQ(item.IntegerValue, each.Number) << each.Typed;
    EXPECT_EQ(item.Date1Value, each.First) << each.Typed;
    EXPECT_EQ(item.Date2Value, each.Second) << each.Typed;
  }
  const std::string number =
      "The value entered is not a valid whole number. Please specify a number before continuing";
  const std::string range =
      "The Date Range specified is invalid. Please specify a date range in the format \"M/d/yyyy and "
      "M/d/yyyy\" before continuing";
  const std::tuple<int, const char*, std::string> refused[] = {
      {Action_Starts_With, "", "The text to be found must be specified in the Value Field before continuing"},
      {Action_Not_In_Last, "2.5", number},
      {Action_Less, "2147483648", number},
      {Action_On_Or_Before, "2/30/2024",
       "The Date specified is invalid. Please specify a date in the format \"M/d/yyyy\" before continuing"},
      {Action_Between, "1/1/2001AND2/1/2001", range},
      {Action_Between, "1/1/2001 and soon", range},
      {Action_Not_Member, "", ""}};
  for (const auto& [action, typed, text] : refused) {
    if (!text.empty()) seams.Prompts.Expect_Error("Invalid Value Field", text);
    std::string value = typed;
    std::int32_t integer = 9;
    double first = 9, second = 9;
    EXPECT_FALSE(Validate_Value(value, 1, 1, action, integer, first, second));
    EXPECT_EQ(value + std::to_string(integer + first + second), typed + std::string("0.000000"));
  }
}

TEST_F(Search_Record, Criteria_Are_Reached_By_Index) {
  TSearchRecord search;
  search.Add_Field(1, 1, Action_Equals, "a", "", true, false);
  search.Add_Field(1, 3, Action_On, "1/15/2024", "", false, true);
  search.Delete(2);
  search.Delete(0);
  search.Set_KeyValue(0, "key");
  search.Set_KeyValue(1, "none");
  ASSERT_EQ(search.Items.size(), 1U);
  EXPECT_EQ(search.Get_Search_Criteria(0, Book()),
            "Contact Details: Contact Last Modified  --  On the:  1/15/2024");
  EXPECT_EQ(search.Get_KeyValue(0), "key");
  for (const int none : {-1, 1}) {
    EXPECT_EQ(search.Get_Field(none), -1);
    EXPECT_EQ(search.Get_Date1Value(none), 0);
    EXPECT_EQ(search.Get_Search_Criteria(none, Book()), "");
    EXPECT_FALSE(search.Get_WholeWord(none));
  }
  search.Name = search.Group = "x";
  search.SubGroups = false;
  search.Clear_Search();
  EXPECT_EQ(search.Name + search.Group, "<New Filter>");
  EXPECT_TRUE(search.SubGroups && search.Items.empty());
}

}  // namespace
