#include "View_Rules.h"

#include <gtest/gtest.h>

#include "Test_Seams.h"

using namespace KTReminds;

TEST(View_Rules, Texts) {
  const TTest_Seams seams;
  EXPECT_EQ(Day_Titles(45306.9), (std::vector<std::string>{" Monday, 15 January 2024", " Mon, 15 Jan 2024",
                                                           " Mon 1/15/2024", " 1/15/2024"}));
  const TNotice prior = No_Entry_Notice(true, " A"), later = No_Entry_Notice(false, " A");
  EXPECT_EQ(prior.Caption + ": " + prior.Text,
            "No Prior Events: No eligible calendar events found prior to the period A");
  EXPECT_EQ(later.Caption + ": " + later.Text,
            "No Later Events: No eligible calendar events found after the period A");
}
