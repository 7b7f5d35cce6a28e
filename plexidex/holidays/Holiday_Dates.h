#pragma once

// On which days of a year a rule gives a holiday.

#include <cstdint>
#include <vector>

#include "Holiday_Rules.h"

namespace Plexidex {

TWeekday Weekday_Of(std::int64_t day);
int Year_Of(std::int64_t day);

/// Day numbers in order; of a rule that lasts some days all of them, perhaps into the next year.
std::vector<std::int64_t> Days_Of_Rule(const TDay_Rule& rule, int year);

}  // namespace Plexidex
