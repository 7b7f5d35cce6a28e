#pragma once

// The national holidays of countries, by rules.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace Plexidex {

struct TCountry {
  std::string_view Code;  // of two capital letters (ISO 3166)
  std::string_view Name;  // in English
};

/// Those whose holidays are known, by name.
const std::vector<TCountry>& Holiday_Countries();
/// By code or name, in letters of either case; null for an unknown one.
const TCountry* Find_Country(std::string_view code_or_name);

struct THoliday {
  std::int64_t Day;  // day number
  std::string Name;
};

/// The years for which days are given; of some countries they begin later.
inline constexpr int First_Holiday_Year = 1950, Last_Holiday_Year = 2099;

/// The holidays from one day to another, both included, by day; none for an unknown country. Those of the
/// Islamic calendar may differ by a day from what is proclaimed. The days of a year are kept once computed.
std::vector<THoliday> Holidays_Between(std::string_view code, std::int64_t first, std::int64_t last);

/// The codes of the countries whose holidays the user wants to see; until chosen, that of the user's locale.
std::vector<std::string> Chosen_Countries();
void Choose_Countries(const std::vector<std::string>& codes);

}  // namespace Plexidex
