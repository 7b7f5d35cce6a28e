#include "Series.h"

#include <algorithm>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// All dates of several rules together, in order. A rule may give one local time twice, where a clock was
// changed; two rules that give the same time mean one date.
std::vector<TDateTime> Collect_Dates(const TComponent& component, const std::vector<std::string>& rules,
                                     TDateTime until) {
  std::vector<TDateTime> dates;
  for (const std::string& rule : rules) {
    TRule_Dates of_rule(rule, component.Start, until);
    std::vector<TDateTime> others = std::move(dates), own;
    while (const auto date = of_rule.Next()) own.push_back(*date);
    std::sort(own.begin(), own.end());
    dates = {};
    std::set_union(others.begin(), others.end(), own.begin(), own.end(), std::back_inserter(dates));
    if (static_cast<std::int64_t>(dates.size()) > Most_Dates) {
      throw ERule_Error("gives more than " + std::to_string(Most_Dates) + " dates");
    }
  }
  return dates;
}

}  // namespace

bool TSeries::Is_Extra(TMoment moment) const {
  return std::binary_search(Extra.begin(), Extra.end(), From_Msecs(moment));
}

TDateTime Named_Occurrence(const TComponent& component, const TFile_Time& time) {
  const TFile_Time& start = component.Start;
  if (time.Is_Date == start.Is_Date) return time.Local();
  if (time.Is_Date) {
    TFile_Time completed = start;
    completed.Wall = From_Msecs(Whole_Day(time.Wall) * Msecs_Per_Day + Msec_Of_Day(start.Wall));
    return completed.Local();
  }
  const TDateTime local = time.Local();
  return Msec_Of_Day(local) == 0 ? local : static_cast<TDateTime>(Whole_Day(time.Wall));
}

TSeries Read_Series(const TComponent& component, TDateTime until, const std::set<TMoment>& asked) {
  TSeries series;
  const auto meet = [&](TDateTime date) {
    if (const TMoment moment = To_Msecs(date); asked.contains(moment)) series.Met.insert(moment);
  };

  std::set<TMoment> further;
  for (const TFile_Time& time : component.Dates) further.insert(To_Msecs(Named_Occurrence(component, time)));
  const auto on_date = [&](TDateTime date) {
    meet(date);
    further.erase(To_Msecs(date));
  };

  if (component.Rules.size() == 1 && !component.Is_Task() && component.Content.Days == 1) {
    const TTranslated_Rule translated =
        Translate_Rule(component.Rules.front(), component.Start, until, on_date);
    series.Is_Set = translated.Agrees;
    series.Pattern = translated.Pattern;
    series.Count = translated.Count;
    if (series.Is_Set) series.Dates = {translated.First};
  }
  if (!series.Is_Set) {
    series.Pattern = {};
    series.Dates = Collect_Dates(component, component.Rules, until);
    series.Starts_Only = !component.Rules.empty() && series.Dates.empty() && further.empty();
    if (component.Rules.empty() || series.Starts_Only) series.Dates = {component.Start.Local()};
    series.Count = static_cast<std::int64_t>(series.Dates.size());
    for (const TDateTime date : series.Dates) on_date(date);
  }
  for (const TMoment moment : further) {
    series.Extra.push_back(From_Msecs(moment));
    meet(series.Extra.back());
  }
  if ((series.Count + static_cast<std::int64_t>(series.Extra.size())) * component.Content.Days > Most_Dates) {
    throw ERule_Error("gives more than " + std::to_string(Most_Dates) + " days");
  }
  for (const TDateTime date : Collect_Dates(component, component.Exclusion_Rules, until)) {
    series.Excluded.insert(To_Msecs(date));
  }
  return series;
}

}  // namespace Plexidex
