#include <limits>

#include "Test_Seams.h"

namespace {

struct Format_DateTime : TSeams_Test {
  const TDateTime moment = Encode_Date(2024, 3, 5) + Encode_Time(9, 7, 3, 45);
};

TEST_F(Format_DateTime, Every_Field) {
  const char* const cases[][2] = {
      {"d|dd|ddd|dddd|m|mm|mmm|mmmm", "5|05|Tue|Tuesday|3|03|Mar|March"},
      {"y|yy|yyyy|YYYY|ddddd|dddddd", "24|24|2024|2024|3/5/2024|Tuesday, March 5, 2024"},
      {"h|hh|n|nn|s|ss|z|zzz", "9|09|7|07|3|03|45|045"},
      {"c|t|tt", "3/5/2024 9:07:03 AM|9:07 AM|9:07:03 AM"},
      {"h:mm am/pm", "9:07 am"},
      {"h:mm AM/PM", "9:07 AM"},
      {"ha/p", "9a"},
      {"ampm", "AM"},
      // After an hour m is minutes, also behind separators and texts, and only once.
      {"mm:ss, hh:mm mm, h \"uhr\" m, h mmm", "03:03, 09:07 03, 9 uhr 7, 9 Mar"},
      // As the pages and the journal use them.
      {"\"at\" t \"on\" dddd, dd mmmm yyyy", "at 9:07 AM on Tuesday, 05 March 2024"},
      {"\"Task Marked Completed: \"ddddd,t", "Task Marked Completed: 3/5/2024,9:07 AM"},
      // Texts.
      {"'d' d, \"it's\" d, b ü – i, a.a", "d 5, it's 5, b ü – i, a.a"},
      {"d \"open d", "5 open d"},
      {"d \"", "5 "},
      {"\"\"", ""},
      {"", ""}};
  for (const auto& test : cases) EXPECT_EQ(FormatDateTime(test[0], moment), test[1]) << test[0];
}

TEST_F(Format_DateTime, Formats_Are_Shown_As_The_Platform_Writes_Them) {
  const auto shown = [](const char* locale) {
    const TFormat_Settings settings = Settings_From_Locale(locale);
    return Shown_Format(settings.ShortDateFormat, settings) + " " +
           Shown_Format(settings.ShortTimeFormat, settings);
  };
  EXPECT_EQ(shown("en_GB"), "dd/MM/yyyy HH:mm");
  EXPECT_EQ(shown("en_US"), "M/d/yyyy h:mm AP");
  EXPECT_EQ(shown("de_DE"), "dd.MM.yyyy HH:mm");
  EXPECT_EQ(shown("da_DK"), "dd.MM.yyyy HH.mm");
  EXPECT_EQ(shown("fr_CA"), "yyyy-MM-dd HH 'h' mm");
  EXPECT_EQ(shown("hu_HU"), "yyyy. MM. dd. H:mm");
  EXPECT_EQ(Shown_Format("d 'de' mmm yy"), "d 'de' MMM yyyy");
}

TEST_F(Format_DateTime, Hours_Of_Twelve) {
  std::string hours;
  for (const int hour : {0, 11, 12, 15, 23})
    hours += FormatDateTime("hh ham/pm hhampm a/p, ", Encode_Time(hour, 0, 0, 0)) +
             FormatDateTime("hh; ", Encode_Time(hour, 0, 0, 0));
  EXPECT_EQ(hours,
            "12 12am 12AM a, 00; 11 11am 11AM a, 11; 12 12pm 12PM p, 12; 03 3pm 03PM p, 15; 11 11pm 11PM p, "
            "23; ");
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
  EXPECT_EQ(FormatDateTime("ddddd|t", moment, settings), "5   |");
}

}  // namespace
