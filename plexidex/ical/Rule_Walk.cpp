#include "Rule_Walk.h"

#include <algorithm>
#include <numeric>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr std::int64_t Day_Seconds = 86'400, Hour_Seconds = 3600, Minute_Seconds = 60;
constexpr std::int64_t Turn_Years = 400, Turn_Days = 146'097;
constexpr std::int64_t Last_Day = Day_From_Date(Max_Year, 12, 31);

std::int64_t Floor_Division(std::int64_t value, std::int64_t by) {
  return value >= 0 ? value / by : -((-value + by - 1) / by);
}

// The values of a part, ascending, or what the start says.
std::vector<int> Values_Or(std::vector<int> values, int of_start) {
  if (values.empty()) return {of_start};
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  return values;
}

std::int64_t Unit_Of(icalrecurrencetype_frequency freq) {
  switch (freq) {
    case ICAL_SECONDLY_RECURRENCE:
      return 1;
    case ICAL_MINUTELY_RECURRENCE:
      return Minute_Seconds;
    case ICAL_HOURLY_RECURRENCE:
      return Hour_Seconds;
    default:
      return 0;
  }
}

std::int64_t Periods_In_Turn(icalrecurrencetype_frequency freq) {
  switch (freq) {
    case ICAL_YEARLY_RECURRENCE:
      return Turn_Years;
    case ICAL_MONTHLY_RECURRENCE:
      return Turn_Years * 12;
    case ICAL_WEEKLY_RECURRENCE:
      return Turn_Days / 7;
    default:
      return Turn_Days;
  }
}

template <std::size_t Size>
std::bitset<Size> Set_Of(const std::vector<int>& values) {
  std::bitset<Size> set;
  for (const int value : values) set.set(static_cast<std::size_t>(value));
  return values.empty() ? set.set() : set;
}

}  // namespace

TRule_Walk::TRule_Walk(const icalrecurrencetype& rule, TDateTime start_wall, std::function<void()> on_step)
    : freq(rule.freq),
      interval(rule.interval),
      start(Floor_Division(To_Msecs(start_wall), 1000)),
      step(std::move(on_step)),
      days(rule, start_wall),
      hours(Values(rule.by_hour)),
      minutes(Values(rule.by_minute)),
      seconds(Values(rule.by_second)),
      positions(Values(rule.by_set_pos)),
      unit(Unit_Of(rule.freq)),
      last(start - 1) {
  // A leap second counts as the one before it, as everywhere in a file.
  for (int& second : seconds) second = std::min(second, 59);
  turn = Periods_In_Turn(freq);
  turn /= std::gcd(turn, interval);
  if (unit > 0) {
    hour_set = Set_Of<24>(hours);
    if (unit < Hour_Seconds) minute_set = Set_Of<60>(minutes);
    if (unit < Minute_Seconds) second_set = Set_Of<60>(seconds);
    at = Floor_Division(start, unit) * unit;
    // Whole days pass between two looks otherwise, and all of a turn is seen later.
    turn = Day_Seconds % (interval * unit) == 0 ? Turn_Days : Last_Day * 2;
    if (!Meets_A_Time()) turn = 0;
  }
  const TTime_Parts clock = Decode_Time(start_wall);
  hours = Values_Or(hours, clock.Hour);
  minutes = Values_Or(minutes, clock.Minute);
  seconds = Values_Or(seconds, clock.Second);
}

std::optional<TDateTime> TRule_Walk::Next(std::int64_t last_day) {
  for (;;) {
    for (; given < found.size(); ++given) {
      if (found[given] <= last) continue;
      if (Floor_Division(found[given], Day_Seconds) > std::min(last_day, Last_Day)) return std::nullopt;
      last = found[given++];
      return From_Msecs(last * 1000);
    }
    do {
      // `turn` periods without a date: there is none in any other either.
      if (empty >= turn || !Fill(std::min(last_day, Last_Day))) return std::nullopt;
    } while (found.empty());
    empty = 0;
  }
}

bool TRule_Walk::Fill(std::int64_t last_day) {
  found.clear();
  given = 0;
  ++empty;
  step();
  return unit > 0 ? Fill_Within_Day(last_day) : Fill_Days(last_day);
}

