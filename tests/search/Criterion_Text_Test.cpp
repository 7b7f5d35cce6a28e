#include "Criterion_Text.h"

#include <set>

#include "Criteria_Rules.h"
#include "Database_Test.h"
#include "Templates.h"

using namespace KTReminds;

namespace {

struct Criterion_Text_Test : TDatabase_Test {
  Criterion_Text_Test() {
    Run_Sql("INSERT INTO KT_Categories (Key, Book, Name) VALUES ('k1', '" + Book() + "', 'Old -- Friends')");
    TTemplate vendor;
    vendor.Book = Book();
    vendor.Name = "Vendor: US";
    vendor.Address_Style = TAddress_Style::US;
    for (std::size_t i = 0; i < vendor.Labels.size(); ++i) vendor.Labels[i] = "L-" + std::to_string(i);
    In_Update([&] { Write_Template(vendor); });
  }
  std::string Book() const { return database.Book().Key; }
  std::string Read_Back(const std::string& typed) const {
    TSearchRecord read;
    try {
      read.Items.push_back(Read_Criterion(typed, Book()));
    } catch (const ECriterion_Error& e) {
      return e.what();
    }
    return Criterion_Text(read, 0, Book());
  }
};

std::string Value_For(int action) {
  if (!Show_Value_Field(action)) return "";
  if (Show_Selection_Button(action)) return "Old -- Friends";
  if (action == Action_Between) return "1/15/2024 and 1/16/2024";
  if (action >= Action_On && action <= Action_On_Or_Before) return "1/15/2024";
  return Show_MatchCase_Box(action) ? ": \"Contains\" -- (x)" : "-30";
}

TEST_F(Criterion_Text_Test, Every_Text_Of_The_Vocabulary_Reads_Back) {
  TSearchRecord all;
  TSearch_Choices groups, fields, actions;
  Populate_Search_Fields(Book(), groups);
  for (const TSearch_Choice& group : Calendar_Groups()) groups.push_back(group);
  for (const TSearch_Choice& group : groups) {
    std::string of;
    Get_Template_Name(group.Code, group.Name, Book(), of, false);
    Populate_Type_Fields(group.Code, fields, Book(), group.Name);
    for (const TSearch_Choice& field : fields) {
      if (field.Name.empty()) continue;  // of a template, without a label
      Populate_Search_Actions(actions, field.Code, group.Code);
      for (const TSearch_Choice& action : actions)
        all.Add_Field(group.Code, field.Code, action.Code, Value_For(action.Code), of,
                      Show_MatchCase_Box(action.Code) && field.Code % 2 == 0,
                      Show_WholeWord_Box(action.Code) && field.Code % 3 == 0);
    }
  }
  std::set<int> actions_read;
  for (int i = 0; i < static_cast<int>(all.Items.size()); ++i) {
    TSearchRecord read;
    const std::string text = Criterion_Text(all, i, Book());
    ASSERT_NO_THROW(read.Items.push_back(Read_Criterion(text, Book()))) << text;
    EXPECT_EQ(Criterion_Text(read, 0, Book()), text);
    const TSearchItem &a = all.Items[static_cast<std::size_t>(i)], &b = read.Items.front();
    EXPECT_TRUE(a.Field == b.Field && a.SearchType == b.SearchType && a.Action == b.Action &&
                a.Template == b.Template && a.IntegerValue == b.IntegerValue &&
                a.Date1Value == b.Date1Value && a.Date2Value == b.Date2Value)
        << text;
    actions_read.insert(b.Action);
  }
  EXPECT_EQ(actions_read.size(), 44U);
}

TEST_F(Criterion_Text_Test, Hands_Type_Less_And_Are_Told_What_Is_Meant) {
  const std::pair<const char*, const char*> cases[] = {
      {"contact name--contains:Jonas", "Contact Details: Contact Name  --  Contains:  Jonas"},
      {" Contact details :contact  name \u2013 doesn\u2019t contain x: y (Whole word) (match  case)",
       "Contact Details: Contact Name  --  Doesn't Contain:  x: y (match case) (whole word)"},
      {"Contact Name starts with -- B", "Contact Details: Contact Name  --  Starts With:  -- B"},
      {"scheduled start date - in the next 1 day",
       "Tasks: Scheduled Start Date  --  In the next (x) Days:  1"},
      {"Meeting -- not in the last (x) days: 30",
       "Contact Journal: Meeting  --  Not in the last (x) Days:  30"},
      {"holiday date on or after 2024-01-15",
       "National Holidays: Holiday Date  --  On or after the:  1/15/2024"},
      {"category membership is a member of OLD -- friends",
       "Contact Details: Category Membership  --  Is a Member of:  Old -- Friends"},
      {"template vendor: us: l-0 contains x", "Template Vendor: US: L-0 Field  --  Contains:  x"},
      {"template person: home -- is blank", "Template Person: Home Field  --  Is Blank"},
      {"Contct Details: Contact Name -- Contains x",
       "\"Contct Details\" is no group of fields; what comes nearest is \"Contact Details\", \"Contact "
       "Events\" or \"Contact Journal\"."},
      {"Contact Details: Nmae -- Contains x",
       "\"Nmae\" is no field of \"Contact Details\"; what comes nearest is \"Contact Name\", \"Contact Last "
       "Modified By\", \"Contact Last Modified\", \"Contact Status\", \"Category Membership\" or \"Contact "
       "Notes\"."},
      {"Event Dat -- Today",
       "\"Event Dat\" is no field to search for; what comes nearest is \"Event Date\", \"Event Status\" or "
       "\"Event Location\"."},
      {"Event Date -- Today",
       "\"Event Date\" is a field of \"Contact Events\" and of \"Calendar Events\"; write one of these and a "
       "colon before it."},
      {"Task Owner",
       "\"Task Owner\" must be followed by how it is compared, such as \"Contains\", \"Equals\", \"Doesn't "
       "Contain\", \"Is Blank\", \"Is not Blank\" or \"Starts With\"."},
      {"Date -- Tomorow: 3",
       "\"Tomorow\" is nothing that \"Date\" can be compared by; what comes nearest is \"Tomorrow\", "
       "\"Today\" or \"Anytime\"."},
      {"Task Owner -- Contains: (match case)", "\"Contains\" needs a value behind it."},
      {"Task Owner -- Is Blank: x", "\"Is Blank\" takes no value, but \"x\" stands behind it."},
      {"Task Owner -- Equals x (whole word)", "\"(whole word)\" does not go with \"Equals\"."},
      {"Task Priority -- Less than 2.5", "\"2.5\" behind \"Less than\" is not a whole number."},
      {"Date -- In the next 3 Days: 4", "\"4\" is one value too many behind \"Date -- In the next 3 Days\"."},
      {"Date -- On the: 2/30/2024", "\"2/30/2024\" behind \"On the\" is not a date such as 1/15/2024."},
      {"Date -- Between 1/1/2024",
       "\"1/1/2024\" behind \"Between\" is not two dates such as 1/15/2024 and 1/16/2024."},
      {"Category Membership -- Is a Member of: Club",
       "\"Club\" behind \"Is a Member of\" is not a category of the book, which has \"Old -- Friends\"."},
      {" ", "A criterion is empty; one reads like \"Contact Name -- Contains: Jonas\"."}};
  for (const auto& [typed, expected] : cases) EXPECT_EQ(Read_Back(typed), expected) << typed;
}

}  // namespace
