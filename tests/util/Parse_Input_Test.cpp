#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

#include "Test_Seams.h"

namespace {

using Parse_Input = TSeams_Test;

// A text as one of the readers understands it, in a form that is the same everywhere; "" when it is refused.
template <class TReader>
std::string Understood(TReader reader, const char* locale, const char* text, const char* form) {
  TDateTime value = 0.125;
  if (reader(text, value, Settings_From_Locale(locale))) return FormatDateTime(form, value);
  EXPECT_EQ(value, 0.125) << text;
  return "";
}

std::string Date_Read(const char* locale, const char* text) {
  return Understood(Str2Date, locale, text, "yyyy\"-\"mm\"-\"dd");
}

std::string Time_Read(const char* locale, const char* text) {
  return Understood(Str2Time, locale, text, "hh\":\"nn\":\"ss");
}

TEST_F(Parse_Input, Dates) {
  const std::pair<const char*, std::vector<const char*>> fifth_of_march[] = {
      {"en_US",
       {"3/5/2024", " 03-05-2024 ", "3.5.24", "3 5 24", "2024-03-05", "2024/3/5", "March 5, 2024", "mar 5 24",
        "5 MARCH 2024", "2024 march 5", "5mar2024", "5mar", "3/5", "tuesday, march 5, 2024", "03052024",
        "030524"}},
      {"de_DE", {"05032024", "5.3.2024", "5.3.", "5.3", "5. märz 2024", "5. MÄRZ", "2024-03-05"}},
      {"C", {"2024-3-5", "24-3-5", "20240305", "5 March 2024"}},
      {"da_DK", {"5/3-2024\r\n"}},
      {"ar_EG", {"٥/٣/٢٠٢٤", "5/3/2024"}},
      {"ja_JP", {"2024年3月5日"}},
      {"tr_TR", {"5 mart 2024"}},
      {"hu_HU", {"2024. 03. 05."}}};
  for (const auto& [locale, texts] : fifth_of_march) {
    for (const char* text : texts) EXPECT_EQ(Date_Read(locale, text), "2024-03-05") << locale << ": " << text;
  }
  EXPECT_EQ(Date_Read("tr_TR", "5 EKİM 2024") + Date_Read("tr_TR", "5 ekim 2024"), "2024-10-052024-10-05");
  EXPECT_EQ(Date_Read("en_US", "1/1/0001"), "0001-01-01");
  for (const char* text :
       {"2/29/2023", "13/1/2024", "0/1/2024",  "1/0/2024",   "1/1/0000",       "1/1/024",    "1/1/20244",
        "5.3.",      "3//5/2024", "-3/5/2024", "3/5/2024 x", "3/5/2024 10:00", "March 2024", "March March 5",
        "Marchy 5",  "March",     "5",         "20240305",   "3052024",        "",           "  ",
        "\xFF\xFE"})
    EXPECT_EQ(Date_Read("en_US", text), "") << text;
  EXPECT_EQ(Date_Read("C", "5.3.2024"), "");
}

TEST_F(Parse_Input, The_Year_Goes_By_The_Clock) {
  EXPECT_EQ(Date_Read("en_US", "1/1/74"), "1974-01-01");
  EXPECT_EQ(Date_Read("en_US", "1/1/73"), "2073-01-01");
  EXPECT_EQ(Date_Read("en_US", "2/29"), "2024-02-29");
  seams.Clock.Value = Encode_Date(1999, 6, 1);
  EXPECT_EQ(Date_Read("en_US", "3/5"), "1999-03-05");
  EXPECT_EQ(Date_Read("en_US", "3/5/48"), "2048-03-05");
  EXPECT_EQ(Date_Read("en_US", "3/5/49"), "1949-03-05");
  EXPECT_EQ(Date_Read("en_US", "2/29"), "");
}

TEST_F(Parse_Input, Times) {
  const char* const cases[][3] = {{"en_US", "9", "09:00:00"},
                                  {"en_US", "9.07", "09:07:00"},
                                  {"en_US", " 21:07:59 ", "21:07:59"},
                                  {"en_US", "9:07PM", "21:07:00"},
                                  {"en_US", "9p", "21:00:00"},
                                  {"en_US", "9 p.m.", "21:00:00"},
                                  {"en_US", "pm 9", "21:00:00"},
                                  {"en_US", "12 am", "00:00:00"},
                                  {"en_US", "12:30 pm", "12:30:00"},
                                  {"en_GB", "930", "09:30:00"},
                                  {"en_GB", "0930", "09:30:00"},
                                  {"en_US", "930 pm", "21:30:00"},
                                  {"en_US", "9:07\u202FPM", "21:07:00"},
                                  {"de_DE", "9:07 pm", "21:07:00"},
                                  {"fi_FI", "9.07", "09:07:00"},
                                  {"fr_CA", "9 h 07", "09:07:00"},
                                  {"ko_KR", "오후 9:07", "21:07:00"},
                                  {"es_MX", "9:07 p.m.", "21:07:00"}};
  for (const auto& [locale, text, expected] : cases)
    EXPECT_EQ(Time_Read(locale, text), expected) << locale << ": " << text;
  for (const char* text : {"24:00", "9:60", "9:07:60", "13 pm", "0 am", "am 9 pm", "9:", ":07", "9:07:03:01",
                           "9:007", "-1:00", "960", "2400", "09300", "pm", ""})
    EXPECT_EQ(Time_Read("en_US", text), "") << text;
}

TEST_F(Parse_Input, Dates_With_Times) {
  const char* const cases[][2] = {{"3/5/2024", "2024-03-05T00:00:00"},
                                  {"3/5/2024 9:07 pm", "2024-03-05T21:07:00"},
                                  {"2024-03-05T21:07:03", "2024-03-05T21:07:03"},
                                  {"August 5 21:07", "2024-08-05T21:07:00"},
                                  {"March 5, 2024 9 PM", "2024-03-05T21:00:00"},
                                  {"21:07", ""},
                                  {"3/5/2024 25:00", ""},
                                  {"3/5/2024T", ""},
                                  {"T21:07", ""}};
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(Understood(Str2DateTime, "en_US", text, "yyyy\"-\"mm\"-\"dd\"T\"hh\":\"nn\":\"ss"), expected)
        << text;
}

TEST_F(Parse_Input, Numbers) {
  std::int64_t whole = 77;
  EXPECT_TRUE(Str2Int(" -9223372036854775808 ", whole));
  EXPECT_EQ(whole, std::numeric_limits<std::int64_t>::min());
  EXPECT_TRUE(Str2Int("+007", whole));
  for (const char* text :
       {"", " ", "-", "+-1", "--1", "1 2", "1.0", "1,000", "0x1", "1e3", "9223372036854775808"})
    EXPECT_FALSE(Str2Int(text, whole)) << text;
  EXPECT_EQ(whole, 7);

  const TFormat_Settings german = Settings_From_Locale("de_DE");
  double number = 0;
  EXPECT_TRUE(Str2Float(" -1234,5 ", number, german));
  EXPECT_EQ(number, -1234.5);
  EXPECT_TRUE(Str2Float(".5", number));
  EXPECT_EQ(number, 0.5);
  EXPECT_TRUE(Str2Float("+5.", number));
  const std::string too_large(400, '9');
  for (const char* text :
       {"", ".", "-", "+-1", "1,5", "1.2.3", "1e3", "inf", "nan", "0x1", "1 2", too_large.c_str()})
    EXPECT_FALSE(Str2Float(text, number)) << text;
  EXPECT_FALSE(Str2Float("1.5", number, german));
  EXPECT_EQ(number, 5.0);
}

// A text near enough to dates and numbers that some such are.
std::string Rubbish(std::mt19937& random) {
  static std::istringstream list(
      "1 2 03 5 12 29 31 99 2024 1899 / - . : , T am PM March febr Mai Dez. März + e \" ' d mm yy h t ddddd "
      "c "
      "am/pm z \u202F İ 年 \xC3 \xFF ß ９ 9999999999 0000");
  static const std::vector<std::string> named{std::istream_iterator<std::string>(list), {}};
  static const std::string blanks[] = {" ", " ", "\n", std::string(1, '\0')};
  std::string text;
  for (std::size_t count = random() % 9; count > 0; --count) {
    const std::size_t piece = random() % (named.size() + 4);
    text += piece < 4 ? blanks[piece] : named[piece - 4];
  }
  return text;
}

TEST_F(Parse_Input, Rubbish_Is_Refused_Or_Means_What_It_Says) {
  const int rounds = 20'000 * (std::getenv("KT_LONG_TESTS") != nullptr ? 50 : 1);
  const TFormat_Settings all_settings[] = {Settings_From_Locale("en_US"), Settings_From_Locale("de_DE"),
                                           Settings_From_Locale("C")};
  std::mt19937 random{20240305};
  int accepted[5] = {};
  for (int round = 0; round < rounds; ++round) {
    const std::string text = Rubbish(random);
    const TFormat_Settings& settings = all_settings[round % 3];
    SCOPED_TRACE(::testing::PrintToString(text));
    TDateTime value = 0, again = 0;
    // What a reader accepts, it reads again from what is written for it.
    const auto read = [&](int number, auto reader, const char* form) {
      if (!reader(text, value, settings)) return;
      ++accepted[number];
      ASSERT_TRUE(reader(FormatDateTime(form, value, settings), again, settings));
      ASSERT_EQ(CompareDates(value, again), 0);
    };
    read(0, Str2Date, "ddddd");
    read(1, Str2Time, "tt");
    read(2, Str2DateTime, "ddddd tt");
    std::int64_t whole = 0, whole_again = 0;
    if (Str2Int(text, whole)) {
      ++accepted[3];
      ASSERT_TRUE(Str2Int(std::to_string(whole), whole_again));
      ASSERT_EQ(whole, whole_again);
    }
    if (Str2Float(text, value, settings)) {
      ++accepted[4];
      char buffer[400];
      const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
      std::string shown(buffer, written.ptr);
      if (const std::size_t dot = shown.find('.'); dot != std::string::npos)
        shown.replace(dot, 1, settings.DecimalSeparator);
      ASSERT_TRUE(Str2Float(shown, again, settings));
      ASSERT_EQ(value, again);
    }
    // A pattern gives the same text whatever is written behind it in an empty quotation.
    if (text.find_first_of("\"'") == std::string::npos) {
      const std::string shown = FormatDateTime(text, 45000.75, settings);
      ASSERT_EQ(FormatDateTime(text + "\"\"", 45000.75, settings), shown);
      ASSERT_EQ(FormatDateTime("'" + text + "'", 45000.75, settings), text);
    } else {
      ASSERT_LT(FormatDateTime(text, 45000.75, settings).size(), 1000U);
    }
  }
  for (const int count : accepted) EXPECT_GT(count, rounds / 1000);
}

}  // namespace
