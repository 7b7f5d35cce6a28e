#include "Recurrence.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <optional>
#include <vector>

#include "Kt_util_01.h"

namespace {

using namespace KTReminds;
using Kt_util_01::EConvert_Error;
using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr TDateTime Nine = 0.375;
constexpr int Last = 4;  // as an Instance

sys_days On(int y, unsigned m, unsigned d) {
  return year(y) / month(m) / day(d);
}
TDateTime At(sys_days date, TDateTime time = Nine) {
  return (date - On(1899, 12, 30)).count() + time;
}
TDateTime At(int y, unsigned m, unsigned d, TDateTime time = Nine) {
  return At(On(y, m, d), time);
}
int Monday_Based(sys_days date) {
  return static_cast<int>(std::chrono::weekday(date).iso_encoding()) - 1;
}

const TDateTime Far_Away = At(9999, 12, 31);

TRecurrence_Pattern Pattern(int freq, int n, std::initializer_list<int> flags, int instance = 0,
                            int in_month = 0) {
  TRecurrence_Pattern pattern{static_cast<TFrequency>(freq), n, false, 0, instance, in_month, Far_Away};
  for (const int flag : flags) pattern.Set_Flag(flag - 1);
  return pattern;
}

TRecurrence_Pattern Plain(int freq, int n, TDateTime last = Far_Away) {
  return {static_cast<TFrequency>(freq), n, true, 0, 0, 0, last};
}

TDateTime Call(const TRecurrence_Pattern& p, TDateTime date, bool stop = true, int count = 0) {
  return AdvanceEventDate(date, p.LastDate, p.PeriodDefault, stop, static_cast<int>(p.Freq), count, p.Period,
                          p.Flag(0), p.Flag(1), p.Flag(2), p.Flag(3), p.Flag(4), p.Flag(5), p.Flag(6),
                          p.Flag(7), p.Flag(8), p.Flag(9), p.Instance, p.Month);
}

// The definition of every mode, walked day by day on another calendar implementation. Empty: the call must
// fail.

year_month_day Slow_Add_Months(year_month_day date, int n) {
  int y = static_cast<int>(date.year()), m = static_cast<int>(static_cast<unsigned>(date.month()));
  for (; n > 0; --n) m == 12 ? (m = 1, ++y) : ++m;
  for (; n < 0; ++n) m == 1 ? (m = 12, --y) : --m;
  year_month_day result = year(y) / m / date.day();
  while (!result.ok()) result = year(y) / m / (result.day() - std::chrono::days(1));
  return result;
}

sys_days Slow_Nth_Kind(int instance, int kind, year_month_day in) {
  std::vector<sys_days> found;
  for (sys_days d = in.year() / in.month() / 1; year_month_day(d).month() == in.month();
       d += std::chrono::days(1)) {
    const bool weekend = Monday_Based(d) >= 5;
    const bool of_kind = kind == 0 || (kind == 1 && !weekend) || (kind == 2 && weekend) ||
                         std::chrono::weekday(d).c_encoding() + 3U == static_cast<unsigned>(kind);
    if (of_kind) found.push_back(d);
  }
  return instance == Last ? found.back() : found.at(instance);
}

std::optional<sys_days> Slow_Next(const TRecurrence_Pattern& p, sys_days date) {
  int kind = 9;
  while (kind > 0 && !p.Flag(kind)) --kind;
  if (p.Freq == TFrequency::Daily && p.PeriodDefault) return date + std::chrono::days(p.Period);
  if (p.Freq == TFrequency::Daily) {
    do date += std::chrono::days(1);
    while (!p.Flag(Monday_Based(date)) && At(date, 0) <= p.LastDate);
    return date;
  }
  if (p.Freq == TFrequency::Weekly) {
    const int today = Monday_Based(date);
    const auto selected = [&](int k) { return (p.P & 0x7F) == 0 ? k == today : p.Flag(k); };
    for (int k = today + 1; k < 7; ++k) {
      if (selected(k)) return date + std::chrono::days(k - today);
    }
    sys_days d = date - std::chrono::days(today) + std::chrono::weeks(p.Period);
    while (!selected(Monday_Based(d))) d += std::chrono::days(1);
    return d;
  }
  const year_month_day stepped =
      Slow_Add_Months(date, p.Freq == TFrequency::Monthly ? p.Period : 12 * p.Period);
  if (p.PeriodDefault) return stepped;
  if (p.Freq == TFrequency::Monthly) return Slow_Nth_Kind(p.Instance, kind, stepped);
  const year_month_day anchor = stepped.year() / (p.Month + 1) / stepped.day();
  if (!anchor.ok()) return std::nullopt;
  return Slow_Nth_Kind(p.Instance, kind, anchor);
}

void Compare(const TRecurrence_Pattern& p, sys_days date) {
  const auto expected = Slow_Next(p, date);
  if (!expected) {
    ASSERT_THROW(Call(p, At(date)), EConvert_Error) << At(date);
    return;
  }
  const TDateTime next = Call(p, At(date));
  ASSERT_EQ(next, At(*expected)) << "from " << At(date) << " Freq " << static_cast<int>(p.Freq) << " n "
                                 << p.Period << " P " << p.P << " Instance " << p.Instance << " Month "
                                 << p.Month;
  ASSERT_EQ(Next_Occurrence(p, At(date)), next);
}

// Both sides of day 0, of leap days, of centuries, and of the 400-year turns.
std::vector<sys_days> Starts(int stride) {
  std::vector<sys_days> starts;
  for (const auto& [from, to] : {std::pair{1, 2},
                                 {1598, 1602},
                                 {1896, 1905},
                                 {1999, 2001},
                                 {2023, 2025},
                                 {2096, 2105},
                                 {2298, 2305},
                                 {9990, 9994}}) {
    for (sys_days d = On(from, 1, 1); d < On(to, 1, 1); d += std::chrono::days(stride)) starts.push_back(d);
  }
  return starts;
}

TEST(Recurrence, Weekday_Selections_Agree_With_The_Walk) {
  for (const sys_days start : Starts(11)) {
    for (int n = 1; n <= 4; ++n) {
      for (int mask = 0; mask < 128; ++mask) {
        TRecurrence_Pattern p{
            TFrequency::Weekly, n, mask % 2 == 0, static_cast<std::uint16_t>(mask), 0, 0, Far_Away};
        Compare(p, start);
        p.Freq = TFrequency::Daily;
        p.PeriodDefault = false;
        if (mask != 0) Compare(p, start);
      }
    }
  }
}

TEST(Recurrence, Monthly_And_Yearly_Kinds_Agree_With_The_Walk) {
  for (int flags = 0; flags < 1024; flags = flags == 0 ? 1 : 2 * flags) {
    for (int instance = 0; instance <= Last; ++instance) {
      for (int n = 1; n <= 4; ++n) {
        TRecurrence_Pattern p{
            TFrequency::Monthly, n, false, static_cast<std::uint16_t>(flags), instance, 0, Far_Away};
        for (const sys_days start : Starts(7)) Compare(p, start);
        p.Freq = TFrequency::Yearly;
        for (const sys_days start : Starts(37)) {
          for (p.Month = 0; p.Month < 12; ++p.Month) Compare(p, start);
        }
      }
    }
  }
}

TEST(Recurrence, Plain_Steps_Agree_With_The_Walk) {
  for (const sys_days start : Starts(1)) {
    if (start < On(1500, 1, 1) || start > On(9000, 1, 1)) continue;
    for (const int n : {-25, -13, -12, -11, -1, 0, 1, 2, 11, 12, 13, 60}) {
      for (const int freq : {1, 3, 4}) Compare(Plain(freq, n), start);
    }
  }
}

TEST(Recurrence, Known_Sets) {
  const auto weekly = Pattern(2, 1, {1, 3});
  EXPECT_EQ(Call(weekly, At(2024, 1, 3)), At(2024, 1, 8));
  EXPECT_EQ(Call(weekly, At(2024, 1, 8)), At(2024, 1, 10));
  EXPECT_EQ(Call(Pattern(3, 1, {6}, 1), At(2024, 1, 9)), At(2024, 2, 13));
  EXPECT_EQ(Call(Pattern(3, 1, {2}, Last), At(2024, 2, 29)), At(2024, 3, 29));
  EXPECT_EQ(Call(Pattern(3, 1, {1, 6, 3}, 1), At(2024, 1, 9)), At(2024, 2, 13)) << "the highest flag wins";
  EXPECT_EQ(Call(Plain(4, 1), At(2024, 2, 29)), At(2025, 2, 28));
  EXPECT_EQ(Call(Plain(4, 4), At(2096, 2, 29)), At(2100, 2, 28));
  EXPECT_EQ(Call(Plain(1, 3), At(2024, 1, 1), true, 5), At(2024, 1, 6)) << "Count goes before Period";
  EXPECT_EQ(Call(Plain(1, 3), At(2024, 1, 1), true, -5), At(2024, 1, 4));
  EXPECT_EQ(Call(Plain(3, 1), At(2024, 1, 31)), At(2024, 2, 29)) << "and stays there";
  EXPECT_EQ(Call(Plain(3, 1), At(2024, 2, 29)), At(2024, 3, 29));
  EXPECT_THROW(Call(Pattern(4, 1, {5}, 0, 1), At(2024, 3, 29)), EConvert_Error) << "2025 has no 29 February";
  EXPECT_EQ(Call(Pattern(4, 1, {5}, 0, 1), At(2024, 2, 29)), At(2025, 2, 3))
      << "the 29th becomes the 28th first";
  for (const int freq : {INT_MIN, -1, 0, 5, INT_MAX}) EXPECT_EQ(Call(Plain(freq, 1), At(2024, 1, 1)), 0);
}

TEST(Recurrence, Last_Date_Counts_By_Day) {
  EXPECT_EQ(Call(Plain(1, 1, At(2024, 1, 5, 0)), At(2024, 1, 4, 0.99)), At(2024, 1, 5, 0.99));
  EXPECT_EQ(Call(Plain(1, 1, At(2024, 1, 5, 0.99)), At(2024, 1, 5, 0)), 0);
  EXPECT_EQ(Call(Plain(1, 1, At(2024, 1, 5)), At(2024, 1, 5), false), At(2024, 1, 6));
  // Up to day 0 no result is compared.
  EXPECT_EQ(Call(Plain(1, 1, At(1850, 1, 1)), At(1860, 1, 1)), At(1860, 1, 2));
  EXPECT_EQ(Call(Plain(1, 1, At(1850, 1, 1)), At(1899, 12, 29, 0)), 0);
  EXPECT_EQ(Call(Plain(1, 1, At(1850, 1, 1)), At(1899, 12, 29)), 0);
  for (const TDateTime never : {std::nan(""), -HUGE_VAL, -1e300})
    EXPECT_EQ(Call(Plain(1, 1, never), 45000), 0);
  for (const TDateTime always : {HUGE_VAL, 1e300}) EXPECT_EQ(Call(Plain(1, 1, always), 45000), 45001);
}

TEST(Recurrence, Daily_Without_A_Day_Ends_After_The_Last_Date) {
  auto p = Pattern(1, 1, {8, 9, 10});
  EXPECT_EQ(Call(p, At(2024, 1, 1)), 0);
  EXPECT_EQ(Call(p, At(2024, 1, 1), false), At(9999, 12, 31) + 1);
  p.LastDate = At(2024, 1, 3, 0.9);
  EXPECT_EQ(Call(p, At(2024, 1, 1), false), At(2024, 1, 4));
  EXPECT_EQ(Call(p, At(2024, 2, 1), false), At(2024, 2, 2));
  p.Set_Flag(6);
  EXPECT_EQ(Call(p, At(2024, 1, 1), false), At(2024, 1, 4)) << "Sunday the 7th lies behind the last date";
}

TEST(Recurrence, Interval_Of_Zero_Stands_Still) {
  for (const TDateTime date : {45322.123456789, 0.0, -1000.3}) {
    for (const int freq : {1, 3, 4}) EXPECT_EQ(Call(Plain(freq, 0), date), date);
    EXPECT_EQ(Call(Pattern(2, 0, {}), date), date);
  }
}

TEST(Recurrence, What_Is_No_Date_Is_Refused) {
  for (const int n : {INT_MIN, -100'000, 100'000, INT_MAX}) {
    for (const int freq : {3, 4}) {
      EXPECT_THROW(Call(Plain(freq, n), At(2024, 1, 1), false), EConvert_Error);
      EXPECT_THROW(Call(Pattern(freq, n, {1}), At(2024, 1, 1), false), EConvert_Error);
    }
    EXPECT_EQ(Call(Plain(1, n), 45000, false), 45000.0 + n);
    EXPECT_EQ(Call(Plain(2, n), 45000, false), 45000 + 7.0 * n);
  }
  EXPECT_THROW(Call(Plain(3, 1), At(9999, 12, 1), false), EConvert_Error);
  EXPECT_THROW(Call(Plain(3, 1, Far_Away + 1), At(9999, 12, 1)), EConvert_Error);
  EXPECT_THROW(Call(Plain(3, -1), At(1, 1, 31)), EConvert_Error);
  for (const int wrong : {-1, 12, INT_MAX}) {
    EXPECT_THROW(Call(Pattern(3, 1, {1}, wrong), 45000), EConvert_Error);
    EXPECT_THROW(Call(Pattern(4, 1, {1}, 0, wrong), 45000), EConvert_Error);
  }
  EXPECT_THROW(Call(Pattern(3, 1, {1}, Last + 1), 45000), EConvert_Error);
  for (const TDateTime wrong :
       {At(1, 1, 1, 0) - 1, At(9999, 12, 31, 0) + 1, 1e300, -HUGE_VAL, std::nan("")}) {
    for (const int freq : {1, 2, 3, 4}) EXPECT_THROW(Call(Plain(freq, 1), wrong), EConvert_Error);
    EXPECT_THROW(MaskPosition(wrong), EConvert_Error);
  }
}

TEST(Recurrence, A_Set_May_Last_As_Long_As_The_Calendar) {
  for (const auto& p :
       {Plain(3, 1), Plain(4, 1), Pattern(3, 2, {1}), Pattern(4, 1, {1}), Plain(4, INT_MAX)}) {
    EXPECT_EQ(Call(p, At(9999, 12, 1)), 0);
  }
}

TEST(Recurrence, Time_Of_Day_Never_Drifts) {
  const auto time = Kt_util_01::From_Msecs(37'200'123);
  for (const auto& p : {Plain(1, 1), Pattern(1, 1, {1, 2, 3, 4, 5}), Pattern(2, 1, {2, 7}), Plain(3, 1)}) {
    TDateTime date = At(1600, 1, 1) - Nine + time;
    for (int i = 0; i < 100'000; ++i) date = Call(p, date);
    EXPECT_EQ(Kt_util_01::Msec_Of_Day(date), 37'200'123) << "Freq " << static_cast<int>(p.Freq);
  }
}

TEST(Recurrence, Every_Day_Begins_And_Ends_On_The_Millisecond) {
  constexpr TDateTime Rounded_Away = 0.4 / Kt_util_01::Msecs_Per_Day;
  int position = 0;  // 1 January of the year 1 was a Monday
  for (auto day = Kt_util_01::Day_From_Date(1, 1, 1); day <= Far_Away; ++day, position = (position + 1) % 7) {
    const auto midnight = static_cast<TDateTime>(day);
    const auto last = Kt_util_01::From_Msecs((day + 1) * Kt_util_01::Msecs_Per_Day - 1);
    for (const TDateTime date : {midnight - Rounded_Away, midnight, last, last + Rounded_Away}) {
      ASSERT_EQ(MaskPosition(date), position) << day;
    }
  }
  EXPECT_EQ(Call(Plain(1, 1, At(2024, 1, 5, -Rounded_Away)), At(2024, 1, 4)), At(2024, 1, 5));
}

TEST(Recurrence, Proposals_From_A_Date) {
  for (int i = 0; i < 7; ++i) EXPECT_EQ(Get_Pattern_From_Date(At(2024, 1, 7 + i)), 3 + i);
  const int expected[] = {0, 0, 1, 1, 2, 2, 3, 3};
  const unsigned days[] = {1, 6, 7, 13, 14, 20, 21, 31};
  for (int i = 0; i < 8; ++i) {
    for (const int y : {1850, 2024, 2500})
      EXPECT_EQ(Get_Instance_from_Date(At(y, 1, days[i], 0.9)), expected[i]);
  }
}

}  // namespace
