#include "Recurrence_Pages.h"

#include <algorithm>
#include <limits>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

constexpr int Day_Flags = 7;
constexpr int Kinds = 10;

// The kind that counts among several flags is the highest one; none at all means the first.
int Kind_Of(const TRecurrence_Pattern& pattern) {
  for (int kind = Kinds - 1; kind > 0; --kind) {
    if (pattern.Flag(kind)) return kind;
  }
  return 0;
}

// A kind that stands as it was stored keeps its flags, whichever they are.
void Set_Kind(TRecurrence_Pattern& pattern, const TRecurrence_Pages::TKind& kind, bool stored) {
  pattern.Instance = kind.Instance;
  if (stored && Kind_Of(pattern) == kind.Pattern) return;
  pattern.P = 0;
  pattern.Set_Flag(kind.Pattern);
}

std::array<bool, 7> Days_Of(const TRecurrence_Pattern& pattern) {
  std::array<bool, 7> days{};
  for (int i = 0; i < Day_Flags; ++i) days[static_cast<std::size_t>(i)] = pattern.Flag(i);
  return days;
}

void Set_Days(TRecurrence_Pattern& pattern, const std::array<bool, 7>& days) {
  for (int i = 0; i < Day_Flags; ++i) pattern.Set_Flag(i, days[static_cast<std::size_t>(i)]);
}

TRefusal Read_Period(const std::string& text, const char* control, int& period) {
  std::int64_t number = 0;
  if (Str2Int(text, number) && number >= std::numeric_limits<int>::min() &&
      number <= std::numeric_limits<int>::max()) {
    period = static_cast<int>(number);
    return {};
  }
  return {"Invalid Period",
          "The Repeat Period specified is invalid. Please enter a valid number before continuing", control};
}

TRefusal Require_A_Day(const std::array<bool, 7>& days, const char* caption, const char* control) {
  if (std::find(days.begin(), days.end(), true) != days.end()) return {};
  return {caption, "Please specify which day, or days, this event should be set for", control};
}

}  // namespace

bool operator==(const TRecurrence_Pages& a, const TRecurrence_Pages& b) {
  const auto same = [](const TRecurrence_Pages::TKind& x, const TRecurrence_Pages::TKind& y) {
    return x.Instance == y.Instance && x.Pattern == y.Pattern;
  };
  return a.Freq == b.Freq && a.Until == b.Until && a.Daily_Every == b.Daily_Every &&
         a.Daily_Number == b.Daily_Number && a.Daily_Days == b.Daily_Days &&
         a.Weekly_Number == b.Weekly_Number && a.Weekly_Days == b.Weekly_Days &&
         a.Monthly_Every == b.Monthly_Every && a.Monthly_Number == b.Monthly_Number &&
         a.Monthly_Kind_Number == b.Monthly_Kind_Number && same(a.Monthly_Kind, b.Monthly_Kind) &&
         a.Yearly_Every == b.Yearly_Every && a.Yearly_Number == b.Yearly_Number &&
         a.Yearly_Kind_Number == b.Yearly_Kind_Number && same(a.Yearly_Kind, b.Yearly_Kind) &&
         a.Yearly_Month == b.Yearly_Month;
}

TRecurrence_Pages Propose_Pages(TDateTime date) {
  TRecurrence_Pages pages;
  pages.Until = static_cast<TDateTime>(Whole_Day(date));
  if (Decode_Date(date).Year < Max_Year) {
    pages.Until = static_cast<TDateTime>(
        Whole_Day(AdvanceEventDate(date, 0, true, false, 4, 1, 1, false, false, false, false, false, false,
                                   false, false, false, false, 0, 0)));
  }
  const auto weekday = static_cast<std::size_t>(MaskPosition(date));
  pages.Daily_Days[weekday] = pages.Weekly_Days[weekday] = true;
  Follow_Date(pages, date);
  pages.Yearly_Month = Decode_Date(date).Month - 1;
  return pages;
}

void Follow_Date(TRecurrence_Pages& pages, TDateTime date) {
  pages.Monthly_Kind = pages.Yearly_Kind = {Get_Instance_from_Date(date), Get_Pattern_From_Date(date)};
}

