#include "Rule_Dates.h"

#include <algorithm>
#include <array>
#include <bit>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::Next_Occurrence;
using KTReminds::TFrequency;
using KTReminds::TRecurrence_Pattern;

namespace {

template <std::size_t Size>
bool Is_Given(const short (&list)[Size]) {
  return list[0] != ICAL_RECURRENCE_ARRAY_MAX;
}

// Rules of another calendar, and those that move days which a month lacks.
bool Is_Of_Other_Calendar(const icalrecurrencetype& rule) {
  return rule.rscale && (Simple_UpperCase(rule.rscale) != "GREGORIAN" || rule.skip != ICAL_SKIP_OMIT);
}

icalrecurrencetype Parse_Rule(const std::string& text) {
  icalerror_clear_errno();
  const icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
  if (rule.freq == ICAL_NO_RECURRENCE || rule.interval < 1)
    throw ERule_Error("cannot be read (" + text.substr(0, 100) + ")");
  return rule;
}

constexpr int Kind_Day = 0, Kind_Weekday = 1, Kind_Weekend_Day = 2, Kind_Sunday = 3;
constexpr int Last_Instance = 4;
constexpr unsigned Monday_To_Friday = 0b0011111, Weekend = 0b1100000, All_Days = 0b1111111;

constexpr unsigned Turned(unsigned mask, int days) {
  const int by = (days % 7 + 7) % 7;
  return (mask << by | mask >> (7 - by)) & All_Days;
}

// The patterns that a rule may mean. None is believed before its dates have been compared, so it does no harm
// to offer one too many.
class TCandidates {
 public:
  TCandidates(const icalrecurrencetype& rule, TDateTime start_wall, TDateTime start_local) : rule(rule) {
    const auto days_ahead = static_cast<int>(Whole_Day(start_local) - Whole_Day(start_wall));
    for (const int day : Values(rule.by_day)) {
      // libical counts from Sunday, 1; the mask begins with Monday.
      mask |= 1U << (icalrecurrencetype_day_day_of_week(static_cast<short>(day)) + 5) % 7;
      if (position == 0) position = icalrecurrencetype_day_position(static_cast<short>(day));
    }
    // In another zone the day of the week may be the one before or after the user's.
    mask = Turned(mask, days_ahead);
    if (position == 0 && Is_Given(rule.by_set_pos)) position = rule.by_set_pos[0];
    month = Decode_Date(start_local).Month - 1;
    switch (rule.freq) {
      case ICAL_DAILY_RECURRENCE:
        Add_Daily();
        break;
      case ICAL_WEEKLY_RECURRENCE:
        Add(TFrequency::Weekly, rule.interval, false, mask);
        break;
      case ICAL_MONTHLY_RECURRENCE:
        Add_Monthly(rule.interval);
        if (Values(rule.by_month).size() == 1) Add_Yearly(1);
        break;
      case ICAL_YEARLY_RECURRENCE: {
        Add_Yearly(rule.interval);
        const std::size_t months = Values(rule.by_month).size();
        if (rule.interval == 1 && months > 1 && 12 % months == 0) Add_Monthly(12 / static_cast<int>(months));
        break;
      }
      default:
        break;
    }
  }

  std::vector<TRecurrence_Pattern> Patterns;

 private:
  TRecurrence_Pattern& Add(TFrequency freq, int period, bool plain, unsigned flags = 0) {
    TRecurrence_Pattern pattern;
    pattern.Freq = freq;
    pattern.Period = period;
    pattern.PeriodDefault = plain;
    pattern.P = static_cast<std::uint16_t>(flags);
    pattern.LastDate = static_cast<TDateTime>(Day_From_Date(Max_Year, 12, 31));
    Patterns.push_back(pattern);
    return Patterns.back();
  }

  void Add_Daily() {
    Add(TFrequency::Daily, rule.interval, true);
    if (mask != 0) Add(TFrequency::Daily, 1, false, mask);
  }

  void Add_Monthly(int months) {
    Add(TFrequency::Monthly, months, true);
    Add_Kinds(TFrequency::Monthly, months, month);
  }

  void Add_Yearly(int years) {
    Add(TFrequency::Yearly, years, true);
    if (Is_Given(rule.by_month)) month = icalrecurrencetype_month_month(rule.by_month[0]) - 1;
    if (month >= 0 && month < 12) Add_Kinds(TFrequency::Yearly, years, month);
  }

  int Kind() const {
    if (mask == 0 || mask == All_Days) return Kind_Day;
    if (mask == Monday_To_Friday) return Kind_Weekday;
    if (mask == Weekend) return Kind_Weekend_Day;
    return std::has_single_bit(mask) ? Kind_Sunday + (std::countr_zero(mask) + 1) % 7 : -1;
  }

  void Add_Kinds(TFrequency freq, int period, int of_month) {
    const int kind = Kind();
    if (kind < 0) return;
    std::vector<int> instances = {0, 1, 2, 3, Last_Instance};
    // What the rule itself says comes first.
    const int said = position < 0 ? Last_Instance : position - 1;
    if (said >= 0 && said <= Last_Instance)
      std::swap(instances[0], instances[static_cast<std::size_t>(said)]);
    for (const int instance : instances) {
      TRecurrence_Pattern& pattern = Add(freq, period, false, 1U << kind);
      pattern.Instance = instance;
      if (freq == TFrequency::Yearly) pattern.Month = of_month;
    }
  }

