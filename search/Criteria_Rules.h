#pragma once

// How a search page edits the criteria of the current search, one at a time.

#include <limits>
#include <string>
#include <vector>

#include "Search_Vocabulary.h"

namespace KTReminds {

/// A criterion as it is being put together.
struct TCriterion_Input {
  static constexpr int None = std::numeric_limits<int>::min();  // nothing has been chosen
  int Group = None, Field = None, Action = None;
  std::string Template;  // of a template group
  std::string Value;
  bool MatchCase = false, WholeWord = false;
};

/// What has to be put right before a criterion can be added.
enum class TCriterion_Fault { None, Group, Field, Action, Value };

/// Adds a criterion to the current search, which must be there. The value is trimmed, and written as its
/// validation has it; one that the action does not ask for is left out, with the two flags. The user is told
/// of a fault.
TCriterion_Fault Add_Criterion(TCriterion_Input& input);
/// Takes a criterion out of the current search, to be changed and added again.
TCriterion_Input Take_Out_Criterion(int index);

/// The groups of the calendar.
TSearch_Choices Calendar_Groups();
/// The page of results on which what the current search asks for can be found: the contacts', unless it asks
/// of the calendar, or of tasks alone.
int Results_Of_Search();

/// The lines of the list of criteria: none, or a heading and then one line for each.
std::vector<std::string> Criteria_Lines(const std::string& book);

}  // namespace KTReminds
