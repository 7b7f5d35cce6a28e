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
  constexpr int times[][4] = {{24, 0, 0, 0}, {0, 60, 0, 0}, {0, 0, 60, 0}, {0, 0, 0, 1000}, {-1, 0, 0, 0}};
  for (const auto& time : times)
    EXPECT_THROW(Encode_Time(time[0], time[1], time[2], time[3]), EConvert_Error) << time[0];
}

TEST(Dates, Differences_Count_Days_And_Whole_Minutes) {
  const TDateTime day = Encode_Date(2024, 3, 10), noon = day + 0.5;
  EXPECT_EQ(CompareDates(SubtractMins(noon, -90), noon + Encode_Time(1, 30, 0, 0)), 0);
  EXPECT_EQ(CompareDates(SubtractSecs(noon, 43201), day - 1 + Encode_Time(23, 59, 59, 0)), 0);
  EXPECT_EQ(TimeApartInDays(noon, day + 1), 1);
  EXPECT_EQ(TimeApartInDays(noon, day), 0);
  EXPECT_EQ(TimeApartInDays(0.25, -0.25), -1);
  EXPECT_EQ(Get_Alarm_Offset(noon, SubtractSecs(noon, 119)), 1);
  EXPECT_EQ(Get_Alarm_Offset(noon, SubtractSecs(noon, -119)), -1);
  // A thousand steps of a minute end where one of a thousand minutes does.
  TDateTime stepped = noon;
  for (int i = 0; i < 1000; ++i) stepped = SubtractMins(stepped, 1);
  EXPECT_EQ(stepped, SubtractMins(noon, 1000));
}

TEST(Dates, Comparison_Goes_By_Milliseconds_And_Orders_What_Is_No_Date) {
  using TWhole = std::numeric_limits<std::int64_t>;
  const double infinity = std::numeric_limits<double>::infinity();
  const TDateTime moment = Encode_Date(2024, 1, 1) + Encode_Time(9, 7, 0, 0);
  EXPECT_EQ(CompareDates(moment, Encode_Date(2024, 1, 1) + 547.0 / 1440.0), 0);
  EXPECT_EQ(CompareDates(moment, From_Msecs(To_Msecs(moment) + 1)), -1);
  EXPECT_EQ(CompareDates(0.0, -0.25), 1);
  EXPECT_EQ(CompareInteger(TWhole::max(), TWhole::min()), 1);
  EXPECT_EQ(CompareBool(false, true), -1);
  EXPECT_EQ(CompareDates(-infinity, infinity), -1);
  EXPECT_EQ(CompareDates(1e300, 1.0), 1);
  EXPECT_EQ(CompareDates(std::numeric_limits<double>::quiet_NaN(), 0.0), 0);
  EXPECT_LT(Get_Alarm_Offset(-infinity, infinity), 0);
  EXPECT_EQ(CompareDates(SubtractMins(0, TWhole::min()), 1e9), 1);
}

}  // namespace
