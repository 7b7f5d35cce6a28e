#include "Holidays.h"

#include <algorithm>
#include <map>
#include <set>

#include "Holiday_Dates.h"
#include "ICU_Texts.h"
#include "Kt_text.h"
#include "Kt_util_01.h"

namespace Plexidex {

namespace {

using namespace Kt_util_01;

constexpr const char *Section = "Calendar", *Setting = "Holiday Countries";

// Of one year and country: the days by rule, and those that stand in for them, perhaps of a neighbouring
// year.
class TYear_Of_Country {
 public:
  TYear_Of_Country(const TCountry_Rules& country, int year) : country(country) {
    for (const TWeekend_Rule& rule : country.Weekends) {
      if (rule.Years.First <= year && year <= rule.Years.Last) usual = rule.Weekend;
    }
    for (const THoliday_Rule& rule : country.Rules) {
      if (year < std::max(rule.Years.First, country.First_Year) || year > rule.Years.Last) continue;
      for (const std::int64_t day : Days_Of_Rule(rule.Day, year)) Add(rule, day);
    }
    // In the order of the days that they stand in for.
    std::stable_sort(to_replace.begin(), to_replace.end(),
                     [](const TReplaced& a, const TReplaced& b) { return a.Day < b.Day; });
    for (const TReplaced& each : to_replace) Substitute(each);
    if (country.Between_Two_Holidays_Since > 0 && year >= country.Between_Two_Holidays_Since) Fill_Gaps();
  }

  std::vector<THoliday> Days;

 private:
  struct TReplaced {
    std::string_view Name;
    std::int64_t Day;
    TWeekend Weekend;
  };

  void Add(const THoliday_Rule& rule, std::int64_t day) {
    const TWeekday weekday = Weekday_Of(day);
    const TWeekend weekend = rule.Weekend == TWeekend::As_Usual ? usual : rule.Weekend;
    switch (weekend) {
      case TWeekend::Stays:
        break;
      case TWeekend::Apart:
        Days.push_back({day, std::string(rule.Name)});
        return;
      case TWeekend::Sunday_To_Saturday:
        if (weekday == TWeekday::Sunday) --day;
        break;
      case TWeekend::Sunday_To_Monday:
        if (weekday == TWeekday::Sunday) ++day;
        break;
      case TWeekend::Away_From_Sabbath_And_Its_Eve:
        if (weekday == TWeekday::Monday) ++day;
        [[fallthrough]];
      case TWeekend::Away_From_Sabbath:
        if (weekday == TWeekday::Friday) --day;
        if (weekday == TWeekday::Saturday) day -= 2;
        break;
      default: {
        const bool sunday_only = weekend == TWeekend::Sunday_Next_Too || weekend == TWeekend::Sunday_Free_Too;
        if (weekday == TWeekday::Sunday || (weekday == TWeekday::Saturday && !sunday_only))
          to_replace.push_back({rule.Name, day, weekend});
      }
    }
    Put(day, std::string(rule.Name));
  }

  void Put(std::int64_t day, std::string name) {
    taken.insert(day);
    Days.push_back({day, std::move(name)});
  }

  bool Is_Weekend(std::int64_t day) const {
    const TWeekday weekday = Weekday_Of(day);
    return weekday == TWeekday::Saturday || weekday == TWeekday::Sunday;
  }

  void Substitute(const TReplaced& replaced) {
    std::int64_t day = replaced.Day;
    const bool is_saturday = Weekday_Of(day) == TWeekday::Saturday;
    switch (replaced.Weekend) {
      case TWeekend::Nearest_Too:
        day += is_saturday ? -1 : 1;
        break;
      case TWeekend::Monday_Too:
        day += is_saturday ? 2 : 1;
        break;
      case TWeekend::Sunday_Next_Too:
        if (taken.contains(++day)) return;
        break;
      case TWeekend::Sunday_Free_Too:
        while (taken.contains(day)) ++day;
        break;
      default:
        while (taken.contains(day) || Is_Weekend(day)) ++day;
    }
    Put(day, std::string(country.Substitute.empty() ? std::string(replaced.Name) + " (observed)"
                                                    : country.Substitute));
  }

