#include "View_Rules.h"

#include <gtest/gtest.h>

#include "Test_Seams.h"

using namespace KTReminds;

TEST(View_Rules, Texts) {
  const TTest_Seams seams;
  EXPECT_EQ(Day_Titles(45306.9), (std::vector<std::string>{" Monday, 15 January 2024", " Mon, 15 Jan 2024",
                                                           " Mon 1/15/2024", " 1/15/2024"}));
  EXPECT_EQ(Week_Titles(45306),
            (std::vector<std::string>{" 15 January 2024 - 21 January 2024", " 15 Jan 2024 - 21 Jan 2024",
                                      " 1/15/2024 - 1/21/2024"}));
  EXPECT_EQ(Week_Day_Titles(45306).front(), " Monday, 15 January 2024");
  for (const double date : {45306.0, 45306.9, 45309.5, 45312.9})
    EXPECT_EQ(Week_Start(date), 45306) << "a Sunday ends its week";
  EXPECT_EQ(Week_Start(-1.25), -5) << "before 1900";
  const TNotice prior = No_Entry_Notice(true, " A"), later = No_Entry_Notice(false, " A");
  EXPECT_EQ(prior.Caption + ": " + prior.Text,
            "No Prior Events: No eligible calendar events found prior to the period A");
  EXPECT_EQ(later.Caption + ": " + later.Text,
            "No Later Events: No eligible calendar events found after the period A");
}
