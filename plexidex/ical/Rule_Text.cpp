#include "Rule_Text.h"

#include <algorithm>
#include <bit>

#include "Kt_util_01.h"
#include "Line_Writer.h"
#include "Rule_Dates.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::TFrequency;
using KTReminds::TRecurrence_Pattern;

namespace {

constexpr int Last_Instance = 4;
constexpr const char* Mask_Days[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
constexpr const char* Kind_Days[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

std::string By_Mask(const TRecurrence_Pattern& pattern) {
  std::string days;
  for (int i = 0; i < 7; ++i) {
    if (pattern.Flag(i)) days += (days.empty() ? ";BYDAY=" : ",") + std::string(Mask_Days[i]);
  }
  return days;
}

std::string By_Kind(const TRecurrence_Pattern& pattern) {
  const int position = pattern.Instance == Last_Instance ? -1 : pattern.Instance + 1;
  const std::string place = std::to_string(position);
  const auto kind = static_cast<int>(std::bit_width(pattern.P | 1U)) - 1;
  switch (kind) {
    case 0:
      return ";BYMONTHDAY=" + place;
    case 1:
      return ";BYDAY=MO,TU,WE,TH,FR;BYSETPOS=" + place;
    case 2:
      return ";BYDAY=SA,SU;BYSETPOS=" + place;
    default:
      return ";BYDAY=" + place + Kind_Days[kind - 3];
  }
}

// "" for a pattern that no rule describes.
std::string Rule_Of(const TRecurrence_Pattern& pattern) {
  if (pattern.Period < 1 || pattern.Instance < 0 || pattern.Instance > Last_Instance) return {};
  const std::string interval = pattern.Period == 1 ? "" : ";INTERVAL=" + std::to_string(pattern.Period);
  switch (pattern.Freq) {
    case TFrequency::Daily:
      return pattern.PeriodDefault ? "FREQ=DAILY" + interval : "FREQ=DAILY" + By_Mask(pattern);
    case TFrequency::Weekly:
      return "FREQ=WEEKLY" + interval + By_Mask(pattern);
    case TFrequency::Monthly:
      return "FREQ=MONTHLY" + interval + (pattern.PeriodDefault ? "" : By_Kind(pattern));
    case TFrequency::Yearly:
      return "FREQ=YEARLY" + interval +
             (pattern.PeriodDefault ? ""
                                    : ";BYMONTH=" + std::to_string(pattern.Month + 1) + By_Kind(pattern));
    default:
      return {};
  }
}

// The dates of a rule that an import turns into a set again; none for another one.
std::vector<TDateTime> Dates_Of(const std::string& rule, TDateTime start, bool are_days) {
  std::vector<TDateTime> found;
  try {
    TFile_Time from;
    from.Wall = start;
    from.Is_Date = are_days;
    TImport_Budget budget;
    const auto add = [&found](TDateTime date) { found.push_back(date); };
    if (!Translate_Rule(rule, from, start, budget, add).Agrees) found.clear();
  } catch (const ERule_Error&) {
    found.clear();
  } catch (const ELimit_Error&) {
    found.clear();
  }
  return found;
}

std::vector<TDateTime> Without(const std::vector<TDateTime>& dates, const std::vector<TDateTime>& others) {
  std::vector<TDateTime> left;
  std::set_difference(dates.begin(), dates.end(), others.begin(), others.end(), std::back_inserter(left));
  return left;
}

}  // namespace

TWritten_Dates Written_Dates(const TRecurrence_Pattern& pattern, TDateTime first,
                             const std::vector<TDateTime>& dates, bool are_days) {
  TWritten_Dates best;
  best.Start = dates.front();
  best.Further.assign(dates.begin() + 1, dates.end());
  std::string rule = Rule_Of(pattern);
  if (rule.empty() || dates.size() < 2) return best;
  rule += ";UNTIL=" + Moment_Text(dates.back(), are_days);

  const auto is_ours = [&dates](TDateTime date) {
    return std::binary_search(dates.begin(), dates.end(), date);
  };
  const auto try_start = [&](TDateTime start) {
    std::vector<TDateTime> found = Dates_Of(rule, start, are_days);
    // Other programs take the start for a date of the entry, whatever the rule says.
    if (found.empty() || (found.front() != start && !is_ours(start))) return found;
    std::vector<TDateTime> missing = Without(found, dates), further = Without(dates, found);
    const std::size_t exceptions = missing.size() + further.size(),
                      least = best.Missing.size() + best.Further.size();
    // With as many exceptions as dates it is still known to be a set.
    if (exceptions < least || (exceptions == least && best.Rule.empty())) {
      best = {start, rule, std::move(missing), std::move(further)};
    }
    return found;
  };
  const std::vector<TDateTime> found = try_start(first);
  // Where the set's own beginning has been deleted, a later one may need fewer exceptions.
  const auto common = std::find_if(found.begin(), found.end(), is_ours);
  if (common != found.end() && !is_ours(first)) try_start(*common);
  return best;
}

}  // namespace Plexidex
