#pragma once

#include <string>
#include <vector>

#include "Recurrence.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

/// A set's dates as a calendar file gives them.
struct TWritten_Dates {
  TDateTime Start = 0;
  std::string Rule;                // "" for none: Start and Further are all dates
  std::vector<TDateTime> Missing;  // dates of the rule that are not in the set: exception dates
  std::vector<TDateTime> Further;  // dates of the set that the rule does not give
};

/// Finds how to give the dates of a set: by the rule of its pattern where that is shorter than a list of
/// them. `dates` are ascending, unique and not empty; `first` is where the pattern starts.
TWritten_Dates Written_Dates(const KTReminds::TRecurrence_Pattern& pattern, TDateTime first,
                             const std::vector<TDateTime>& dates, bool are_days);

}  // namespace Plexidex
