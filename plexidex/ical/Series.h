#pragma once

// The dates of a component, before its exception dates and overrides.

#include <set>
#include <vector>

#include "Component.h"
#include "Rule_Dates.h"

namespace Plexidex {

/// A moment in milliseconds of local time, by which dates are compared.
using TMoment = std::int64_t;

struct TSeries {
  bool Is_Set = false;  // Pattern gives exactly the dates of the rule
  KTReminds::TRecurrence_Pattern Pattern;
  std::vector<TDateTime> Dates;  // of a set its first date only
  bool Starts_Only = false;      // the rule gives nothing at all, so that the start stands alone
  std::int64_t Count = 0;        // how many dates there are, those in Extra not counted
  std::vector<TDateTime> Extra;  // given one by one, besides a rule; ascending
  std::set<TMoment> Met;         // those of the moments asked for that are among the dates or Extra
  std::set<TMoment> Excluded;    // by a rule of exclusions
  std::string Cut;               // why only the first date is here, where all were too much; "" otherwise

  bool Is_Extra(TMoment moment) const;
};

/// The occurrence that a date of the file names: a day without a time means the occurrence of that day, and
/// for an all-day component a time means its day.
TDateTime Named_Occurrence(const TComponent& component, const TFile_Time& time);

/// Throws ERule_Error. The dates of a task are those of its start. What is read is taken from the budget.
TSeries Read_Series(const TComponent& component, TDateTime until, const std::set<TMoment>& asked,
                    TImport_Budget& budget);

}  // namespace Plexidex
