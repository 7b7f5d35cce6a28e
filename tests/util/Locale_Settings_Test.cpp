#include <cstdlib>
#include <map>

#include "Test_Seams.h"

namespace {

const TDateTime Moment = Encode_Date(2024, 3, 5) + Encode_Time(21, 7, 3, 0);

std::string Shown(const std::string& locale) {
  return FormatDateTime("ddddd|dddddd|t|tt", Moment, Settings_From_Locale(locale));
}

TEST(Locale_Settings, Dates_And_Times_As_The_Country_Writes_Them) {
  const char* const cases[][2] = {
      {"en_US", "3/5/2024|Tuesday, March 5, 2024|9:07 PM|9:07:03 PM"},
      {"en_GB", "05/03/2024|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"de_DE", "05.03.2024|Dienstag, 5. März 2024|21:07|21:07:03"},
      {"de_DE.UTF-8@euro", "05.03.2024|Dienstag, 5. März 2024|21:07|21:07:03"},
      {"es_ES", "5/3/2024|martes, 5 de marzo de 2024|21:07|21:07:03"},
      {"fi_FI", "5.3.2024|tiistaina 5. maaliskuuta 2024|21.07|21.07.03"},
      {"fr_CA", "2024-03-05|mardi 5 mars 2024|21 h 07|21 h 07 min 03 s"},
      {"ja_JP", "2024/03/05|2024年3月5日火曜日|21:07|21:07:03"},
      {"ko_KR", "2024. 3. 5.|2024년 3월 5일 화요일|오후 9:07|오후 9:07:03"},
      {"C", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"xx_YY", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"ar_EG", "5/3/2024|الثلاثاء، 5 مارس 2024|9:07 م|9:07:03 م"},
      {"../../etc", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
  };
  for (const auto& test : cases) EXPECT_EQ(Shown(test[0]), test[1]) << test[0];
}

TEST(Locale_Settings, Names_Separators_And_The_First_Day) {
  const auto told = [](const std::string& locale) {
    const TFormat_Settings it = Settings_From_Locale(locale);
    return it.LongMonthNames[0] + ' ' + it.LongDayNames[0] + ' ' + it.LongDayNames[6] + ' ' +
           it.DateSeparator + it.DecimalSeparator + ' ' + it.TimeAMString + it.TimePMString + ' ' +
           std::to_string(it.FirstDayOfWeek);
  };
  EXPECT_EQ(told("de_AT"), "Jänner Sonntag Samstag ., AMPM 2");
  EXPECT_EQ(told("en_US"), "January Sunday Saturday /. AMPM 1");
  EXPECT_EQ(Settings_From_Locale("ar_EG").FirstDayOfWeek, 7);
}

TEST(Locale_Settings, The_First_Variable_That_Says_Something_Counts) {
  const std::string names[] = {"LC_ALL", "LC_TIME", "LANG"};
  std::map<std::string, std::string> before;
  for (const std::string& name : names) {
    if (const char* value = std::getenv(name.c_str())) before[name] = value;
    unsetenv(name.c_str());
  }
  EXPECT_EQ(Settings_From_Locale("").ShortDateFormat, "yyyy-MM-dd");
  // Each is set in addition to those before.
  const char* const cases[][3] = {{"LANG", "de_DE.UTF-8", "de_DE"},
                                  {"LC_TIME", "en_GB.UTF-8", "en_GB"},
                                  {"LC_ALL", "", "en_GB"},
                                  {"LC_ALL", "C", "C"}};
  for (const auto& [name, value, expected] : cases) {
    setenv(name, value, 1);
    EXPECT_EQ(Shown(""), Shown(expected)) << name;
  }
  for (const std::string& name : names) unsetenv(name.c_str());
  for (const auto& [name, value] : before) setenv(name.c_str(), value.c_str(), 1);
}

TEST(Locale_Settings, What_Is_Written_Is_Read_Back) {
  const TTest_Seams seams;
  for (const char* locale :
       {"C",     "en_US", "en_GB", "en_CA", "de_DE", "de_CH", "fr_FR", "fr_CA", "es_ES", "es_MX",
        "it_IT", "nl_NL", "da_DK", "sv_SE", "fi_FI", "pl_PL", "cs_CZ", "hu_HU", "hr_HR", "lt_LT",
        "lv_LV", "ru_RU", "uk_UA", "bg_BG", "el_GR", "tr_TR", "he_IL", "ar_EG", "fa_IR", "hi_IN",
        "th_TH", "vi_VN", "id_ID", "ja_JP", "ko_KR", "zh_CN", "zh_TW", "pt_BR", "eu_ES", "et_EE"}) {
    const TFormat_Settings settings = Settings_From_Locale(locale);
    for (std::int64_t day = Day_From_Date(2023, 12, 28); day < Day_From_Date(2025, 1, 3); day += 3) {
      TDateTime value = -1;
      for (const char* pattern : {"ddddd", "dddddd", "yyyy-mm-dd"}) {
        const std::string text = FormatDateTime(pattern, static_cast<double>(day), settings);
        ASSERT_TRUE(Str2Date(text, value, settings)) << locale << ": " << text;
        ASSERT_EQ(value, static_cast<double>(day)) << locale << ": " << text;
      }
    }
    for (int minute = 0; minute < 1440; minute += 7) {
      const TDateTime moment = Encode_Date(2024, 11, 12) + Encode_Time(minute / 60, minute % 60, 0, 0);
      TDateTime value = -1;
      for (const char* pattern : {"t", "tt", "hh:nn"}) {
        const std::string text = FormatDateTime(pattern, moment, settings);
        ASSERT_TRUE(Str2Time(text, value, settings)) << locale << ": " << text;
        ASSERT_EQ(Msec_Of_Day(value), minute * 60'000) << locale << ": " << text;
      }
      const std::string text = FormatDateTime("ddddd tt", moment, settings);
      ASSERT_TRUE(Str2DateTime(text, value, settings)) << locale << ": " << text;
      ASSERT_EQ(CompareDates(value, moment), 0) << locale << ": " << text;
    }
  }
}

}  // namespace
