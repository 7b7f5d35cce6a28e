#include "Rule_Walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "Kt_util_01.h"

namespace {

using namespace Kt_util_01;
using namespace Plexidex;

// A rule as its definition reads: every day is held against every part of its text.
struct TDefinition {
  std::int64_t Start;
  std::map<std::string, std::vector<std::string>> Parts;

  TDefinition(const std::string& rule, std::int64_t start) : Start(start) {
    std::istringstream parts(rule);
    for (std::string name, values; std::getline(parts, name, '=') && std::getline(parts, values, ';');) {
      std::istringstream stream(values);
      for (std::string value; std::getline(stream, value, ',');) Parts[name].push_back(value);
    }
  }
  const std::vector<std::string>& Part(const std::string& name) const {
    static const std::vector<std::string> none;
    const auto part = Parts.find(name);
    return part == Parts.end() ? none : part->second;
  }
  bool Names(const std::string& part, std::int64_t number, std::int64_t of) const {
    const auto& values = Part(part);
    return std::any_of(values.begin(), values.end(), [&](const std::string& value) {
      const int named = std::stoi(value);
      return named == number || (named < 0 && of + 1 + named == number);
    });
  }
  static std::string Name_Of(std::int64_t day) {
    constexpr const char* names[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    return names[Day_Of_Week(day) - 1];
  }
  std::int64_t Week_Begin(std::int64_t day) const {
    const auto& begin = Part("WKST");
    while (Name_Of(day) != (begin.empty() ? "MO" : begin[0])) --day;
    return day;
  }
  // How many whole periods lie between the start's and the day's.
  std::int64_t Period(std::int64_t day) const {
    const TDate_Parts date = Date_From_Day(day), first = Date_From_Day(Start);
    const char freq = Part("FREQ")[0][0];
    if (freq == 'Y') return date.Year - first.Year;
    if (freq == 'M') return (date.Year - first.Year) * 12 + date.Month - first.Month;
    return freq == 'W' ? (Week_Begin(day) - Week_Begin(Start)) / 7 : day - Start;
  }
  bool Meets(std::int64_t day) const {
    const TDate_Parts date = Date_From_Day(day), first = Date_From_Day(Start);
    const char freq = Part("FREQ")[0][0];
    const int length = Days_In_Month(date.Year, date.Month);
    const std::int64_t new_year = Day_From_Date(date.Year, 1, 1), year = Is_Leap_Year(date.Year) ? 366 : 365;
    const auto& days = Part("BYDAY");
    const bool by_month = !Part("BYMONTH").empty(), by_week = !Part("BYWEEKNO").empty(),
               named = !days.empty() || !Part("BYMONTHDAY").empty() || !Part("BYYEARDAY").empty();
    if (by_month && !Names("BYMONTH", date.Month, 0)) return false;
    if (!Part("BYMONTHDAY").empty() && !Names("BYMONTHDAY", date.Day, length)) return false;
    if (!Part("BYYEARDAY").empty() && !Names("BYYEARDAY", day - new_year + 1, year)) return false;
    if (by_week) {
      // A week belongs to the year in which its fourth day lies.
      const int of = Date_From_Day(Week_Begin(day) + 3).Year;
      const std::int64_t weeks_begin = Week_Begin(Day_From_Date(of, 1, 4));
      const std::int64_t weeks = (Week_Begin(Day_From_Date(of + 1, 1, 4)) - weeks_begin) / 7;
      if (!Names("BYWEEKNO", (Week_Begin(day) - weeks_begin) / 7 + 1, weeks)) return false;
    }
    if (!named && (freq == 'W' || by_week)) return Name_Of(day) == Name_Of(Start);
    if (!named && freq != 'D')
      return date.Day == first.Day && (freq == 'M' || by_month || date.Month == first.Month);
    const bool of_year = freq == 'Y' && !by_month;
    const std::int64_t before = of_year ? day - new_year : date.Day - 1,
                       after = of_year ? new_year + year - 1 - day : length - date.Day;
    return days.empty() || std::any_of(days.begin(), days.end(), [&](const std::string& value) {
             if (!value.ends_with(Name_Of(day))) return false;
             const int position = value.size() > 2 ? std::stoi(value) : 0;
             return position == 0 || position == before / 7 + 1 || position == -(after / 7 + 1);
           });
  }
  std::string Dates(std::int64_t end) const {
    const auto& interval = Part("INTERVAL");
    const bool placed = !Part("BYSETPOS").empty();
    std::string dates;
    for (std::int64_t day = Start - 366; day <= end;) {
      std::vector<std::int64_t> met;
      const std::int64_t period = Period(day);
      for (; Period(day) == period; ++day) {
        if (Meets(day)) met.push_back(day);
      }
      if (period < 0 || (!interval.empty() && period % std::stoi(interval[0]) != 0)) continue;
      for (std::size_t i = 0; i < met.size(); ++i) {
        const auto size = static_cast<std::int64_t>(met.size());
        const bool taken = !placed || Names("BYSETPOS", static_cast<std::int64_t>(i) + 1, size);
        if (taken && met[i] >= Start && met[i] <= end) dates += std::to_string(met[i]) + " ";
      }
    }
    return dates;
  }
};

std::string Walked(const std::string& rule, TDateTime start, std::int64_t end) {
  TRule_Walk walk(icalrecurrencetype_from_string(rule.c_str()), start, [] {});
  std::string dates;
  while (const auto date = walk.Next(end)) dates += std::to_string(Whole_Day(*date)) + " ";
  return dates;
}

TEST(Rule_Walk, Gives_The_Days_That_The_Definition_Gives) {
  std::mt19937 random(20240115);
  const auto number = [&](int most, bool negative) {
    const auto value = std::to_string(1 + random() % static_cast<unsigned>(most));
    return (negative && random() % 3 == 0 ? "-" : "") + value;
  };
  const int rounds = std::getenv("KT_LONG_TESTS") != nullptr ? 5000 : 80;
  int with_dates = 0;
  for (int round = 0; round < rounds; ++round) {
    constexpr const char* freqs[] = {"YEARLY", "MONTHLY", "WEEKLY", "DAILY"};
    constexpr const char* names[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    const unsigned freq = random() % 4;
    std::string rule = std::string("FREQ=") + freqs[freq];
    if (random() % 3 == 0) rule += ";INTERVAL=" + number(7, false);
    if (random() % 3 == 0) rule += ";WKST=" + std::string(names[random() % 7]);
    if (random() % 3 == 0) rule += ";BYMONTH=" + number(12, false) + "," + number(12, false);
    const bool weeks = freq == 0 && random() % 4 == 0;
    if (weeks) rule += ";BYWEEKNO=" + number(53, true) + "," + number(53, true);
    if (freq == 0 && random() % 5 == 0) rule += ";BYYEARDAY=" + number(366, true) + "," + number(366, true);
    if (freq != 2 && random() % 3 == 0) rule += ";BYMONTHDAY=" + number(31, true) + "," + number(31, true);
    if (random() % 2 == 0) {
      const auto day = [&] {
        const int positions = rule.find("BYMONTH=") == std::string::npos && freq == 0 ? 53 : 5;
        return (freq < 2 && !weeks && random() % 3 == 0 ? number(positions, true) : "") + names[random() % 7];
      };
      rule += ";BYDAY=" + day() + "," + day();
    }
    if (random() % 4 == 0) rule += ";BYSETPOS=" + number(4, true) + "," + number(30, true);
    const auto start = static_cast<std::int64_t>(36526 + random() % 11'000), end = start + 1500;
    const std::string expected = TDefinition(rule, start).Dates(end);
    with_dates += expected.empty() ? 0 : 1;
    ASSERT_EQ(Walked(rule, static_cast<TDateTime>(start), end), expected) << rule << " from " << start;
  }
  EXPECT_GT(with_dates, rounds / 3);
}

// Found to be without end, or to take minutes, where each moment is looked at.
TEST(Rule_Walk, Rules_Without_Dates_End_Soon) {
  for (const char* rule : {"FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=HOURLY;BYMONTH=4;BYMONTHDAY=31",
                           "FREQ=MONTHLY;BYSETPOS=366;BYDAY=MO", "FREQ=SECONDLY;INTERVAL=2;BYSECOND=1",
                           "FREQ=MINUTELY;BYSETPOS=2", "FREQ=DAILY;INTERVAL=7;BYDAY=TU",
                           "FREQ=YEARLY;INTERVAL=4;BYMONTH=2;BYMONTHDAY=29"}) {
    int steps = 0;
    constexpr TDateTime monday = 45299.0;  // in 2024
    TRule_Walk walk(icalrecurrencetype_from_string(rule), monday + (rule[5] == 'Y' ? 366 : 0),
                    [&] { ++steps; });
    EXPECT_FALSE(walk.Next(Day_From_Date(Max_Year, 12, 31))) << rule;
    EXPECT_LT(steps, 150'000) << rule;
  }
}

}  // namespace