TRecurrence_Pages Pages_From_Pattern(const TRecurrence_Pattern& pattern, TDateTime date) {
  TRecurrence_Pages pages = Propose_Pages(date);
  if (pattern.Freq >= TFrequency::Daily && pattern.Freq <= TFrequency::Yearly) pages.Freq = pattern.Freq;
  pages.Until = static_cast<TDateTime>(Whole_Day(pattern.LastDate));
  const std::string number = std::to_string(pattern.Period);
  const TRecurrence_Pages::TKind kind{std::clamp(pattern.Instance, 0, 4), Kind_Of(pattern)};
  switch (pattern.Freq) {
    case TFrequency::Daily:
      pages.Daily_Every = pattern.PeriodDefault;
      pages.Daily_Number = number;
      if (!pattern.PeriodDefault) pages.Daily_Days = Days_Of(pattern);
      break;
    case TFrequency::Weekly:
      pages.Weekly_Number = number;
      pages.Weekly_Days = Days_Of(pattern);
      // A weekly set without a day recurs on that of its date.
      if ((pattern.P & 0x7F) == 0) pages.Weekly_Days[static_cast<std::size_t>(MaskPosition(date))] = true;
      break;
    case TFrequency::Monthly:
      pages.Monthly_Every = pattern.PeriodDefault;
      (pattern.PeriodDefault ? pages.Monthly_Number : pages.Monthly_Kind_Number) = number;
      if (!pattern.PeriodDefault) pages.Monthly_Kind = kind;
      break;
    case TFrequency::Yearly:
      pages.Yearly_Every = pattern.PeriodDefault;
      (pattern.PeriodDefault ? pages.Yearly_Number : pages.Yearly_Kind_Number) = number;
      if (!pattern.PeriodDefault) {
        pages.Yearly_Kind = kind;
        pages.Yearly_Month = std::clamp(pattern.Month, 0, 11);
      }
      break;
    default:
      break;
  }
  return pages;
}

TRefusal Pattern_From_Pages(const TRecurrence_Pages& pages, const TRecurrence_Pattern& stored,
                            TRecurrence_Pattern& pattern) {
  const bool every = pages.Freq == TFrequency::Daily     ? pages.Daily_Every
                     : pages.Freq == TFrequency::Monthly ? pages.Monthly_Every
                     : pages.Freq == TFrequency::Yearly
                         ? pages.Yearly_Every
                         : stored.Freq != TFrequency::Weekly || stored.PeriodDefault;
  const bool same_choice = stored.Freq == pages.Freq && stored.PeriodDefault == every;
  TRecurrence_Pattern made;
  if (same_choice) made = stored;
  made.Freq = pages.Freq;
  made.PeriodDefault = every;
  if (!same_choice || static_cast<TDateTime>(Whole_Day(stored.LastDate)) != pages.Until) {
    made.LastDate = pages.Until;
  }

  TRefusal refusal;
  switch (pages.Freq) {
    case TFrequency::Daily:
      refusal = Read_Period(pages.Daily_Number, "DailyNumber", made.Period);
      if (refusal.Empty() && !every)
        refusal = Require_A_Day(pages.Daily_Days, "Daily Criteria Invalid", "DailyMonday");
      if (!every) Set_Days(made, pages.Daily_Days);
      break;
    case TFrequency::Weekly: {
      refusal = Read_Period(pages.Weekly_Number, "WeeklyNumber", made.Period);
      if (refusal.Empty())
        refusal = Require_A_Day(pages.Weekly_Days, "Weekly Criteria Invalid", "WeeklyMonday");
      Set_Days(made, pages.Weekly_Days);
      break;
    }
    case TFrequency::Monthly:
      refusal = every ? Read_Period(pages.Monthly_Number, "MonthlyNumber", made.Period)
                      : Read_Period(pages.Monthly_Kind_Number, "MonthlyKindNumber", made.Period);
      if (!every) Set_Kind(made, pages.Monthly_Kind, same_choice);
      break;
    case TFrequency::Yearly:
      refusal = every ? Read_Period(pages.Yearly_Number, "YearlyNumber", made.Period)
                      : Read_Period(pages.Yearly_Kind_Number, "YearlyKindNumber", made.Period);
      if (!every) {
        Set_Kind(made, pages.Yearly_Kind, same_choice);
        made.Month = pages.Yearly_Month;
      }
      break;
    default:
      return {.Beep = true};  // no page that the user could see has another frequency
  }
  if (refusal.Empty()) pattern = made;
  return refusal;
}

}  // namespace KTReminds
