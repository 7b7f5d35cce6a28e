#include <gtest/gtest.h>

#include <limits>

#include "Kt_util_01.h"

namespace {

using namespace Kt_util_01;

TEST(Dates, Every_Day_Encodes_And_Decodes_To_Itself) {
  std::int64_t day = Day_From_Date(Min_Year, 1, 1);
  EXPECT_EQ(Encode_Date(1899, 12, 30), 0);
  EXPECT_EQ(Encode_Date(2000, 1, 1), 36526);
  for (int year = Min_Year; year <= Max_Year; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int date = 1; date <= Days_In_Month(year, month); ++date, ++day) {
        ASSERT_EQ(Encode_Date(year, month, date), static_cast<double>(day));
        const TDate_Parts parts = Date_From_Day(day);
        ASSERT_TRUE(parts.Year == year && parts.Month == month && parts.Day == date) << day;
      }
    }
  }
  EXPECT_EQ(Day_Of_Week(Day_From_Date(2024, 1, 1)), 2);
  EXPECT_EQ(Day_Of_Week(Day_From_Date(1899, 12, 24)), 1);
}

TEST(Dates, What_Does_Not_Exist_Is_Refused) {
  constexpr int dates[][3] = {{2023, 2, 29}, {1900, 2, 29}, {2024, 4, 31}, {2024, 13, 1}, {2024, 0, 1},
                              {2024, 1, 0},  {0, 1, 1},     {10000, 1, 1}, {2024, 1, -1}};
  for (const auto& date : dates)
    EXPECT_THROW(Encode_Date(date[0], date[1], date[2]), EConvert_Error) << date[0] << '-' << date[1];
  EXPECT_NO_THROW(Encode_Date(2000, 2, 29));
  constexpr int times[][4] = {{24, 0, 0, 0}, {0, 60, 0, 0}, {0, 0, 60, 0}, {0, 0, 0, 1000}, {-1, 0, 0, 0}};
  for (const auto& time : times)
    EXPECT_THROW(Encode_Time(time[0], time[1], time[2], time[3]), EConvert_Error) << time[0];
}

TEST(Dates, Differences_Count_Days_And_Whole_Minutes) {
  const TDateTime noon = Encode_Date(2024, 3, 10) + 0.5;
  EXPECT_EQ(CompareDates(SubtractMins(noon, 720), Encode_Date(2024, 3, 10)), 0);
  EXPECT_EQ(CompareDates(SubtractMins(noon, -90), noon + Encode_Time(1, 30, 0, 0)), 0);
  EXPECT_EQ(CompareDates(SubtractSecs(noon, 43201), Encode_Date(2024, 3, 9) + Encode_Time(23, 59, 59, 0)), 0);
  EXPECT_EQ(TimeApartInDays(noon, Encode_Date(2024, 3, 11)), 1);
  EXPECT_EQ(TimeApartInDays(noon, Encode_Date(2024, 3, 10)), 0);
  EXPECT_EQ(TimeApartInDays(0.25, -0.25), -1);
  EXPECT_EQ(Get_Alarm_Offset(noon, SubtractSecs(noon, 119)), 1);
  EXPECT_EQ(Get_Alarm_Offset(noon, SubtractSecs(noon, -119)), -1);
  EXPECT_EQ(Get_Alarm_Offset(noon, SubtractMins(noon, 100'000)), 100'000);
  // A thousand steps of a minute end where one of a thousand minutes does.
  TDateTime stepped = noon;
  for (int i = 0; i < 1000; ++i) stepped = SubtractMins(stepped, 1);
  EXPECT_EQ(stepped, SubtractMins(noon, 1000));
}

TEST(Dates, Comparison_Goes_By_Milliseconds) {
  const TDateTime moment = Encode_Date(2024, 1, 1) + Encode_Time(9, 7, 0, 0);
  EXPECT_EQ(CompareDates(moment, Encode_Date(2024, 1, 1) + 547.0 / 1440.0), 0);
  EXPECT_EQ(CompareDates(moment, From_Msecs(To_Msecs(moment) + 1)), -1);
  EXPECT_EQ(CompareDates(0.0, -0.25), 1);
  EXPECT_EQ(CompareInteger(-3, 2), -1);
  EXPECT_EQ(
      CompareInteger(std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()), 1);
  EXPECT_EQ(CompareBool(false, true), -1);
  EXPECT_EQ(CompareBool(true, true), 0);
}

TEST(Dates, Values_That_Are_No_Dates_Stay_Ordered) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(CompareDates(-infinity, infinity), -1);
  EXPECT_EQ(CompareDates(1e300, 1.0), 1);
  EXPECT_EQ(CompareDates(std::numeric_limits<double>::quiet_NaN(), 0.0), 0);
  EXPECT_LT(Get_Alarm_Offset(-infinity, infinity), 0);
  EXPECT_EQ(CompareDates(SubtractMins(0, std::numeric_limits<std::int64_t>::min()), 1e9), 1);
}

}  // namespace