  const icalrecurrencetype& rule;
  unsigned mask = 0;
  int position = 0;
  int month = 0;
};

// The dates after the first that creation writes, one by one. False at the end, and where creation would
// fail.
bool Next_Written(const TRecurrence_Pattern& pattern, TDateTime& date) {
  try {
    return KTReminds::Next_Written_Date(pattern, date);
  } catch (const EConvert_Error&) {
    return false;
  }
}

bool Ends_There(const TRecurrence_Pattern& pattern, TDateTime last) {
  try {
    const TDateTime next = Next_Occurrence(pattern, last);
    return next == 0 || next <= last;
  } catch (const EConvert_Error&) {
    return false;
  }
}

}  // namespace

TRule_Dates::TRule_Dates(const std::string& text, const TFile_Time& start, TDateTime until,
                         TImport_Budget& budget)
    : start(start), until(until), rule(Parse_Rule(text)), budget(budget) {
  if (start.Is_Date && rule.freq <= ICAL_HOURLY_RECURRENCE) {
    throw ERule_Error("repeats within the day, but the event has no time of day");
  }
  budget.Begin_Rule();
  if (!Is_Of_Other_Calendar(rule)) {
    walk.emplace(rule, start.Wall, [&budget] { budget.Step(); });
    return;
  }
  // Only what steps by months is sure to come to an end soon.
  if (rule.freq < ICAL_MONTHLY_RECURRENCE || Is_Given(rule.by_set_pos)) {
    throw ERule_Error("is of a calendar in which only plain months and years can be followed");
  }
  icalrecurrencetype endless = rule;
  endless.until = icaltime_null_time();
  endless.count = 0;
  icalerror_clear_errno();
  iterator.reset(icalrecur_iterator_new(endless, Floating_Time(start.Wall, start.Is_Date)));
}

// The last day on which a date may lie in the time of the start: a zone moves it by a day at most.
std::int64_t TRule_Dates::Last_Day() const {
  if (const auto end = Read_Wall_Time(rule.until)) return Whole_Day(*end) + 1;
  if (rule.count == 0 && given > 0) return Whole_Day(until) + 1;
  return Day_From_Date(Max_Year, 12, 31);
}

bool TRule_Dates::Is_Beyond_End(TDateTime wall, TDateTime local) const {
  if (const auto end = Read_Wall_Time(rule.until)) {
    if (rule.until.is_date || start.Is_Date) return Whole_Day(wall) > Whole_Day(*end);
    if (icaltime_is_utc(rule.until)) return CompareDates(local, UTC_To_Local(*end)) > 0;
    return CompareDates(wall, *end) > 0;
  }
  return rule.count == 0 && given > 0 && Whole_Day(local) > Whole_Day(until);
}

std::optional<TDateTime> TRule_Dates::Next_Wall() {
  if (rule.count > 0 && walked >= rule.count) return std::nullopt;
  std::optional<TDateTime> wall;
  if (walk) {
    wall = walk->Next(Last_Day());
  } else if (iterator) {
    budget.Step();
    wall = Read_Wall_Time(icalrecur_iterator_next(iterator.get()));
  }
  ++walked;
  return wall;
}

std::optional<TDateTime> TRule_Dates::Next() {
  while (const auto wall = Next_Wall()) {
    budget.Step();
    TFile_Time date = start;
    date.Wall = *wall;
    const TDateTime local = date.Local();
    if (Is_Beyond_End(date.Wall, local)) break;
    if (!In_Date_Range(local)) throw ERule_Error("leaves the years 1 to 9999");
    if (given > 0 && CompareDates(date.Wall, last) <= 0) continue;
    ++given;
    last = date.Wall;
    return local;
  }
  walk.reset();
  iterator.reset();
  return std::nullopt;
}

TTranslated_Rule Translate_Rule(const std::string& text, const TFile_Time& start, TDateTime until,
                                TImport_Budget& budget, const std::function<void(TDateTime)>& on_date) {
  struct TRun {
    TRecurrence_Pattern Pattern;
    TDateTime Date;
  };
  TTranslated_Rule result;
  std::vector<TRun> runs;
  TRule_Dates dates(text, start, until, budget);
  while (const auto next = dates.Next()) {
    const TDateTime date = result.Last = *next;
    if (on_date) on_date(date);
    budget.Check_Entries(++result.Count);
    if (result.Count == 1) {
      result.First = date;
      const icalrecurrencetype rule = Parse_Rule(text);
      const TCandidates candidates(rule, start.Wall, start.Local());
      for (const TRecurrence_Pattern& pattern : candidates.Patterns) runs.push_back({pattern, date});
      continue;
    }
    std::erase_if(runs, [date](TRun& run) {
      return !Next_Written(run.Pattern, run.Date) || CompareDates(run.Date, date) != 0;
    });
  }
  if (result.Count < 2) return result;
  for (TRun& run : runs) {
    run.Pattern.LastDate = static_cast<TDateTime>(Whole_Day(result.Last));
    if (!Ends_There(run.Pattern, result.Last)) continue;
    result.Agrees = true;
    result.Pattern = run.Pattern;
    break;
  }
  return result;
}

void Walk_Pattern(const TRecurrence_Pattern& pattern, TDateTime first,
                  const std::function<void(TDateTime)>& on_date) {
  TDateTime date = first;
  do {
    on_date(date);
  } while (pattern.Freq > TFrequency::None && Next_Written(pattern, date));
}

}  // namespace Plexidex
