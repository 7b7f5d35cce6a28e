#include "Matchers.h"

#include "Database_Test.h"

using namespace KTReminds;

namespace {

struct Matchers : TSeams_Test {
  static constexpr double Today = 45306;  // at noon
  static TSearchItem Item(int action, const std::string& value) {
    TSearchItem item;
    item.Action = action;
    item.Value = value;
    return item;
  }
};

TEST_F(Matchers, Texts) {
  struct TCase {
    int Action;
    const char* Value;
    std::string Text;
    bool Blind, Exact, Word;  // found without options, with case, as a whole word
  };
  const std::string far = std::string(255, 'x') + " far";
  const TCase cases[] = {{Action_Contains, "ann", "Joanna", true, true, false},
                         {Action_Contains, "ANN", "anna", true, false, false},
                         {Action_Contains, "far", far, false, false, false},
                         {Action_Does_Not_Contain, "far", far, true, true, true},
                         {Action_Does_Not_Contain, "ann", "Anna", false, true, true},
                         {Action_Equals, "zoë", "ZOË", true, false, true},
                         {Action_Equals, "zoe", "zoë", false, false, false},
                         {Action_Blank, "", "", true, true, true},
                         {Action_Blank, "", " ", false, false, false},
                         {Action_Not_Blank, "", " ", true, true, true},
                         {Action_Starts_With, "JO", "john", true, false, true},
                         {Action_Starts_With, "john", "jo", false, false, false},
                         {Action_Today, "x", "x", false, false, false}};
  for (const TCase& each : cases) {
    TSearchItem item = Item(each.Action, each.Value);
    std::string found;
    for (const auto& [match_case, whole_word] : {std::pair(false, false), {true, false}, {false, true}}) {
      item.MatchCase = match_case;
      item.WholeWord = whole_word;
      found += TMatcher(item, Today).Text(each.Text) ? "1" : "0";
    }
    EXPECT_EQ(found, std::string(each.Blind ? "1" : "0") + (each.Exact ? "1" : "0") + (each.Word ? "1" : "0"))
        << each.Action << " " << each.Value;
  }
}

TEST_F(Matchers, Dates_By_Whole_Days) {
  // The days found among these, from today; "." is no date.
  const std::pair<int, const char*> cases[] = {
      {Action_Anytime, "-3 -2 -1 0 1 2 3"},
      {Action_Never, "."},
      {Action_Yesterday, "-1"},
      {Action_Today, "0"},
      {Action_Tomorrow, "1"},
      {Action_In_Next, "0 1 2"},
      {Action_In_Last, "-2 -1 0"},
      {Action_Not_In_Next, ". -3 -2 -1 3"},
      {Action_Not_In_Last, ". -3 1 2 3"},
      {Action_On, "-1"},
      {Action_On_Or_After, "-1 0 1 2 3"},
      {Action_On_Or_Before, ". -3 -2 -1"},
      {Action_Between, "-1 0 1"},
      {Action_Contains, ""},
  };
  for (const auto& [action, expected] : cases) {
    TSearchItem item = Item(action, "");
    item.IntegerValue = 2;
    item.Date1Value = Today - 1;
    item.Date2Value = Today + 1;
    const TMatcher matcher(item, Today + 0.5);
    std::string found = matcher.Date(0) ? "." : "";
    for (int day = -3; day <= 3; ++day) {
      for (const double time : {0.0, 0.9}) {
        if (matcher.Date(Today + day + time) && time == 0)
          found += (found.empty() ? "" : " ") + std::to_string(day);
        EXPECT_EQ(matcher.Date(Today + day), matcher.Date(Today + day + time));
      }
    }
    EXPECT_EQ(found, expected) << action;
  }
  TSearchItem item = Item(Action_In_Next, "");
  EXPECT_TRUE(TMatcher(item, Today + 0.5).Date(Today)) << "in no days is today";
}

TEST_F(Matchers, Numbers_And_Hundredths) {
  const std::pair<int, const char*> cases[] = {
      {Action_Number_Equals, "010"}, {Action_Less, "100"}, {Action_Greater, "001"}, {Action_Contains, "000"}};
  for (const auto& [action, expected] : cases) {
    TSearchItem item = Item(action, "");
    item.IntegerValue = 30'000'000;
    const TMatcher matcher(item, Today);
    std::string numbers, hundredths;
    for (const int more : {-1, 0, 1}) {
      numbers += matcher.Number(30'000'000 + more) ? "1" : "0";
      hundredths += matcher.Hundredths(3'000'000'000 + more) ? "1" : "0";
    }
    EXPECT_EQ(numbers + hundredths, std::string(expected) + expected);
  }
}

}  // namespace
