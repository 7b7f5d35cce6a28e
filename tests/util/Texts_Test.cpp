#include <algorithm>
#include <filesystem>
#include <iterator>
#include <random>
#include <sstream>

#include "Test_Seams.h"

namespace {

using Texts = TSeams_Test;

std::size_t Code_Points(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

TEST_F(Texts, Comparison_Is_Blind_To_Case_Only) {
  EXPECT_EQ(CompareText("Müller", "MÜLLER"), 0);
  EXPECT_EQ(CompareText("caf\u00E9", "Cafe\u0301"), 0);
  EXPECT_EQ(CompareText("a\u0301\u0323", "A\u0323\u0301"), 0);
  EXPECT_EQ(CompareText("resume", "résumé"), -1);
  EXPECT_EQ(CompareText("b", "A"), 1);
  EXPECT_EQ(CompareText("", "a"), -1);
  EXPECT_EQ(CompareText("", ""), 0);
  // Where a letter belongs depends on the user's language.
  EXPECT_EQ(CompareText("ö", "z"), -1);
  Install_Locale("sv_SE");
  EXPECT_EQ(CompareText("ö", "z"), 1);
}

TEST_F(Texts, Sort_Keys_Order_As_Comparison_Does) {
  std::istringstream list("a A ä a\u0308 ß ss z Z - 1 10 é ı İ ж Ж 日 𝄞 \u0301 \xC3 \xFF");
  std::vector<std::string> pieces{std::istream_iterator<std::string>(list), {}};
  pieces.insert(pieces.end(), {" ", std::string(1, '\0')});
  std::mt19937 random{7};
  for (const char* locale : {"en_US", "de_DE", "sv_SE", "tr_TR", "C"}) {
    Install_Locale(locale);
    std::vector<std::string> texts;
    for (int i = 0; i < 150; ++i) {
      std::string text;
      for (auto count = random() % 6; count > 0; --count) text += pieces[random() % pieces.size()];
      texts.push_back(text);
    }
    texts.push_back(std::string(3000, 'x'));
    for (const std::string& a : texts) {
      const std::string key = Sort_Key(a);
      for (const std::string& b : texts) {
        const int by_key = key.compare(Sort_Key(b));
        ASSERT_EQ(CompareText(a, b), CompareInteger(by_key, 0))
            << locale << ::testing::PrintToString(a) << ::testing::PrintToString(b);
      }
    }
  }
}

TEST_F(Texts, Upper_Case) {
  EXPECT_EQ(UpperCase("straße, ﬁn"), "STRASSE, FIN");
  EXPECT_EQ(Simple_UpperCase("straße, é ﬁn"), "STRAßE, É ﬁN");
  EXPECT_EQ(Simple_UpperCase("a\xFFz\xC3"), "A\xFFZ\xC3");
  EXPECT_EQ(UpperCase("title"), "TITLE");
  Install_Locale("tr_TR");
  EXPECT_EQ(UpperCase("title"), "TİTLE");
}

TEST_F(Texts, Simple_Upper_Case_Keeps_Every_Code_Point_One) {
  for (char32_t c = 1; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    const std::string upper = Simple_UpperCase(std::filesystem::path(std::u32string(1, c)).string());
    ASSERT_EQ(Code_Points(upper), 1U) << upper;
    ASSERT_EQ(Simple_UpperCase(upper), upper) << upper;
  }
}

TEST_F(Texts, Bytes_That_Are_No_UTF8_Are_Windows_1252) {
  EXPECT_EQ(Valid_UTF8("Grüße €"), "Grüße €");
  EXPECT_EQ(Valid_UTF8("Gr\xFC\xDF"
                       "e \x80 \x85"),
            "Grüße € …");
  // One wrong byte makes the whole text Windows-1252.
  EXPECT_EQ(Valid_UTF8("ü\xFF"), "Ã¼ÿ");
  // Surrogates, overlong forms and numbers beyond the last are not UTF-8.
  for (const char* text : {"\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80", "\xE2\x82", "\x81"}) {
    EXPECT_NE(Valid_UTF8(text), text);
    EXPECT_EQ(Code_Points(Valid_UTF8(text)), std::string(text).size());
  }
}

TEST_F(Texts, Columns_On_A_Terminal) {
  const std::pair<const char*, int> cases[] = {{"", 0},     {"Grüße", 5}, {"e\u0301a", 2},
                                               {"日本", 4}, {"ＡＢ", 4},  {"a\u200Db", 2}};
  for (const auto& [text, width] : cases) EXPECT_EQ(Display_Width(text), width) << text;
}

}  // namespace
