#include <cmath>

#include "Kt_util_01.h"

namespace Kt_util_01 {

namespace {

/// Rounded to a whole millisecond, so that chains of steps do not drift.
TDateTime Earlier_By(TDateTime value, std::int64_t count, double units_per_day) {
  return From_Msecs(To_Msecs(value - static_cast<double>(count) / units_per_day));
}

template <typename T>
int Compare(T a, T b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

}  // namespace

TDateTime Encode_Date(int year, int month, int day) {
  if (year < Min_Year || year > Max_Year || month < 1 || month > 12 || day < 1 ||
      day > Days_In_Month(year, month)) {
    throw EConvert_Error("There is no date with year " + std::to_string(year) + ", month " +
                         std::to_string(month) + " and day " + std::to_string(day) + ".");
  }
  return static_cast<TDateTime>(Day_From_Date(year, month, day));
}

TDateTime Encode_Time(int hour, int minute, int second, int msec) {
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 || msec < 0 ||
      msec > 999) {
    throw EConvert_Error("There is no time with hour " + std::to_string(hour) + ", minute " +
                         std::to_string(minute) + ", second " + std::to_string(second) + " and millisecond " +
                         std::to_string(msec) + ".");
  }
  return From_Msecs(((hour * 60 + minute) * 60 + second) * std::int64_t{1000} + msec);
}

TDateTime SubtractMins(TDateTime value, std::int64_t minutes) {
  return Earlier_By(value, minutes, 1440.0);
}

TDateTime SubtractSecs(TDateTime value, std::int64_t seconds) {
  return Earlier_By(value, seconds, 86400.0);
}

std::int64_t TimeApartInDays(TDateTime from, TDateTime to) {
  return Whole_Day(to) - Whole_Day(from);
}

std::int64_t Get_Alarm_Offset(TDateTime reference, TDateTime alarm) {
  return (To_Msecs(reference) - To_Msecs(alarm)) / 60'000;
}

int CompareDates(TDateTime a, TDateTime b) {
  return Compare(To_Msecs(a), To_Msecs(b));
}

int CompareInteger(std::int64_t a, std::int64_t b) {
  return Compare(a, b);
}

int CompareBool(bool a, bool b) {
  return Compare(static_cast<int>(a), static_cast<int>(b));
}

}  // namespace Kt_util_01