// The next period of days. False when it begins after the last day.
bool TRule_Walk::Fill_Days(std::int64_t last_day) {
  const std::int64_t first_day = Floor_Division(start, Day_Seconds);
  const TDate_Parts first = Date_From_Day(first_day);
  const std::int64_t ahead = period++ * interval;
  found_days.clear();
  switch (freq) {
    case ICAL_YEARLY_RECURRENCE: {
      const std::int64_t year = first.Year + ahead;
      if (year > Max_Year || Day_From_Date(static_cast<int>(year), 1, 1) > last_day) return false;
      Add_Days_Of(static_cast<int>(year), 0, 11);
      break;
    }
    case ICAL_MONTHLY_RECURRENCE: {
      const std::int64_t month = first.Month - 1 + ahead, year = first.Year + month / 12;
      if (year > Max_Year) return false;
      if (Day_From_Date(static_cast<int>(year), static_cast<int>(month % 12 + 1), 1) > last_day) return false;
      const auto of_year = static_cast<std::size_t>(month % 12);
      Add_Days_Of(static_cast<int>(year), of_year, of_year);
      break;
    }
    case ICAL_WEEKLY_RECURRENCE: {
      const std::int64_t week = days.Week_Begin(first_day) + 7 * ahead;
      if (week > last_day) return false;
      for (std::int64_t day = week; day < week + 7; ++day) {
        if (days.Meets(day)) found_days.push_back(day);
      }
      break;
    }
    default:
      if (first_day + ahead > last_day) return false;
      if (days.Meets(first_day + ahead)) found_days.push_back(first_day + ahead);
  }
  for (const std::int64_t day : found_days) {
    for (const int hour : hours) {
      for (const int minute : minutes) {
        for (const int second : seconds)
          found.push_back(day * Day_Seconds + hour * Hour_Seconds + minute * Minute_Seconds + second);
      }
    }
  }
  Take_Positions();
  return true;
}

void TRule_Walk::Add_Days_Of(int year, std::size_t first_month, std::size_t last_month) {
  const TRule_Days::TYear& of_year = days.Of_Year(year);
  for (std::size_t month = first_month; month <= last_month; ++month) {
    if (of_year[month] == 0) continue;
    const std::int64_t begin = Day_From_Date(year, static_cast<int>(month) + 1, 1);
    for (int day = 0; day < 31; ++day) {
      if ((of_year[month] >> day & 1) != 0) found_days.push_back(begin + day);
    }
  }
}

// The next hour, minute or second that meets the rule, or nothing in a day that does not.
bool TRule_Walk::Fill_Within_Day(std::int64_t last_day) {
  for (;;) {
    const std::int64_t day = Floor_Division(at, Day_Seconds);
    if (day > last_day) return false;
    if (!days.Meets(day)) {
      at = Aligned((day + 1) * Day_Seconds);
      return true;
    }
    const TSeconds clock = at - day * Day_Seconds;
    if (Is_Unit_Of(clock)) break;
    // On to where the first part that is not met changes.
    const bool hour = hour_set.test(static_cast<std::size_t>(clock / Hour_Seconds));
    const bool minute = unit == Hour_Seconds || minute_set.test(static_cast<std::size_t>(clock / 60 % 60));
    const TSeconds length = !hour ? Hour_Seconds : !minute ? Minute_Seconds : 1;
    at = Aligned((clock / length + 1) * length + day * Day_Seconds);
    step();
  }
  if (unit == Hour_Seconds) {
    for (const int minute : minutes) {
      for (const int second : seconds) found.push_back(at + minute * Minute_Seconds + second);
    }
  } else if (unit == Minute_Seconds) {
    for (const int second : seconds) found.push_back(at + second);
  } else {
    found.push_back(at);
  }
  at = Aligned(at + unit);
  // Every such unit has as many times, so what is at no place in one is in none.
  Take_Positions();
  return !found.empty();
}

void TRule_Walk::Take_Positions() {
  if (positions.empty()) return;
  std::vector<TSeconds> taken;
  const auto size = static_cast<std::int64_t>(found.size());
  for (const int position : positions) {
    const std::int64_t index = position > 0 ? position - 1 : size + position;
    if (index >= 0 && index < size) taken.push_back(found[static_cast<std::size_t>(index)]);
  }
  std::sort(taken.begin(), taken.end());
  found = std::move(taken);
}

// The first unit of the rule's interval that does not begin before a moment.
TRule_Walk::TSeconds TRule_Walk::Aligned(TSeconds from) const {
  const TSeconds begin = Floor_Division(start, unit) * unit, length = interval * unit;
  return begin - Floor_Division(begin - from, length) * length;
}

// Whether a time of day is of an hour, minute or second that the rule names.
bool TRule_Walk::Is_Unit_Of(TSeconds time) const {
  return hour_set.test(static_cast<std::size_t>(time / Hour_Seconds)) &&
         (unit == Hour_Seconds || minute_set.test(static_cast<std::size_t>(time / 60 % 60))) &&
         (unit != 1 || second_set.test(static_cast<std::size_t>(time % 60)));
}

// Whether the interval ever falls on such a time. On whichever days, it is by whole steps of what it has in
// common with the day away from the start.
bool TRule_Walk::Meets_A_Time() const {
  const TSeconds common = std::gcd(interval * unit, Day_Seconds);
  const TSeconds begin = at - Floor_Division(at, common) * common;
  for (TSeconds time = begin; time < Day_Seconds; time += common) {
    if (Is_Unit_Of(time)) return true;
  }
  return false;
}

}  // namespace Plexidex
