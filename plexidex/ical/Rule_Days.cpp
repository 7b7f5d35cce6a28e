#include "Rule_Days.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

using TYear = TRule_Days::TYear;

int Year_Length(int year) {
  return Is_Leap_Year(year) ? 366 : 365;
}

int Weekday_Of(std::int64_t day) {
  return Day_Of_Week(day) - 1;
}

void Add(TYear& days, std::int64_t day, int year) {
  const TDate_Parts date = Date_From_Day(day);
  if (date.Year == year) days[static_cast<std::size_t>(date.Month - 1)] |= 1U << (date.Day - 1);
}

void Keep(TYear& days, const TYear& others) {
  for (std::size_t month = 0; month < days.size(); ++month) days[month] &= others[month];
}

}  // namespace

TRule_Days::TRule_Days(const icalrecurrencetype& rule, TDateTime start)
    : month_days(Values(rule.by_month_day)),
      year_days(Values(rule.by_year_day)),
      weeks(Values(rule.by_week_no)),
      week_start(rule.week_start - 1) {
  if (week_start < 0) week_start = 1;
  const bool of_year = rule.freq == ICAL_YEARLY_RECURRENCE, of_month = rule.freq == ICAL_MONTHLY_RECURRENCE;
  const std::vector<int> given_months = Values(rule.by_month);
  for (const int month : given_months) {
    const auto coded = static_cast<short>(month);
    if (!icalrecurrencetype_month_is_leap(coded) && month >= 1 && month <= 12)
      months.set(static_cast<std::size_t>(month));
  }
  nth_of_year = of_year && given_months.empty();
  for (const int coded : Values(rule.by_day)) {
    const int weekday = icalrecurrencetype_day_day_of_week(static_cast<short>(coded)) - 1;
    const int position = icalrecurrencetype_day_position(static_cast<short>(coded));
    has_weekdays = true;
    // Only months and years have a second Monday.
    if (position == 0 || !(of_year || of_month)) {
      weekdays.set(static_cast<std::size_t>(weekday));
    } else {
      nth_weekdays.emplace_back(position, weekday);
    }
  }

  const TDate_Parts first = Decode_Date(start);
  const bool names_days = has_weekdays || !month_days.empty() || !year_days.empty();
  if (!names_days && (rule.freq == ICAL_WEEKLY_RECURRENCE || !weeks.empty())) {
    has_weekdays = true;
    weekdays.set(static_cast<std::size_t>(Weekday_Of(Whole_Day(start))));
  } else if (!names_days && (of_year || of_month)) {
    month_days = {first.Day};
    if (nth_of_year) months.set(static_cast<std::size_t>(first.Month));
  }
  if (given_months.empty() && months.none()) months.set();
}

const TYear& TRule_Days::Of_Year(int year) {
  if (year == known_year) return known;
  known_year = year;
  known = {};
  Set_Month_Days(year, known);
  if (!year_days.empty()) Keep_Year_Days(year, known);
  if (!weeks.empty()) Keep_Weeks(year, known);
  if (has_weekdays) Keep_Weekdays(year, known);
  return known;
}

bool TRule_Days::Meets(std::int64_t day) {
  const TDate_Parts date = Date_From_Day(day);
  return (Of_Year(date.Year)[static_cast<std::size_t>(date.Month - 1)] >> (date.Day - 1) & 1) != 0;
}

std::int64_t TRule_Days::Week_Begin(std::int64_t day) const {
  return day - (Weekday_Of(day) - week_start + 7) % 7;
}

void TRule_Days::Set_Month_Days(int year, TYear& days) const {
  for (std::size_t month = 1; month <= 12; ++month) {
    if (!months.test(month)) continue;
    const int length = Days_In_Month(year, static_cast<int>(month));
    if (month_days.empty()) days[month - 1] = 0xFFFFFFFFU >> (32 - length);
    for (const int number : month_days) {
      const int day = number > 0 ? number : length + 1 + number;
      if (day >= 1 && day <= length) days[month - 1] |= 1U << (day - 1);
    }
  }
}

void TRule_Days::Keep_Year_Days(int year, TYear& days) const {
  TYear named{};
  for (const int number : year_days) {
    const int day = number > 0 ? number : Year_Length(year) + 1 + number;
    if (day >= 1) Add(named, Day_From_Date(year, 1, 1) + day - 1, year);
  }
  Keep(days, named);
}

// A year's first week is the first with four days in it, so that weeks may begin before their year or end
// after it.
void TRule_Days::Keep_Weeks(int year, TYear& days) const {
  TYear named{};
  for (int of = year - 1; of <= year + 1; ++of) {
    const std::int64_t first = Week_Begin(Day_From_Date(of, 1, 4)),
                       end = Week_Begin(Day_From_Date(of + 1, 1, 4));
    for (const int number : weeks) {
      const std::int64_t week = number > 0 ? first + 7 * (number - 1) : end + 7 * number;
      if (week < first || week >= end) continue;
      for (int day = 0; day < 7; ++day) Add(named, week + day, year);
    }
  }
  Keep(days, named);
}

void TRule_Days::Keep_Weekdays(int year, TYear& days) const {
  TYear named{};
  const auto add_nth = [&](std::int64_t begin, int length) {
    for (const auto& [position, weekday] : nth_weekdays) {
      const std::int64_t last = begin + length - 1;
      const std::int64_t day = position > 0
                                   ? begin + (weekday - Weekday_Of(begin) + 7) % 7 + 7 * (position - 1)
                                   : last - (Weekday_Of(last) - weekday + 7) % 7 + 7 * (position + 1);
      if (day >= begin && day <= last) Add(named, day, year);
    }
  };
  std::int64_t begin = Day_From_Date(year, 1, 1);
  if (nth_of_year) add_nth(begin, Year_Length(year));
  for (int month = 1; month <= 12; ++month) {
    const int length = Days_In_Month(year, month);
    if (!nth_of_year) add_nth(begin, length);
    for (int day = 0; day < length; ++day) {
      if (weekdays.test(static_cast<std::size_t>(Weekday_Of(begin + day))))
        named[static_cast<std::size_t>(month - 1)] |= 1U << day;
    }
    begin += length;
  }
  Keep(days, named);
}

}  // namespace Plexidex
