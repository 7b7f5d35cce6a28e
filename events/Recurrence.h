#pragma once

// From one date of a recurring set to the next. Pure calendar arithmetic without state; every routine here is
// callable at any time. Dates must lie in the years 1..9999, otherwise EConvert_Error is thrown.

#include <cstdint>

#include "Kt_dates.h"

namespace KTReminds {

using Kt_util_01::TDateTime;

/// `Freq` of a pattern. Stored: never renumber. A damaged row may hold any number, which gives no dates.
enum class TFrequency : int { None = 0, Daily = 1, Weekly = 2, Monthly = 3, Yearly = 4 };

/// The pattern fields of a master record.
struct TRecurrence_Pattern {
  TFrequency Freq = TFrequency::None;
  int Period = 1;             // the interval n: every n days, weeks, months or years
  bool PeriodDefault = true;  // plain interval; false: driven by the flags, Instance and Month
  std::uint16_t P = 0;        // the flags P1..P10: bit i is P(i + 1)
  int Instance = 0;           // 0 first .. 3 fourth, 4 last
  int Month = 0;              // 0 January .. 11 December; yearly pattern only
  TDateTime LastDate = 0;     // only its day counts; any value is allowed

  /// index 0..9 stands for P1..P10.
  constexpr bool Flag(int index) const { return (P >> index & 1) != 0; }
  constexpr void Set_Flag(int index, bool on = true) {
    const auto bit = static_cast<std::uint16_t>(1U << index);
    P = static_cast<std::uint16_t>(on ? P | bit : P & ~bit);
  }
};

/// The occurrence after `date`, or 0 when there is none on or before the day of LastDate; 0 too for no known
/// Freq. Keeps the time of day. A result that is not greater than 0 (before 1900) is never held
/// against LastDate. With Period 0 the plain modes give `date` back, with a negative one an earlier date: a
/// caller that repeats has to watch for progress.
///
/// Daily by weekday never looks past the first day after LastDate. A step beyond the year 9999 is a step
/// beyond any LastDate within the years. Throws EConvert_Error when a month or year step otherwise leaves the
/// years 1..9999, when a yearly pattern's month has no such day as `date`'s (the 31st with a February
/// pattern), and for an Instance or Month that is out of range where the pattern uses it.
TDateTime Next_Occurrence(const TRecurrence_Pattern& pattern, TDateTime date);

/// Moves `date` on to the next one on which a set is written out: dates that are not greater than 0 are
/// passed over, and a pattern that does not move forward ends there. False at the end. Throws as
/// Next_Occurrence does.
bool Next_Written_Date(const TRecurrence_Pattern& pattern, TDateTime& date);

/// The same with the fields given one by one. Count, when greater than 0, replaces Period; without
/// StopAtLastDate the result is not held against LastDate.
TDateTime AdvanceEventDate(TDateTime Date, TDateTime LastDate, bool PlainInterval, bool StopAtLastDate,
                           int Freq, int Count, int Period, bool P1, bool P2, bool P3, bool P4, bool P5,
                           bool P6, bool P7, bool P8, bool P9, bool P10, int Instance, int Month);

/// Index of the date's weekday among P1..P7: Monday 0 .. Sunday 6.
int MaskPosition(TDateTime Date);

/// Index of the date's weekday among P1..P10 as a monthly kind: Sunday 3 .. Saturday 9.
int Get_Pattern_From_Date(TDateTime Date);

/// The Instance proposed for a date: days 1 to 6 give 0, 7 to 13 give 1, 14 to 20 give 2, later ones 3;
/// never 4. This is not the count of the weekday within its month: the 7th already counts as the second.
int Get_Instance_from_Date(TDateTime Date);

}  // namespace KTReminds
