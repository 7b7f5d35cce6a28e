#include "Criteria_Rules.h"

#include "Current_Search.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

TCriterion_Fault Refused(TCriterion_Fault fault) {
  Raise_Error("Invalid Search Criteria",
              "The Search Criteria specified is invalid. Please respecify before trying again");
  return fault;
}

}  // namespace

TCriterion_Fault Add_Criterion(TCriterion_Input& input) {
  if (input.Group == TCriterion_Input::None) return Refused(TCriterion_Fault::Group);
  if (input.Field == TCriterion_Input::None) return Refused(TCriterion_Fault::Field);
  if (input.Action == TCriterion_Input::None) return Refused(TCriterion_Fault::Action);
  TCriterion_Input added = input;
  if (Show_Value_Field(input.Action)) {
    input.Value = std::string(Kt_data_01::Trimmed(input.Value));
    if (input.Value.empty()) return Refused(TCriterion_Fault::Value);
    std::int32_t number = 0;
    TDateTime first = 0, second = 0;
    if (!Validate_Value(input.Value, input.Group, input.Field, input.Action, number, first, second))
      return TCriterion_Fault::Value;
    added = input;
  } else {
    added.Value.clear();
    added.MatchCase = added.WholeWord = false;
  }
  CurrentSearch->Add_Field(added.Group, added.Field, added.Action, added.Value, added.Template,
                           added.MatchCase, added.WholeWord);
  return TCriterion_Fault::None;
}

TCriterion_Input Take_Out_Criterion(int index) {
  TCriterion_Input input;
  input.Group = CurrentSearch->Get_Field(index);
  input.Field = CurrentSearch->Get_SearchType(index);
  input.Action = CurrentSearch->Get_Action(index);
  input.Template = CurrentSearch->Get_Template(index);
  input.Value = CurrentSearch->Get_Value(index);
  input.MatchCase = CurrentSearch->Get_MatchCase(index);
  input.WholeWord = CurrentSearch->Get_WholeWord(index);
  CurrentSearch->Delete(index);
  return input;
}

TSearch_Choices Calendar_Groups() {
  TSearch_Choices groups;
  for (const int group : {Group_Calendar_Types, Group_Calendar_Events, Group_Tasks, Group_Holidays})
    groups.push_back({group, Get_Group_Name(group, {})});
  return groups;
}

int Results_Of_Search() {
  bool of_tasks = false;
  for (const TSearchItem& item : CurrentSearch->Items) {
    switch (item.Field) {
      case Group_Calendar_Types:
      case Group_Calendar_Events:
      case Group_Holidays:
        return Page_Calendar_Results;
      case Group_Tasks:
        of_tasks = true;
        break;
      default:
        return Page_Contact_Results;
    }
  }
  return of_tasks ? Page_Task_Results : Page_Contact_Results;
}

std::vector<std::string> Criteria_Lines(const std::string& book) {
  std::vector<std::string> lines;
  if (!CurrentSearch || CurrentSearch->Items.empty()) return lines;
  const int count = static_cast<int>(CurrentSearch->Items.size());
  lines.emplace_back("Where... ");
  for (int i = 0; i < count; ++i)
    lines.push_back("    [ " + CurrentSearch->Get_Search_Criteria(i, book) + " ]" +
                    (i + 1 < count ? "  And..." : ""));
  return lines;
}

}  // namespace KTReminds
