#pragma once

#include <libical/ical.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <utility>
#include <vector>

#include "Kt_dates.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

/// The values of one part of a rule; none when it is not given.
template <std::size_t Size>
std::vector<int> Values(const short (&list)[Size]) {
  std::vector<int> values;
  for (const short value : list) {
    if (value == ICAL_RECURRENCE_ARRAY_MAX) break;
    values.push_back(value);
  }
  return values;
}

/// The days of the Gregorian calendar that meet a rule's parts of months, weeks and days, and what the start
/// says where the rule leaves a day open.
class TRule_Days {
 public:
  /// The days of each month, the first day in the lowest bit.
  using TYear = std::array<std::uint32_t, 12>;

  TRule_Days(const icalrecurrencetype& rule, TDateTime start);

  /// Valid until it is asked for another year.
  const TYear& Of_Year(int year);
  bool Meets(std::int64_t day);
  /// The first day of its week.
  std::int64_t Week_Begin(std::int64_t day) const;

 private:
  using TWeekdays = std::bitset<7>;  // from Sunday

  void Set_Month_Days(int year, TYear& days) const;
  void Keep_Year_Days(int year, TYear& days) const;
  void Keep_Weeks(int year, TYear& days) const;
  void Keep_Weekdays(int year, TYear& days) const;

  std::vector<int> month_days, year_days, weeks;
  std::bitset<13> months;
  TWeekdays weekdays;
  std::vector<std::pair<int, int>> nth_weekdays;  // position and weekday from 0, Sunday
  bool has_weekdays = false;
  bool nth_of_year = false;
  int week_start = 0;  // from 0, Sunday
  int known_year = 0;
  TYear known{};
};

}  // namespace Plexidex
