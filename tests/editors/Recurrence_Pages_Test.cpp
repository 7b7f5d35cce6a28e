#include "Recurrence_Pages.h"

#include <gtest/gtest.h>

#include <bit>

#include "Test_Seams.h"

using namespace KTReminds;

namespace {

constexpr TDateTime Monday = 45306.5;  // 15 January 2024, noon

bool Same(const TRecurrence_Pattern& a, const TRecurrence_Pattern& b) {
  return a.Freq == b.Freq && a.Period == b.Period && a.PeriodDefault == b.PeriodDefault && a.P == b.P &&
         a.Instance == b.Instance && a.Month == b.Month && a.LastDate == b.LastDate;
}

TEST(Recurrence_Pages, Stored_Set_To_Page_And_Back_Is_The_Same_Set_And_The_Same_Page) {
  int sets = 0;
  for (int freq = 1; freq <= 4; ++freq) {
    for (const bool plain : {true, false}) {
      for (const int period : {-3, 0, 1, 2, 12345}) {
        for (unsigned flags = 0; flags < 1024; ++flags) {
          // These are no sets that a page can show: no day to fall on.
          if ((freq == 2 || (freq == 1 && !plain)) && (flags & 0x7F) == 0) continue;
          TRecurrence_Pattern stored{static_cast<TFrequency>(freq), period, plain};
          stored.P = static_cast<std::uint16_t>(flags);
          stored.Instance = static_cast<int>(flags % 5);
          stored.Month = static_cast<int>(flags % 12);
          stored.LastDate = 46000.75;
          const TRecurrence_Pages pages = Pages_From_Pattern(stored, Monday);
          TRecurrence_Pattern back;
          ASSERT_TRUE(Pattern_From_Pages(pages, stored, back).Empty());
          ASSERT_TRUE(Same(back, stored)) << freq << plain << period << " flags " << flags;
          // What the page alone says, without the stored set behind it, recurs on the same dates.
          TRecurrence_Pattern fresh;
          ASSERT_TRUE(Pattern_From_Pages(pages, {}, fresh).Empty());
          ASSERT_EQ(Next_Occurrence(fresh, Monday), Next_Occurrence(stored, Monday))
              << freq << plain << " flags " << flags;
          ASSERT_TRUE(Pages_From_Pattern(fresh, Monday) == pages) << freq << plain << " flags " << flags;
          ASSERT_TRUE(freq <= 2 || plain || std::has_single_bit(fresh.P)) << "one flag, also for any day";
          ++sets;
        }
      }
    }
  }
  EXPECT_GT(sets, 30'000);
}

TEST(Recurrence_Pages, Another_Choice_On_The_Same_Page_Keeps_The_Last_Day) {
  for (const int freq : {1, 3, 4}) {
    for (const bool plain : {true, false}) {
      const TRecurrence_Pattern stored{static_cast<TFrequency>(freq), 2, plain, 1, 0, 0, 46000.75};
      TRecurrence_Pages pages = Pages_From_Pattern(stored, Monday);
      pages.Daily_Every = pages.Monthly_Every = pages.Yearly_Every = !plain;
      TRecurrence_Pattern pattern;
      ASSERT_TRUE(Pattern_From_Pages(pages, stored, pattern).Empty());
      EXPECT_EQ(pattern.LastDate, 46000) << freq << plain;
    }
  }
  EXPECT_EQ(Pages_From_Pattern({.Freq = static_cast<TFrequency>(7)}, Monday).Freq, TFrequency::Daily)
      << "what is no frequency becomes a proposal";
}

TEST(Recurrence_Pages, Proposals_Follow_The_Date) {
  TRecurrence_Pages pages = Propose_Pages(Monday);
  EXPECT_EQ(pages.Freq, TFrequency::Daily);
  EXPECT_TRUE(pages.Daily_Every && pages.Daily_Number == "1" && pages.Daily_Days[0] && !pages.Daily_Days[1]);
  EXPECT_EQ(pages.Until, 45306 + 366) << "15 January 2025";
  EXPECT_EQ(pages.Monthly_Kind.Instance, 2);
  EXPECT_EQ(pages.Monthly_Kind.Pattern, 4) << "Monday";
  EXPECT_EQ(pages.Yearly_Month, 0);
  Follow_Date(pages, Monday + 23);  // Wednesday, 7 February
  EXPECT_EQ(pages.Yearly_Kind.Instance, 1) << "the 7th counts as the second";
  EXPECT_EQ(pages.Yearly_Kind.Pattern, 6);
  EXPECT_TRUE(pages.Daily_Days[0]) << "the days stay";
}

TEST(Recurrence_Pages, Refusals) {
  const auto refusal = [](int freq, auto change) {
    TRecurrence_Pages pages = Propose_Pages(Monday);
    pages.Freq = static_cast<TFrequency>(freq);
    change(pages);
    TRecurrence_Pattern pattern;
    const TRefusal refused = Pattern_From_Pages(pages, {}, pattern);
    EXPECT_EQ(refused.Empty(), pattern.Freq == pages.Freq);
    return refused.Caption + "/" + refused.Control;
  };
  using TPages = TRecurrence_Pages&;
  EXPECT_EQ(refusal(1, [](TPages pages) { pages.Daily_Number = "two"; }), "Invalid Period/DailyNumber");
  EXPECT_EQ(refusal(1, [](TPages pages) { pages.Daily_Number = "-2"; }), "/") << "any integer will do";
  EXPECT_EQ(refusal(1, [](TPages pages) { pages.Daily_Days = {}; }), "/") << "not asked for";
  EXPECT_EQ(refusal(1, [](TPages pages) { pages.Daily_Every = false, pages.Daily_Days = {}; }),
            "Daily Criteria Invalid/DailyMonday");
  EXPECT_EQ(refusal(2, [](TPages pages) { pages.Weekly_Days = {}; }), "Weekly Criteria Invalid/WeeklyMonday");
  EXPECT_EQ(refusal(2, [](TPages pages) { pages.Weekly_Number = "1.5"; }), "Invalid Period/WeeklyNumber");
  EXPECT_EQ(refusal(3, [](TPages pages) { pages.Monthly_Kind_Number = ""; }), "/")
      << "the other number counts";
  EXPECT_EQ(refusal(3, [](TPages pages) { pages.Monthly_Every = false, pages.Monthly_Kind_Number = ""; }),
            "Invalid Period/MonthlyKindNumber");
  EXPECT_EQ(refusal(4, [](TPages pages) { pages.Yearly_Number = "99999999999"; }),
            "Invalid Period/YearlyNumber");
  EXPECT_EQ(refusal(9, [](TPages) {}), "/") << "no such page: only heard";
}

}  // namespace
