#include "Series.h"

#include <algorithm>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// All dates of several rules together, in order. Each is an entry, or excludes one. A rule may give one local
// time twice, where a clock was changed; two rules that give the same time mean one date.
std::vector<TDateTime> Collect_Dates(const TComponent& component, const std::vector<std::string>& rules,
                                     TDateTime until, TImport_Budget& budget, bool are_entries) {
  std::vector<TDateTime> dates;
  for (const std::string& rule : rules) {
    TRule_Dates of_rule(rule, component.Start, until, budget);
    std::vector<TDateTime> others = std::move(dates), own;
    while (const auto date = of_rule.Next()) {
      own.push_back(*date);
      if (are_entries) budget.Check_Entries(std::ssize(own));
    }
    std::sort(own.begin(), own.end());
    dates = {};
    std::set_union(others.begin(), others.end(), own.begin(), own.end(), std::back_inserter(dates));
    if (are_entries) budget.Check_Entries(std::ssize(dates));
  }
  return dates;
}

// What it weighs to write a series. The text of an event is stored with each of its masters; the first
// comes from the file as it is, but each copy counts as more entries where it is long.
std::int64_t Weight(const TComponent& component, const TSeries& series) {
  constexpr std::size_t text_of_entry = 1024;
  const auto further = static_cast<std::int64_t>(series.Extra.size());
  const std::int64_t masters = series.Is_Set ? 1 : series.Count + further;
  const KTReminds::TEvent_Record& record = component.Content.Record;
  const std::size_t text =
      record.Title.size() + record.Location.size() + record.Notes.size() + component.UID.size();
  return (series.Count + further) * component.Content.Days +
         (masters - 1) * static_cast<std::int64_t>(text / text_of_entry);
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

namespace {

TSeries Read_All(const TComponent& component, TDateTime until, const std::set<TMoment>& asked,
                 TImport_Budget& budget) {
  TSeries series;
  const auto meet = [&](TDateTime date) {
    if (const TMoment moment = To_Msecs(date); asked.contains(moment)) series.Met.insert(moment);
  };

  std::set<TMoment> further;
  for (const TFile_Time& time : component.Dates) further.insert(To_Msecs(Named_Occurrence(component, time)));
  TDateTime last = component.Start.Local();
  const auto on_date = [&](TDateTime date) {
    meet(date);
    further.erase(To_Msecs(date));
    last = std::max(last, date);
  };

  if (component.Rules.size() == 1 && !component.Is_Task() && component.Content.Days == 1) {
    const TTranslated_Rule translated =
        Translate_Rule(component.Rules.front(), component.Start, until, budget, on_date);
    series.Is_Set = translated.Agrees;
    series.Pattern = translated.Pattern;
    series.Count = translated.Count;
    if (series.Is_Set) series.Dates = {translated.First};
  }
  if (!series.Is_Set) {
    series.Pattern = {};
    series.Dates = Collect_Dates(component, component.Rules, until, budget, true);
    series.Starts_Only = !component.Rules.empty() && series.Dates.empty() && further.empty();
    if (component.Rules.empty() || series.Starts_Only) series.Dates = {component.Start.Local()};
    series.Count = static_cast<std::int64_t>(series.Dates.size());
    for (const TDateTime date : series.Dates) on_date(date);
  }
  for (const TMoment moment : further) {
    series.Extra.push_back(From_Msecs(moment));
    meet(series.Extra.back());
  }
  if (!series.Extra.empty()) last = std::max(last, series.Extra.back());
  budget.Check_Entries(Weight(component, series));
  for (const TDateTime date : Collect_Dates(component, component.Exclusion_Rules, last, budget, false))
    series.Excluded.insert(To_Msecs(date));
  budget.Take_Entries(Weight(component, series));
  return series;
}

// The first date alone, or the start where not even that can be found.
TSeries Read_First(const TComponent& component, TDateTime until, const std::set<TMoment>& asked,
                   TImport_Budget& budget) {
  TSeries series;
  TDateTime first = component.Start.Local();
  try {
    if (!component.Rules.empty()) {
      TRule_Dates dates(component.Rules.front(), component.Start, until, budget);
      if (const auto date = dates.Next()) first = *date;
    }
  } catch (const ELimit_Error&) {
    first = component.Start.Local();
  }
  series.Dates = {first};
  series.Count = 1;
  if (asked.contains(To_Msecs(first))) series.Met.insert(To_Msecs(first));
  return series;
}

}  // namespace

TSeries Read_Series(const TComponent& component, TDateTime until, const std::set<TMoment>& asked,
                    TImport_Budget& budget) {
  try {
    return Read_All(component, until, asked, budget);
  } catch (const ELimit_Error& e) {
    TSeries series = Read_First(component, until, asked, budget);
    series.Cut = e.what();
    return series;
  }
}

}  // namespace Plexidex
