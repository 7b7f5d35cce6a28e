#include "View_Rules.h"

#include <gtest/gtest.h>

#include "Test_Seams.h"

using namespace KTReminds;

TEST(View_Rules, Texts) {
  const TTest_Seams seams;
  EXPECT_EQ(Day_Title(45306.9), " Monday, 15 January 2024");
  const TNotice prior = No_Entry_Notice(true, " A"), later = No_Entry_Notice(false, " A");
  EXPECT_EQ(prior.Caption + ": " + prior.Text,
            "No Prior Events: No eligible calendar events found prior to the period A");
  EXPECT_EQ(later.Caption + ": " + later.Text,
            "No Later Events: No eligible calendar events found after the period A");
}
