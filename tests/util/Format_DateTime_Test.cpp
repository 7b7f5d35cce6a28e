#include <gtest/gtest.h>

#include <limits>

#include "Test_Seams.h"

namespace {

using namespace Kt_util_01;

class Format_DateTime : public ::testing::Test {
 protected:
  Kt_test::TTest_Seams m_Seams;
  const TDateTime m_Moment = Encode_Date(2024, 3, 5) + Encode_Time(9, 7, 3, 45);
};

struct TCase {
  const char* Pattern;
  const char* Expected;
};

TEST_F(Format_DateTime, Every_Field) {
  const TCase cases[] = {{"d|dd|ddd|dddd", "5|05|Tue|Tuesday"},
                         {"m|mm|mmm|mmmm", "3|03|Mar|March"},
                         {"y|yy|yyyy|YYYY", "24|24|2024|2024"},
                         {"ddddd", "3/5/2024"},
                         {"dddddd", "Tuesday, March 5, 2024"},
                         {"h|hh|n|nn|s|ss", "9|09|7|07|3|03"},
                         {"z|zzz", "45|045"},
                         {"t", "9:07 AM"},
                         {"tt", "9:07:03 AM"},
                         {"c", "3/5/2024 9:07:03 AM"},
                         {"h:mm am/pm", "9:07 am"},
                         {"h:mm AM/PM", "9:07 AM"},
                         {"ha/p", "9a"},
                         {"ampm", "AM"},
                         // After an hour m is minutes, also behind separators and texts, and only once.
                         {"hh:mm mm", "09:07 03"},
                         {"h \"uhr\" m", "9 uhr 7"},
                         {"h mmm", "9 Mar"},
                         {"mm:ss", "03:03"},
                         // As the pages and the journal use them.
                         {"ddddd,t", "3/5/2024,9:07 AM"},
                         {"\"at\" t \"on\" dddd, dd mmmm yyyy", "at 9:07 AM on Tuesday, 05 March 2024"},
                         {" dddd, dd mmmm yyyy", " Tuesday, 05 March 2024"},
                         {" mmmm yyyy", " March 2024"},
                         {"\"Task Marked Completed: \"ddddd,t", "Task Marked Completed: 3/5/2024,9:07 AM"},
                         // Texts.
                         {"'d' d", "d 5"},
                         {"\"it's\" d", "it's 5"},
                         {"d \"open d", "5 open d"},
                         {"d \"", "5 "},
                         {"\"\"", ""},
                         {"", ""},
                         {"b ü – i", "b ü – i"},
                         {"a.a", "a.a"}};
  for (const TCase& test : cases)
    EXPECT_EQ(FormatDateTime(test.Pattern, m_Moment), test.Expected) << test.Pattern;
}

TEST_F(Format_DateTime, Hours_Of_Twelve) {
  const TCase cases[] = {
      {"00", "12am 12 AM"}, {"11", "11am 11 AM"}, {"12", "12pm 12 PM"}, {"23", "11pm 11 PM"}};
  for (const TCase& test : cases) {
    const TDateTime time = Encode_Time(std::stoi(test.Pattern), 0, 0, 0);
    EXPECT_EQ(FormatDateTime("ham/pm", time) + " " + FormatDateTime("hh ampm", time), test.Expected);
    EXPECT_EQ(FormatDateTime("hh", time), test.Pattern);
  }
  EXPECT_EQ(FormatDateTime("a/p h", Encode_Time(15, 0, 0, 0)), "p 3");
}

TEST_F(Format_DateTime, Every_Minute_Reads_As_Itself) {
  for (const int day : {45000, 0, -40000, -690000, 2900000}) {
    for (int minute = 0; minute < 1440; ++minute) {
      // The sum of a day and a fraction is not exact.
      const TDateTime value = day + minute / 1440.0;
      char expected[24];
      std::snprintf(expected, sizeof expected, "%02d:%02d:00.000", minute / 60, minute % 60);
      ASSERT_EQ(FormatDateTime("hh:nn:ss.zzz", value), expected) << day;
    }
  }
}

TEST_F(Format_DateTime, Dates_Before_Day_Zero_And_At_The_Limits) {
  EXPECT_EQ(ISO_DateTime(-0.25), "1899-12-29T18:00:00");
  EXPECT_EQ(FormatDateTime("dddd d/m/yyyy", -1.0), "Friday 29/12/1899");
  EXPECT_EQ(ISO_DateTime(Encode_Date(1, 1, 1)), "0001-01-01T00:00:00");
  EXPECT_EQ(ISO_DateTime(Encode_Date(9999, 12, 31) + Encode_Time(23, 59, 59, 999)), "9999-12-31T23:59:59");
  EXPECT_EQ(FormatDateTime("yyyy", Encode_Date(9999, 12, 31) + 1), "");
  EXPECT_EQ(FormatDateTime("yyyy", std::numeric_limits<double>::infinity()), "");
  EXPECT_EQ(FormatDateTime("yyyy", std::numeric_limits<double>::quiet_NaN()), "");
  EXPECT_EQ(FormatDateTime("c", 45000.0), "3/15/2023");
  // A millisecond short of midnight is still the day before; half of one is not.
  EXPECT_EQ(ISO_DateTime(45000.0 - 1.0 / Msecs_Per_Day), "2023-03-14T23:59:59");
  EXPECT_EQ(ISO_DateTime(45000.0 - 0.4 / Msecs_Per_Day), "2023-03-15T00:00:00");
}

TEST_F(Format_DateTime, Formats_That_Name_Themselves_End) {
  TFormat_Settings settings;
  settings.ShortDateFormat = std::string("d ddddd c");
  settings.ShortTimeFormat = std::string("t");
  EXPECT_EQ(FormatDateTime("ddddd|t", m_Moment, settings), "5   |");
}

}  // namespace
