#include "Month_Rules.h"

#include <gtest/gtest.h>

#include "Test_Seams.h"

using namespace KTReminds;
using Kt_data_01::TEventKey;

namespace {

using Month_Rules = TSeams_Test;

std::string Name(TDateTime day) {
  return Has_Date(day) ? ISO_DateTime(day).substr(0, 10) : "none";
}

TDateTime Day(int year, int month, int day) {
  return static_cast<double>(Day_From_Date(year, month, day));
}

TEST_F(Month_Rules, The_First_Row_Holds_The_First_Of_The_Month) {
  const struct {
    TDateTime Date;
    const char *First, *Last;
  } grids[] = {{Day(2027, 2, 28) + 0.99, "2027-02-01", "2027-03-14"},  // begins on a Monday
               {Day(2024, 10, 1), "2024-09-30", "2024-11-10"},         // Tuesday
               {Day(2024, 5, 31), "2024-04-29", "2024-06-09"},         // Wednesday
               {Day(2024, 2, 29), "2024-01-29", "2024-03-10"},         // Thursday
               {Day(2024, 11, 30), "2024-10-28", "2024-12-08"},        // Friday
               {Day(2024, 6, 15), "2024-05-27", "2024-07-07"},         // Saturday
               {Day(2024, 12, 25), "2024-11-25", "2025-01-05"},        // Sunday
               {Day(1, 1, 20), "0001-01-01", "0001-02-11"},
               {Day(9999, 12, 31), "9999-11-29", "none"},
               {-1e300, "0001-01-01", "0001-02-11"},
               {1e300, "9999-11-29", "none"}};
  for (const auto& [date, first, last] : grids) {
    const TMonth_Grid grid(date);
    EXPECT_EQ(Name(grid.First_Day()) + Name(grid.Last_Day()), std::string(first) + last);
    int own = 0;
    for (int i = 0; i < TMonth_Grid::Days; ++i) {
      const TDateTime day = grid.First_Day() + i;
      const auto cell = grid.Cell_Of(day + 0.5);
      ASSERT_TRUE(cell && cell->Column == i % 7 && grid.Day_In(*cell) == day);
      own += Is_Same_Month(day, grid.Date());
    }
    const TDate_Parts parts = Decode_Date(grid.Date());
    EXPECT_EQ(own, Days_In_Month(parts.Year, parts.Month)) << first;
    EXPECT_FALSE(grid.Cell_Of(grid.First_Day() - 1) || grid.Cell_Of(grid.Last_Day() + 1));
  }
}

TEST_F(Month_Rules, Steps_Stay_Within_Months_And_Years) {
  const auto step = [](TDateTime from, int months) { return Name(Add_Months(from, months)); };
  EXPECT_EQ(step(Day(2024, 1, 31), 1) + step(Day(2024, 12, 31), 1) + step(Day(2024, 1, 1), -1),
            "2024-02-292025-01-312023-12-01");
  EXPECT_EQ(step(Day(9999, 12, 5), 1) + step(Day(1, 1, 5), -1) + step(Day(1, 3, 31), -1),
            "9999-12-050001-01-050001-02-28");
  const TAround around = Around(Day(2024, 2, 29) + 0.5);
  EXPECT_EQ(Name(around.Monday) + Name(around.Sunday), "2024-02-262024-03-03");
  EXPECT_EQ(Name(around.Month_Begin) + Name(around.Month_End), "2024-02-012024-02-29");
  EXPECT_EQ(Name(TMonth_Grid(Around(Day(9999, 12, 31)).Sunday).Date()), "9999-12-31");
  EXPECT_FALSE(Is_Same_Month(Day(2024, 1, 1), Day(2025, 1, 1)));
  EXPECT_EQ(Month_Titles(Day(2024, 1, 15)), (std::vector<std::string>{" January 2024", " Jan 2024"}));
}

TEST_F(Month_Rules, Lines_Are_Times_And_Texts_In_The_Order_Of_Texts) {
  Install_Locale("en_GB");
  const TDateTime day = Day(2024, 1, 15);
  Kt_data_01::TEventKey_List entries;
  const auto add = [&](double time, const std::string& title, bool hidden = false, bool timeless = false) {
    auto& entry = *entries.emplace_back(std::make_unique<TEventKey>());
    entry.Description = title;
    entry.EventDate = day + time;
    entry.Private = hidden;
    entry.Timeless = timeless;
  };
  add(-0.01, "before");
  add(0.5, "b");
  add(0.5, "a");
  add(0.5, "secret", true);
  add(0.25, "early");
  add(0.9, "all day", false, true);
  add(1, "after");
  add(2, "too late");
  const auto lines = Lines_Of_Days(entries, day, 2);
  EXPECT_EQ(Day_Tip(lines[0]) + "|" + Day_Tip(lines[1]),
            "00:00 all day\n06:00 early\n12:00 Private\n12:00 a\n12:00 b|00:00 after");
  EXPECT_EQ(Spoken_Day(day, lines[1], day), "Monday, 15 January 2024, 1 entry; after, 00:00, outstanding");
  EXPECT_EQ(Spoken_Day(day, {}, day), "Monday, 15 January 2024, no entries");
  for (int i = 0; i < 18; ++i) add(0.9, "z");
  const auto many = Lines_Of_Days(entries, day, 1)[0];
  const std::string tip = Day_Tip(many), spoken = Spoken_Day(day, many, day);
  EXPECT_EQ(std::count(tip.begin(), tip.end(), '\n'), 20);
  EXPECT_EQ(tip.substr(tip.size() - 11) + spoken.substr(spoken.size() - 12), "\nand 3 more; and 3 more");
  std::string umlauts;
  for (int i = 0; i < 1000; ++i) umlauts += "ü";
  EXPECT_EQ(Shown_Part(umlauts).size() % 2 + Shown_Part("x" + umlauts).size() % 2, 1U);
  EXPECT_EQ(Shown_Part("ü"), "ü");
}

}  // namespace
