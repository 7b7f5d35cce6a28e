#pragma once

// Calendar arithmetic on date-time values. Inline, because recurrence steps through hundreds of thousands of
// dates and a call would cost more than the arithmetic.

#include <cmath>
#include <cstdint>

namespace Kt_util_01 {

/// Days since 30 December 1899; the fraction is the time of day. The scale is linear: -0.25 is 18:00 on the
/// 29th, so the order of values is the order of moments on both sides of day 0. Local time, Gregorian
/// calendar in both directions.
using TDateTime = double;

inline constexpr std::int64_t Msecs_Per_Day = 86'400'000;

/// Days from 30 December 1899 to 1 January 1970.
inline constexpr std::int64_t Unix_Epoch_Day = 25569;

/// The range in which a date can be formed from year, month and day.
inline constexpr int Min_Year = 1;
inline constexpr int Max_Year = 9999;

struct TDate_Parts {
  int Year;
  int Month;  // 1..12
  int Day;    // 1..31
};

struct TTime_Parts {
  int Hour;    // 0..23
  int Minute;  // 0..59
  int Second;  // 0..59
  int Msec;    // 0..999
};

/// The value as whole milliseconds since day 0, rounded to the nearest: a fraction of a day has no exact
/// binary form, and truncating would turn about half of all minutes into the minute before. Any double will
/// do: a value out of range, as from a damaged file, is clamped to the nearest limit, so that two results can
/// be subtracted without overflow; not-a-number is day 0.
inline std::int64_t To_Msecs(TDateTime value) {
  constexpr double limit = 4.0e18;
  const double msecs = std::floor(value * static_cast<double>(Msecs_Per_Day) + 0.5);
  if (msecs > -limit && msecs < limit) return static_cast<std::int64_t>(msecs);
  if (msecs != msecs) return 0;
  return static_cast<std::int64_t>(msecs < 0 ? -limit : limit);
}

inline constexpr TDateTime From_Msecs(std::int64_t msecs) {
  return static_cast<double>(msecs) / static_cast<double>(Msecs_Per_Day);
}

/// The day number, after rounding to milliseconds; rounds towards the past for days before day 0.
inline std::int64_t Whole_Day(TDateTime value) {
  const std::int64_t msecs = To_Msecs(value);
  const std::int64_t day = msecs / Msecs_Per_Day;
  return msecs % Msecs_Per_Day < 0 ? day - 1 : day;
}

/// Milliseconds since midnight, 0..86399999.
inline std::int64_t Msec_Of_Day(TDateTime value) {
  return To_Msecs(value) - Whole_Day(value) * Msecs_Per_Day;
}

inline constexpr bool Is_Leap_Year(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// month 1..12.
inline constexpr int Days_In_Month(int year, int month) {
  if (month == 2) return Is_Leap_Year(year) ? 29 : 28;
  return 30 + ((month ^ (month >> 3)) & 1);
}

/// Day number of a Gregorian date. The caller guarantees that the date exists.
inline constexpr std::int64_t Day_From_Date(int year, int month, int day) {
  // Years start in March here, so the leap day is the last of its year.
  const std::int64_t y = month <= 2 ? year - 1 : year;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t year_of_era = y - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468 + Unix_Epoch_Day;
}

inline constexpr TDate_Parts Date_From_Day(std::int64_t day) {
  const std::int64_t z = day - Unix_Epoch_Day + 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t day_of_era = z - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted_month = (5 * day_of_year + 2) / 153;
  const int month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  return {static_cast<int>(year_of_era + era * 400 + (month <= 2 ? 1 : 0)), month,
          static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1)};
}

/// 1 Sunday, 2 Monday .. 7 Saturday.
inline constexpr int Day_Of_Week(std::int64_t day) {
  // Day 0 was a Saturday.
  const std::int64_t rest = (day + 6) % 7;
  return static_cast<int>(rest < 0 ? rest + 7 : rest) + 1;
}

inline TDate_Parts Decode_Date(TDateTime value) {
  return Date_From_Day(Whole_Day(value));
}

inline TTime_Parts Decode_Time(TDateTime value) {
  const auto msecs = static_cast<int>(Msec_Of_Day(value));
  return {msecs / 3'600'000, msecs / 60'000 % 60, msecs / 1000 % 60, msecs % 1000};
}

}  // namespace Kt_util_01
