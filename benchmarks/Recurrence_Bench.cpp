// Dates per second of whole sets from 1970 to 2199: the engine, called as event creation calls it, against
// libical's iterator and against loops written by hand for the one rule.

#include <benchmark/benchmark.h>
#include <libical/ical.h>

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

#include "Ratio_Main.h"
#include "Recurrence.h"

namespace {

using namespace KTReminds;
using Kt_util_01::Day_From_Date;
using Kt_util_01::Day_Of_Week;
using Ratio_Bench::Check_First;
using Ratio_Bench::Expect_Ratio;
using Ratio_Bench::TBound;

constexpr TDateTime Nine_O_Clock = 0.375;
constexpr TDateTime Last_Date = static_cast<TDateTime>(Day_From_Date(2199, 12, 31));

struct TRule {
  const char* Name;
  TRecurrence_Pattern Pattern;
  std::array<bool, 10> P;  // the pattern's flags as a caller of the exported routine holds them
  TDateTime First;
  const char* ICal;
};

TRule Make_Rule(const char* name, int freq, bool plain, std::initializer_list<int> flags, int instance,
                int month, int first_month, int first_day, const char* ical) {
  TRecurrence_Pattern pattern{static_cast<TFrequency>(freq), 1, plain, 0, instance, month, Last_Date};
  std::array<bool, 10> P{};
  for (const int flag : flags) {
    pattern.Set_Flag(flag);
    P[flag] = true;
  }
  return {name, pattern, P,
          static_cast<TDateTime>(Day_From_Date(1970, first_month, first_day)) + Nine_O_Clock, ical};
}

const std::array Rules = {
    Make_Rule("Daily", 1, true, {}, 0, 0, 1, 1, "FREQ=DAILY"),
    Make_Rule("Weekly", 2, true, {0, 2, 4}, 0, 0, 1, 2, "FREQ=WEEKLY;BYDAY=MO,WE,FR"),
    Make_Rule("Monthly", 3, false, {5}, 1, 0, 1, 13, "FREQ=MONTHLY;BYDAY=2TU"),
    Make_Rule("Yearly", 4, false, {7}, 3, 10, 11, 26, "FREQ=YEARLY;BYMONTH=11;BYDAY=4TH"),
};

// Each walk hands every date of the set, the first one included, to `use`.

template <typename TUse>
void Walk_Exported(const TRule& rule, TUse use) {
  const TRecurrence_Pattern& p = rule.Pattern;
  const std::array<bool, 10>& P = rule.P;
  for (TDateTime date = rule.First; date > 0;) {
    use(date);
    date = AdvanceEventDate(date, p.LastDate, p.PeriodDefault, true, static_cast<int>(p.Freq), 0, p.Period,
                            P[0], P[1], P[2], P[3], P[4], P[5], P[6], P[7], P[8], P[9], p.Instance, p.Month);
  }
}

template <typename TUse>
void Walk_Pattern(const TRule& rule, TUse use) {
  for (TDateTime date = rule.First; date > 0; date = Next_Occurrence(rule.Pattern, date)) use(date);
}

template <typename TUse>
void Walk_ICal(const TRule& rule, TUse use) {
  const auto first = Kt_util_01::Decode_Date(rule.First);
  icaltimetype start = icaltime_null_time();
  start.year = first.Year;
  start.month = first.Month;
  start.day = first.Day;
  start.hour = 9;
  icalrecur_iterator* iterator = icalrecur_iterator_new(icalrecurrencetype_from_string(rule.ICal), start);
  for (icaltimetype time = icalrecur_iterator_next(iterator);
       !icaltime_is_null_time(time) && time.year < 2200; time = icalrecur_iterator_next(iterator)) {
    use(time);
  }
  icalrecur_iterator_free(iterator);
}

// Steps from day to day, as the flags of a rule that is known only at run time ask for.
template <typename TUse>
void Walk_Bare_Weekly(const TRule& rule, TUse use) {
  const auto last = static_cast<int>(Last_Date);
  for (auto day = static_cast<int>(rule.First); day <= last; ++day) {
    if (rule.P[(day + 5) % 7]) use(day + Nine_O_Clock);
  }
}

// The same week by week: a bound no call per date can come near, timed to know how far away it is.
template <typename TUse>
void Walk_Bare_Weeks(const TRule& rule, TUse use) {
  const auto first = static_cast<int>(rule.First), last = static_cast<int>(Last_Date);
  for (int monday = first - (first + 5) % 7; monday <= last; monday += 7) {
    for (int day = monday; day < monday + 7; ++day) {
      if (rule.P[day - monday] && day >= first && day <= last) use(day + Nine_O_Clock);
    }
  }
}

std::int64_t On_Or_After(std::int64_t day, int day_of_week) {
  return day + (day_of_week - Day_Of_Week(day) + 7) % 7;
}

template <typename TUse>
void Walk_Bare_Monthly(TUse use) {
  for (int year = 1970; year < 2200; ++year) {
    for (int month = 1; month <= 12; ++month) {
      use(static_cast<TDateTime>(On_Or_After(Day_From_Date(year, month, 8), 3)) + Nine_O_Clock);
    }
  }
}

template <typename TUse>
void Walk_Bare_Yearly(TUse use) {
  for (int year = 1970; year < 2200; ++year) {
    use(static_cast<TDateTime>(On_Or_After(Day_From_Date(year, 11, 22), 5)) + Nine_O_Clock);
  }
}

template <typename TDate, typename TWalk>
void Register(const std::string& name, TWalk walk) {
  benchmark::RegisterBenchmark(name.c_str(), [walk](benchmark::State& state) {
    std::vector<TDate> dates(90'000);
    std::int64_t count = 0;
    for ([[maybe_unused]] auto iteration : state) {
      TDate* next = dates.data();
      walk([&next](const TDate& date) { *next++ = date; });
      benchmark::DoNotOptimize(dates.data());
      benchmark::ClobberMemory();
      count += next - dates.data();
    }
    state.SetItemsProcessed(count);
  });
}

template <typename TWalk>
void Register_Bare(const TRule& rule, const std::string& bare, TWalk walk) {
  Register<TDateTime>(bare, walk);
  Check_First(bare, [&rule, walk] {
    std::vector<TDateTime> ours, others;
    Walk_Exported(rule, [&](TDateTime date) { ours.push_back(date); });
    walk([&](TDateTime date) { others.push_back(date); });
    return ours == others ? "" : "the dates differ";
  });
}

void Register_Rule(const TRule& rule) {
  const std::string name = rule.Name;
  Register<TDateTime>(name + "/call", [&rule](auto use) { Walk_Exported(rule, use); });
  Register<TDateTime>(name + "/pattern", [&rule](auto use) { Walk_Pattern(rule, use); });
  Register<icaltimetype>(name + "/libical", [&rule](auto use) { Walk_ICal(rule, use); });
  Expect_Ratio(name + ": call / libical", name + "/call", name + "/libical", 100, TBound::At_Least);
  Expect_Ratio(name + ": pattern / libical", name + "/pattern", name + "/libical", 100, TBound::At_Least);
  Check_First(name, [&rule] {
    std::vector<TDateTime> call, pattern, ical;
    Walk_Exported(rule, [&](TDateTime date) { call.push_back(date); });
    Walk_Pattern(rule, [&](TDateTime date) { pattern.push_back(date); });
    Walk_ICal(rule, [&](const icaltimetype& time) {
      ical.push_back(static_cast<TDateTime>(Day_From_Date(time.year, time.month, time.day)) +
                     time.hour / 24.0);
    });
    return call == ical && pattern == ical ? "" : "the dates differ";
  });
}

const bool Registered = [] {
  for (const TRule& rule : Rules) Register_Rule(rule);
  Register_Bare(Rules[1], "Weekly/bare", [](auto use) { Walk_Bare_Weekly(Rules[1], use); });
  Register_Bare(Rules[1], "Weekly/bare weeks", [](auto use) { Walk_Bare_Weeks(Rules[1], use); });
  Register_Bare(Rules[2], "Monthly/bare", [](auto use) { Walk_Bare_Monthly(use); });
  Register_Bare(Rules[3], "Yearly/bare", [](auto use) { Walk_Bare_Yearly(use); });
  for (const std::string name : {"Weekly", "Monthly", "Yearly"}) {
    Expect_Ratio(name + ": call / bare loop", name + "/call", name + "/bare", 0.25, TBound::At_Least);
  }
  return true;
}();

}  // namespace