  void Fill_Gaps() {
    const std::set<std::int64_t> before = taken;
    for (const std::int64_t day : before) {
      if (!before.contains(day + 1) && before.contains(day + 2) && Weekday_Of(day + 1) != TWeekday::Sunday)
        Put(day + 1, "National Holiday");
    }
  }

  const TCountry_Rules& country;
  TWeekend usual = TWeekend::Stays;
  std::set<std::int64_t> taken;
  std::vector<TReplaced> to_replace;
};

const TCountry_Rules* Rules_Of(std::string_view code) {
  for (const auto& continent : {Countries_Of_Europe(), Countries_Overseas()}) {
    for (const TCountry_Rules& country : continent) {
      if (country.Code == code) return &country;
    }
  }
  return nullptr;
}

std::vector<THoliday> Compute(const TCountry_Rules& country, int year) {
  std::vector<THoliday> days;
  // A substitute of New Year's Day may lie in the year before.
  for (const int neighbour : {year - 1, year, year + 1}) {
    for (THoliday& holiday : TYear_Of_Country(country, neighbour).Days) {
      if (Year_Of(holiday.Day) == year) days.push_back(std::move(holiday));
    }
  }
  std::stable_sort(days.begin(), days.end(),
                   [](const THoliday& a, const THoliday& b) { return a.Day < b.Day; });
  return days;
}

const std::vector<THoliday>& Holidays_Of(const TCountry_Rules& country, int year) {
  static std::map<std::pair<std::string_view, int>, std::vector<THoliday>> known;
  const auto [found, is_new] = known.try_emplace({country.Code, year});
  if (is_new) found->second = Compute(country, year);
  return found->second;
}

}  // namespace

const std::vector<TCountry>& Holiday_Countries() {
  static const std::vector<TCountry> countries = [] {
    std::vector<TCountry> all;
    for (const auto& continent : {Countries_Of_Europe(), Countries_Overseas()}) {
      for (const TCountry_Rules& country : continent) all.push_back({country.Code, country.Name});
    }
    std::sort(all.begin(), all.end(), [](const TCountry& a, const TCountry& b) { return a.Name < b.Name; });
    return all;
  }();
  return countries;
}

const TCountry* Find_Country(std::string_view code_or_name) {
  const std::string typed = Simple_UpperCase(code_or_name);
  for (const TCountry& country : Holiday_Countries()) {
    if (typed == country.Code || typed == Simple_UpperCase(country.Name)) return &country;
  }
  return nullptr;
}

std::vector<THoliday> Holidays_Between(std::string_view code, std::int64_t first, std::int64_t last) {
  std::vector<THoliday> found;
  const TCountry_Rules* country = Rules_Of(code);
  if (!country || first > last) return found;
  const std::int64_t begin = std::max(first, Day_From_Date(First_Holiday_Year, 1, 1));
  const std::int64_t end = std::min(last, Day_From_Date(Last_Holiday_Year, 12, 31));
  if (begin > end) return found;
  for (int year = Year_Of(begin); year <= Year_Of(end); ++year) {
    for (const THoliday& holiday : Holidays_Of(*country, year)) {
      if (holiday.Day >= begin && holiday.Day <= end) found.push_back(holiday);
    }
  }
  return found;
}

std::vector<std::string> Chosen_Countries() {
  const std::string chosen = Read_String(Section, Setting, Locale_Country());
  std::vector<std::string> codes;
  for (std::size_t at = 0; at <= chosen.size();) {
    const std::size_t end = std::min(chosen.find(',', at), chosen.size());
    const TCountry* country =
        Find_Country(Kt_data_01::Trimmed(std::string_view(chosen).substr(at, end - at)));
    if (country && std::find(codes.begin(), codes.end(), country->Code) == codes.end())
      codes.emplace_back(country->Code);
    at = end + 1;
  }
  return codes;
}

void Choose_Countries(const std::vector<std::string>& codes) {
  std::string text;
  for (const std::string& code : codes) text += (text.empty() ? "" : ",") + code;
  Write_String(Section, Setting, text);
}

}  // namespace Plexidex
