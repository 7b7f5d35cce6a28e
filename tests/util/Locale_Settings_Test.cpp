#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "Test_Seams.h"

namespace {

using namespace Kt_util_01;

const TDateTime Moment = Encode_Date(2024, 3, 5) + Encode_Time(21, 7, 3, 0);

std::string Shown(const std::string& locale) {
  return FormatDateTime("ddddd|dddddd|t|tt", Moment, Settings_From_Locale(locale));
}

TEST(Locale_Settings, Dates_And_Times_As_The_Country_Writes_Them) {
  const char* const cases[][2] = {
      {"en_US", "3/5/2024|Tuesday, March 5, 2024|9:07 PM|9:07:03 PM"},
      {"en_US.UTF-8", "3/5/2024|Tuesday, March 5, 2024|9:07 PM|9:07:03 PM"},
      {"en_GB", "05/03/2024|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"de_DE", "05.03.2024|Dienstag, 5. März 2024|21:07|21:07:03"},
      {"de_DE.UTF-8@euro", "05.03.2024|Dienstag, 5. März 2024|21:07|21:07:03"},
      {"es_ES", "5/3/2024|martes, 5 de marzo de 2024|21:07|21:07:03"},
      {"fi_FI", "5.3.2024|tiistaina 5. maaliskuuta 2024|21.07|21.07.03"},
      {"fr_CA", "2024-03-05|mardi 5 mars 2024|21 h 07|21 h 07 min 03 s"},
      {"ja_JP", "2024/03/05|2024年3月5日火曜日|21:07|21:07:03"},
      {"ko_KR", "2024. 3. 5.|2024년 3월 5일 화요일|오후 9:07|오후 9:07:03"},
      {"C", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"C.UTF-8", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"POSIX", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"xx_YY", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
      {"../../etc", "2024-03-05|Tuesday, 5 March 2024|21:07|21:07:03"},
  };
  for (const auto& test : cases) EXPECT_EQ(Shown(test[0]), test[1]) << test[0];
}

TEST(Locale_Settings, Names_Separators_And_The_First_Day) {
  const TFormat_Settings german = Settings_From_Locale("de_AT");
  EXPECT_EQ(german.LongMonthNames[0], "Jänner");
  EXPECT_EQ(german.LongDayNames[0], "Sonntag");
  EXPECT_EQ(german.DateSeparator, ".");
  EXPECT_EQ(german.DecimalSeparator, ",");
  EXPECT_EQ(german.FirstDayOfWeek, 2);
  const TFormat_Settings american = Settings_From_Locale("en_US");
  EXPECT_EQ(american.LongDayNames[6], "Saturday");
  EXPECT_EQ(american.FirstDayOfWeek, 1);
  EXPECT_EQ(american.TimeAMString + american.TimePMString, "AMPM");
  const TFormat_Settings arabic = Settings_From_Locale("ar_EG");
  EXPECT_EQ(arabic.FirstDayOfWeek, 7);
  EXPECT_EQ(FormatDateTime("ddddd", Moment, arabic), "5/3/2024");
  EXPECT_EQ(FormatDateTime("yyyy", Moment, Settings_From_Locale("th_TH")), "2024");
  EXPECT_EQ(FormatDateTime("ddddd", Moment, Settings_From_Locale("sr_RS@latin")), "5.3.2024.");
}

class Environment_Locale : public ::testing::Test {
 protected:
  static constexpr const char* Variables[] = {"LC_ALL", "LC_TIME", "LANG"};

  Environment_Locale() {
    for (std::size_t i = 0; i < std::size(Variables); ++i) {
      if (const char* value = std::getenv(Variables[i])) m_Before[i] = value;
      unsetenv(Variables[i]);
    }
  }
  ~Environment_Locale() override {
    for (std::size_t i = 0; i < std::size(Variables); ++i) {
      if (m_Before[i])
        setenv(Variables[i], m_Before[i]->c_str(), 1);
      else
        unsetenv(Variables[i]);
    }
  }

  std::optional<std::string> m_Before[std::size(Variables)];
};

TEST_F(Environment_Locale, The_First_Variable_That_Says_Something_Counts) {
  EXPECT_EQ(Settings_From_Locale("").ShortDateFormat, "yyyy-MM-dd");
  setenv("LANG", "de_DE.UTF-8", 1);
  EXPECT_EQ(Shown(""), Shown("de_DE"));
  setenv("LC_TIME", "en_GB.UTF-8", 1);
  EXPECT_EQ(Shown(""), Shown("en_GB"));
  setenv("LC_ALL", "", 1);
  EXPECT_EQ(Shown(""), Shown("en_GB"));
  setenv("LC_ALL", "C", 1);
  EXPECT_EQ(Shown(""), Shown("C"));
}

TEST(Locale_Settings, What_Is_Written_Is_Read_Back) {
  const Kt_test::TTest_Seams seams;
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
