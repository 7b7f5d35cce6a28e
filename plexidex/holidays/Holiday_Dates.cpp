#include "Holiday_Dates.h"

#include <unicode/calendar.h>

#include <cmath>
#include <map>
#include <memory>
#include <stdexcept>

#include "Kt_dates.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// By the rule of the Gregorian calendar, in the steps of Butcher's form of it.
std::int64_t Easter_Day(int year) {
  const int golden = year % 19, century = year / 100, in_century = year % 100;
  const int moon = (19 * golden + century - century / 4 - (century - (century + 8) / 25 + 1) / 3 + 15) % 30;
  const int sunday = (32 + 2 * (century % 4) + 2 * (in_century / 4) - moon - in_century % 4) % 7;
  const int correction = (golden + 11 * moon + 22 * sunday) / 451;
  const int sum = moon + sunday - 7 * correction + 114;
  return Day_From_Date(year, sum / 31, sum % 31 + 1);
}

// By the Julian calendar, in days of the Gregorian one.
std::int64_t Orthodox_Easter_Day(int year) {
  const int moon = (19 * (year % 19) + 15) % 30;
  const int sunday = (2 * (year % 4) + 4 * (year % 7) - moon + 34) % 7;
  const int sum = moon + sunday + 114;
  const int days_between = year / 100 - year / 400 - 2;
  return Day_From_Date(year, sum / 31, sum % 31 + 1) + days_between;
}

std::int64_t Nth_Weekday(const TDay_Rule& rule, int year) {
  if (rule.Day > 0) {
    const std::int64_t first = Day_From_Date(year, rule.Month, 1);
    const int ahead = (static_cast<int>(rule.Weekday) - Day_Of_Week(first) + 7) % 7;
    return first + ahead + 7 * (rule.Day - 1);
  }
  const std::int64_t last = Day_From_Date(year, rule.Month, Days_In_Month(year, rule.Month));
  const int back = (Day_Of_Week(last) - static_cast<int>(rule.Weekday) + 7) % 7;
  return last - back + 7 * (rule.Day + 1);
}

// The sun falls behind by a quarter of a day each year, and leap years catch up. Good for a century.
std::int64_t Solar_Term_Day(const TDay_Rule& rule, int year) {
  constexpr double behind_each_year = 0.242194, parts = 10'000;
  const int years = year - 1980;
  const double position = rule.Day / parts + behind_each_year * years - std::floor(years / 4.0);
  return Day_From_Date(year, rule.Month, static_cast<int>(std::floor(position)));
}

icu::Calendar& Calendar_Of(TDay_Kind kind) {
  static std::map<TDay_Kind, std::unique_ptr<icu::Calendar>> calendars;
  std::unique_ptr<icu::Calendar>& calendar = calendars[kind];
  if (!calendar) {
    const char* name = kind == TDay_Kind::Islamic   ? "@calendar=islamic-umalqura"
                       : kind == TDay_Kind::Hebrew  ? "@calendar=hebrew"
                       : kind == TDay_Kind::Chinese ? "@calendar=chinese"
                                                    : "@calendar=dangi";
    UErrorCode status = U_ZERO_ERROR;
    calendar.reset(icu::Calendar::createInstance(*icu::TimeZone::getGMT(), icu::Locale(name), status));
    if (U_FAILURE(status)) throw std::runtime_error("The calendars of holidays cannot be loaded.");
  }
  return *calendar;
}

std::vector<std::int64_t> Days_In_Calendar(const TDay_Rule& rule, int year) {
  const auto to_moment = [](std::int64_t day) {
    return static_cast<UDate>((day - Unix_Epoch_Day) * Msecs_Per_Day);
  };
  icu::Calendar& calendar = Calendar_Of(rule.Kind);
  UErrorCode status = U_ZERO_ERROR;
  const std::int64_t first = Day_From_Date(year, 1, 1), last = Day_From_Date(year, 12, 31);
  calendar.setTime(to_moment(first), status);
  const int first_year = calendar.get(UCAL_EXTENDED_YEAR, status);
  calendar.setTime(to_moment(last), status);
  const int last_year = calendar.get(UCAL_EXTENDED_YEAR, status);
  std::vector<std::int64_t> days;
  for (int each = first_year; each <= last_year; ++each) {
    calendar.clear();
    calendar.set(UCAL_EXTENDED_YEAR, each);
    calendar.set(UCAL_MONTH, rule.Month - 1);
    calendar.set(UCAL_DATE, rule.Day);
    const UDate moment = calendar.getTime(status);
    if (U_FAILURE(status)) break;
    const auto day =
        static_cast<std::int64_t>(std::floor(moment / static_cast<double>(Msecs_Per_Day))) + Unix_Epoch_Day;
    if (day >= first && day <= last) days.push_back(day);
  }
  return days;
}

std::vector<std::int64_t> First_Days(const TDay_Rule& rule, int year) {
  switch (rule.Kind) {
    case TDay_Kind::Fixed:
      return {Day_From_Date(year, rule.Month, rule.Day)};
    case TDay_Kind::Nth:
      return {Nth_Weekday(rule, year)};
    case TDay_Kind::On_Or_After: {
      const std::int64_t day = Day_From_Date(year, rule.Month, rule.Day);
      return {day + (static_cast<int>(rule.Weekday) - Day_Of_Week(day) + 7) % 7};
    }
    case TDay_Kind::Easter:
      return {Easter_Day(year)};
    case TDay_Kind::Orthodox_Easter:
      return {Orthodox_Easter_Day(year)};
    case TDay_Kind::Solar_Term:
      return {Solar_Term_Day(rule, year)};
    default:
      return Days_In_Calendar(rule, year);
  }
}

}  // namespace

TWeekday Weekday_Of(std::int64_t day) {
  return static_cast<TWeekday>(Day_Of_Week(day));
}

int Year_Of(std::int64_t day) {
  return Date_From_Day(day).Year;
}

std::vector<std::int64_t> Days_Of_Rule(const TDay_Rule& rule, int year) {
  std::vector<std::int64_t> days;
  if (year % rule.Every != 0) return days;
  for (const std::int64_t first : First_Days(rule, year)) {
    for (int i = 0; i < rule.Length; ++i) days.push_back(first + rule.Offset + i);
  }
  return days;
}

}  // namespace Plexidex
