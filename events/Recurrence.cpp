#include "Recurrence.h"

#include <algorithm>
#include <array>
#include <bit>

#include "Kt_util_01.h"

namespace KTReminds {
namespace {

using Kt_util_01::Day_From_Date;
using Kt_util_01::Days_In_Month;

// Days are counted from 1 January of the year 1 and months from January of the year 1. That day was a Monday,
// so the rest of a division by 7 is the position in the weekday mask.
using TDay = std::int64_t;
using TMonth_Number = std::int64_t;

constexpr TDay Epoch = Day_From_Date(Kt_util_01::Min_Year, 1, 1);
constexpr TDay End_Of_Days = Day_From_Date(Kt_util_01::Max_Year, 12, 31) + 1 - Epoch;
constexpr TMonth_Number End_Of_Months = TMonth_Number{Kt_util_01::Max_Year} * 12;
constexpr int Sunday = 6;

[[noreturn, gnu::cold, gnu::noinline]] void Fail(const char* what) {
  throw Kt_util_01::EConvert_Error(what);
}

// The conversions add this before they truncate: it makes every date positive, and half a millisecond rounds
// as Whole_Day does. One addition serves both; it is exact enough for every whole millisecond of the
// years 1..9999.
constexpr double To_Day_Number = -static_cast<double>(Epoch) + 0.5 / Kt_util_01::Msecs_Per_Day;

TDay Day_Of(TDateTime date) {
  const double days = date + To_Day_Number;
  if (!(days >= 0 && days < End_Of_Days)) Fail("Date outside the years 1 to 9999");
  return static_cast<TDay>(days);
}

// Compared without truncating the last date: a whole number is greater than a value if it is greater than its
// whole part. A last date that is not a number lies before everything.
bool Is_After(TDay day, TDateTime last) {
  return !(static_cast<double>(day) <= last + To_Day_Number);
}

// A last date may be anything. The bounds keep the conversion defined and lie beyond every date that is held
// against it; a value that is not a number ends the set.
TDay Day_Of_Last(TDateTime last) {
  constexpr double Lowest = static_cast<double>(Epoch), Highest = 1e12;
  const double from_below = last > Lowest ? last : Lowest;
  return static_cast<TDay>((from_below < Highest ? from_below : Highest) + To_Day_Number);
}

// day * 2^32 / 7 leaves the rest of the division in the upper bits of the lower word, three of which name it.
unsigned Mask_Position(TDay day) {
  constexpr std::uint32_t Seventh = 0xFFFFFFFFU / 7 + 1;
  return static_cast<std::uint32_t>(day) * Seventh >> 29;
}

// The calendar repeats after 400 years, weekdays included. One such cycle is kept as a table, chosen so that
// the dates people enter need no shift into it.
constexpr int Cycle_Year = 1901;
constexpr int Cycle_Months = 4800;
constexpr TDay Cycle_Days = 146097;
constexpr TDay Cycle_Day = Day_From_Date(Cycle_Year, 1, 1) - Epoch;
constexpr TMonth_Number Cycle_Month = TMonth_Number{Cycle_Year - 1} * 12;

// All that the nth day of a month depends on, in one small number: the weekday of the 1st (0 Monday) and the
// length.
constexpr int Shapes = 32;
constexpr unsigned Shape_Of(unsigned weekday, int length) {
  return weekday << 2 | static_cast<unsigned>(length - 28);
}
constexpr unsigned Shape_Weekday(unsigned shape) {
  return shape >> 2;
}
constexpr int Shape_Length(unsigned shape) {
  return 28 + static_cast<int>(shape & 3);
}

// First day and shape of every month of the cycle and of the one after it.
constexpr auto Months = [] {
  std::array<std::uint32_t, Cycle_Months + 1> months{};
  auto first = static_cast<std::uint32_t>(Cycle_Day);
  for (int i = 0; i <= Cycle_Months; ++i) {
    const int length = Days_In_Month(Cycle_Year + i / 12, i % 12 + 1);
    months[i] = first << 5 | Shape_Of(first % 7, length);
    first += length;
  }
  return months;
}();
static_assert(Months[Cycle_Months] >> 5 == Cycle_Day + Cycle_Days && Cycle_Days % 7 == 0);

struct TMonth {
  TDay First;
  unsigned Shape;
};

// The month of a day of the cycle, counted from the cycle's start. The average month gives a first guess that
// is right or one too high.
constexpr TMonth_Number Month_In_Cycle(TDay day) {
  constexpr std::uint64_t Months_Per_Day = (std::uint64_t{Cycle_Months} << 32) / Cycle_Days;
  constexpr std::uint64_t Half_A_Month = std::uint64_t{1} << 31;
  constexpr std::uint64_t Ahead = Half_A_Month - Cycle_Day * Months_Per_Day;
  const std::uint64_t guess = (static_cast<std::uint64_t>(day) * Months_Per_Day + Ahead) >> 32;
  return static_cast<TMonth_Number>(guess - (static_cast<std::uint32_t>(day) < Months[guess] >> 5 ? 1 : 0));
}

static_assert([] {
  for (TMonth_Number i = 0; i < Cycle_Months; ++i) {
    const TDay first = Months[i] >> 5, last = (Months[i + 1] >> 5) - 1;
    if (Month_In_Cycle(first) != i || Month_In_Cycle(last) != i) return false;
  }
  return true;
}());

// 400-year cycles from the one in the table to that of a day or month.
constexpr std::int64_t Cycles_To(std::int64_t distance, std::int64_t cycle) {
  return (distance >= 0 ? distance : distance - cycle + 1) / cycle;
}

TMonth_Number Month_Of(TDay day) {
  const TDay distance = day - Cycle_Day;
  if (static_cast<std::uint64_t>(distance) < Cycle_Days) [[likely]]
    return Cycle_Month + Month_In_Cycle(day);
  const std::int64_t cycles = Cycles_To(distance, Cycle_Days);
  return Cycle_Month + cycles * Cycle_Months + Month_In_Cycle(day - cycles * Cycle_Days);
}

TMonth Month_At(TMonth_Number month) {
  const TMonth_Number distance = month - Cycle_Month;
  if (static_cast<std::uint64_t>(distance) < Cycle_Months) [[likely]] {
    return {Months[distance] >> 5, Months[distance] & (Shapes - 1)};
  }
  if (month < 0 || month >= End_Of_Months) Fail("Year outside 1 to 9999");
  const std::int64_t cycles = Cycles_To(distance, Cycle_Months);
  const std::uint32_t entry = Months[distance - cycles * Cycle_Months];
  return {(entry >> 5) + cycles * Cycle_Days, entry & (Shapes - 1)};
}

constexpr int Kinds = 10;
constexpr int Last_Instance = 4;

// Kinds in the order of the flags: day, weekday, weekend day, Sunday .. Saturday.
constexpr bool Is_Of_Kind(int kind, int weekday) {
  switch (kind) {
    case 0:
      return true;
    case 1:
      return weekday < 5;
    case 2:
      return weekday >= 5;
    default:
      return (weekday + 1) % 7 == kind - 3;
  }
}

// Days from the 1st to an instance of a kind in a month of a given shape.
using TOffsets = std::array<std::array<std::array<std::uint8_t, Shapes>, Last_Instance + 1>, Kinds>;
constexpr TOffsets Offsets = [] {
  TOffsets offsets{};
  for (int kind = 0; kind < Kinds; ++kind) {
    for (unsigned shape = 0; shape < 28; ++shape) {
      int found = 0;
      for (int day = 0; day < Shape_Length(shape); ++day) {
        if (!Is_Of_Kind(kind, static_cast<int>(Shape_Weekday(shape) + day) % 7)) continue;
        if (found < Last_Instance) offsets[kind][found++][shape] = static_cast<std::uint8_t>(day);
        offsets[kind][Last_Instance][shape] = static_cast<std::uint8_t>(day);
      }
    }
  }
  return offsets;
}();

// The highest flag names the kind; none at all means the first one.
TDay Nth_Kind_Of_Month(int instance, unsigned flags, const TMonth& month) {
  if (instance < 0 || instance > Last_Instance) Fail("Instance outside first to last");
  const auto kind = static_cast<unsigned>(std::bit_width(flags | 1)) - 1;
  return month.First + Offsets[kind][instance][month.Shape];
}

// The modes are separate routines with few arguments, and the entry points below only choose among them: so a
// call pays for the flags it uses and for nothing else.

// The next date is `step` days ahead; whole days are added to the value itself, so that its fraction never
// changes.
inline TDateTime Advance(TDateTime date, TDay day, TDay step, TDateTime last_date, bool stop_at_last_date) {
  const TDateTime result = date + static_cast<double>(step);
  if (stop_at_last_date && result > 0 && Is_After(day + step, last_date)) return 0;
  return result;
}

// Days to the next weekday of a mask that is not empty, 1..7. A loop of a few rounds rather than a look-up: a
// set repeats the same few steps, so the processor predicts them, and the next date need not wait for this
// weekday.
inline TDay Days_To_Selected(unsigned mask, unsigned weekday) {
  TDay days = 1;
  for (unsigned ahead = (mask | mask << 7) >> (weekday + 1); (ahead & 1) == 0; ahead >>= 1) ++days;
  return days;
}

inline TDateTime Next_Day(TDateTime date, TDateTime last_date, bool stop_at_last_date, std::int64_t n) {
  return Advance(date, Day_Of(date), n, last_date, stop_at_last_date);
}

TDateTime Next_Selected_Day(TDateTime date, TDateTime last_date, bool stop_at_last_date, unsigned mask) {
  const TDay day = Day_Of(date);
  const TDay limit = std::max<TDay>(1, Day_Of_Last(last_date) + 1 - day);
  const TDay step = mask == 0 ? limit : std::min(limit, Days_To_Selected(mask, Mask_Position(day)));
  return Advance(date, day, step, last_date, stop_at_last_date);
}

inline TDateTime Next_Week_Day(TDateTime date, TDateTime last_date, bool stop_at_last_date, std::int64_t n,
                               unsigned mask) {
  const TDay day = Day_Of(date);
  const unsigned weekday = Mask_Position(day);
  TDay step = 7 * n;
  if ((mask & ~(1U << weekday)) != 0) {
    step = Days_To_Selected(mask, weekday);
    if (weekday + step > Sunday) step += 7 * (n - 1);
  }
  return Advance(date, day, step, last_date, stop_at_last_date);
}

// A step beyond the last year there is: after any last date that lies within the years, and no date
// otherwise.
[[gnu::cold, gnu::noinline]] TDateTime Past_The_Last_Year(TDateTime last_date, bool stop_at_last_date) {
  if (stop_at_last_date && Is_After(End_Of_Days, last_date)) return 0;
  Fail("Year outside 1 to 9999");
}

// Keeps the day of the month, or takes the month's last when it has no such day.
TDateTime Add_Months(TDateTime date, TDateTime last_date, bool stop_at_last_date, std::int64_t months) {
  const TDay day = Day_Of(date);
  const TMonth_Number from = Month_Of(day);
  if (from + months >= End_Of_Months) [[unlikely]]
    return Past_The_Last_Year(last_date, stop_at_last_date);
  const TMonth to = Month_At(from + months);
  const TDay next = to.First + std::min<TDay>(day - Month_At(from).First, Shape_Length(to.Shape) - 1);
  return Advance(date, day, next - day, last_date, stop_at_last_date);
}

TDateTime Next_Month_Kind(TDateTime date, TDateTime last_date, bool stop_at_last_date, std::int64_t months,
                          unsigned flags, int instance) {
  const TDay day = Day_Of(date);
  const TMonth_Number month = Month_Of(day) + months;
  if (month >= End_Of_Months) [[unlikely]]
    return Past_The_Last_Year(last_date, stop_at_last_date);
  const TDay next = Nth_Kind_Of_Month(instance, flags, Month_At(month));
  return Advance(date, day, next - day, last_date, stop_at_last_date);
}

TDateTime Next_Year_Kind(TDateTime date, TDateTime last_date, bool stop_at_last_date, std::int64_t years,
                         unsigned flags, int instance, int month) {
  if (month < 0 || month > 11) Fail("Month outside January to December");
  const TDay day = Day_Of(date);
  const TMonth_Number from = Month_Of(day);
  if (from + 12 * years >= End_Of_Months) [[unlikely]]
    return Past_The_Last_Year(last_date, stop_at_last_date);
  const TMonth same_month = Month_At(from + 12 * years);
  const TDay day_of_month = std::min<TDay>(day - Month_At(from).First, Shape_Length(same_month.Shape) - 1);
  // Once a set is under way, its dates lie in the pattern's month.
  const int months_ahead = month - static_cast<int>(from % 12);
  const TMonth pattern_month = months_ahead == 0 ? same_month : Month_At(from + 12 * years + months_ahead);
  if (day_of_month >= Shape_Length(pattern_month.Shape)) Fail("The month of the pattern has no such day");
  const TDay next = Nth_Kind_Of_Month(instance, flags, pattern_month);
  return Advance(date, day, next - day, last_date, stop_at_last_date);
}

// flags: bit i is P(i + 1).
[[gnu::always_inline]] inline TDateTime Next_Date(TDateTime date, TDateTime last_date, bool plain_interval,
                                                  bool stop_at_last_date, TFrequency freq, std::int64_t n,
                                                  unsigned flags, int instance, int month) {
  const unsigned mask = flags & 0x7F;
  switch (freq) {
    case TFrequency::Daily:
      if (plain_interval) return Next_Day(date, last_date, stop_at_last_date, n);
      return Next_Selected_Day(date, last_date, stop_at_last_date, mask);
    case TFrequency::Weekly:
      return Next_Week_Day(date, last_date, stop_at_last_date, n, mask);
    case TFrequency::Monthly:
      if (plain_interval) return Add_Months(date, last_date, stop_at_last_date, n);
      return Next_Month_Kind(date, last_date, stop_at_last_date, n, flags, instance);
    case TFrequency::Yearly:
      if (plain_interval) return Add_Months(date, last_date, stop_at_last_date, 12 * n);
      return Next_Year_Kind(date, last_date, stop_at_last_date, n, flags, instance, month);
    default:
      return 0;
  }
}

}  // namespace

TDateTime Next_Occurrence(const TRecurrence_Pattern& pattern, TDateTime date) {
  return Next_Date(date, pattern.LastDate, pattern.PeriodDefault, true, pattern.Freq, pattern.Period,
                   pattern.P, pattern.Instance, pattern.Month);
}

bool Next_Written_Date(const TRecurrence_Pattern& pattern, TDateTime& date) {
  do {
    const TDateTime next = Next_Occurrence(pattern, date);
    if (next == 0 || next <= date) return false;
    date = next;
  } while (date <= 0);
  return true;
}

TDateTime AdvanceEventDate(TDateTime Date, TDateTime LastDate, bool PlainInterval, bool StopAtLastDate,
                           int Freq, int Count, int Period, bool P1, bool P2, bool P3, bool P4, bool P5,
                           bool P6, bool P7, bool P8, bool P9, bool P10, int Instance, int Month) {
  unsigned flags = P10;
  for (const bool flag : {P9, P8, P7, P6, P5, P4, P3, P2, P1}) flags = 2 * flags + flag;
  return Next_Date(Date, LastDate, PlainInterval, StopAtLastDate, static_cast<TFrequency>(Freq),
                   Count > 0 ? Count : Period, flags, Instance, Month);
}

int MaskPosition(TDateTime Date) {
  return static_cast<int>(Mask_Position(Day_Of(Date)));
}

int Get_Pattern_From_Date(TDateTime Date) {
  return (MaskPosition(Date) + 1) % 7 + 3;
}

int Get_Instance_from_Date(TDateTime Date) {
  const TDay day = Day_Of(Date);
  const TDay day_of_month = day - Month_At(Month_Of(day)).First + 1;
  return static_cast<int>(std::min<TDay>(day_of_month / 7, 3));
}

}  // namespace KTReminds
