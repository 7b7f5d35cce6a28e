#pragma once

#include <libical/ical.h>

#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "Rule_Days.h"

namespace Plexidex {

/// The dates of a rule in the wall time of its start: ascending, each once, none before the start. Count,
/// end and zones are the caller's. A rule that can have no date at all ends at once, or after one turn of
/// the calendar: 400 years. A rule of a calendar other than the Gregorian one has no dates here.
class TRule_Walk {
 public:
  /// `step` is called for every day or period that is looked at, and may throw to end the walk.
  TRule_Walk(const icalrecurrencetype& rule, TDateTime start, std::function<void()> step);

  /// Nothing when there is none up to the end of `last_day`, or of the last year.
  std::optional<TDateTime> Next(std::int64_t last_day);

 private:
  using TSeconds = std::int64_t;  // since day 0

  bool Fill(std::int64_t last_day);
  bool Fill_Days(std::int64_t last_day);
  bool Fill_Within_Day(std::int64_t last_day);
  void Add_Days_Of(int year, std::size_t first_month, std::size_t last_month);
  void Take_Positions();
  TSeconds Aligned(TSeconds from) const;
  bool Meets_A_Time() const;
  bool Is_Unit_Of(TSeconds time) const;

  const icalrecurrencetype_frequency freq;
  const std::int64_t interval;
  const TSeconds start;
  const std::function<void()> step;
  TRule_Days days;
  std::vector<int> hours, minutes, seconds, positions;
  std::bitset<24> hour_set;
  std::bitset<60> minute_set, second_set;

  std::int64_t period = 0;    // how many have passed
  std::int64_t empty = 0;     // of them, one after the other
  std::int64_t turn = 0;      // after so many periods all repeats
  TSeconds unit = 0, at = 0;  // of rules within the day: length, and the one to be looked at
  std::vector<std::int64_t> found_days;
  std::vector<TSeconds> found;
  std::size_t given = 0;
  TSeconds last;
};

}  // namespace Plexidex
