#include "Search_Buffer.h"

#include <cstdlib>
#include <random>

#include "Test_Seams.h"

using namespace KTReminds;

namespace {

using TCharacters = std::vector<std::string>;

std::string Joined(const TCharacters& characters) {
  std::string text;
  for (const std::string& each : characters) text += each;
  return text;
}

// The search as it is laid down, over characters with a zero behind and before them.
std::optional<std::size_t> Naive(TCharacters buffer, int sel_start, int sel_length, TCharacters text,
                                 TFind_Options options) {
  const TCharacters untranslated = buffer;
  if (!options.Match_Case) {
    for (TCharacters* each : {&buffer, &text})
      for (std::string& c : *each) c = Simple_UpperCase(c);
  }
  const int length = static_cast<int>(buffer.size()), wanted = static_cast<int>(text.size());
  const auto at = [&](const TCharacters& of, int place) {
    return place < 0 || place >= length ? std::string(1, '\0') : of[static_cast<std::size_t>(place)];
  };
  const auto delimits = [&](int place) {
    const std::string c = at(untranslated, place);
    return c.size() > 1 || !std::isalnum(static_cast<unsigned char>(c[0]));
  };
  if (length == 0) return {};
  int position = options.Down ? sel_start + sel_length : sel_start - wanted;
  int count = options.Down ? length - (sel_start + sel_length) - wanted + 1 : position + 1;
  if (count < 0 || position < 0 || position > length) return {};
  const int direction = options.Down ? 1 : -1;
  bool first = true;
  while (count >= 0) {
    if (!first && options.Whole_Word) {
      if (options.Down) {
        while (count >= 0 && !delimits(position)) ++position, --count;
        while (count >= 0 && delimits(position)) ++position, --count;
      } else {
        while (count >= 0 && delimits(position)) --position, --count;
        while (count >= 0 && !delimits(position)) --position, --count;
        if (delimits(position)) ++position, ++count;
      }
      if (count < 0) return {};
    }
    first = false;
    bool same = true;
    for (int i = 0; i < wanted; ++i)
      same = same && at(buffer, position + i) == text[static_cast<std::size_t>(i)];
    if (same && (!options.Whole_Word || count == 0 || delimits(position + wanted))) {
      if (position < 0) return {};
      return static_cast<std::size_t>(position);
    }
    position += direction;
    --count;
  }
  return {};
}

struct Search_Buffer : TSeams_Test {};

TEST_F(Search_Buffer, Finds_What_The_Steps_Find) {
  // Letters of one case, of several lengths, and with several small ones; what is thought behind the buffer.
  const TCharacters alphabet = {"a", "A", "b", "s", "S", "i", " ", " ", "-", "7",
                                "ä", "Ä", "ſ", "ı", "µ", "μ", "ɐ", "Ɐ", "😀", std::string(1, '\0')};
  std::mt19937 random(7);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
  const auto make = [&](std::size_t length, std::size_t letters) {
    TCharacters made(length);
    for (std::string& each : made) each = alphabet[below(letters)];
    return made;
  };
  const int rounds = std::getenv("KT_LONG_TESTS") ? 500'000 : 6'000;
  int found = 0;
  for (int round = 0; round < rounds; ++round) {
    const std::size_t letters = 2 + below(alphabet.size() - 1), length = below(60);
    const TCharacters buffer = make(length, letters);
    TCharacters text = make(below(4), letters);
    if (length > 4 && below(2)) {
      const auto at = buffer.begin() + static_cast<std::ptrdiff_t>(below(length - 3));
      text.assign(at, at + static_cast<std::ptrdiff_t>(1 + below(3)));
    }
    const TFind_Options options{below(4) != 0, below(2) == 0, below(2) == 0};
    const std::size_t start = below(3) ? 0 : below(length + 2), selected = below(3) ? 0 : below(5);
    const auto expected = Naive(buffer, static_cast<int>(start), static_cast<int>(selected), text, options);
    ASSERT_EQ(SearchBuf(Joined(buffer), start, selected, Joined(text), options), expected)
        << "\"" << Joined(text) << "\" in \"" << Joined(buffer) << "\" from " << start << "+" << selected
        << (options.Down ? "" : " up") << (options.Match_Case ? " case" : "")
        << (options.Whole_Word ? " word" : "");
    found += expected ? 1 : 0;
  }
  EXPECT_GT(found, rounds / 6);
}

TEST_F(Search_Buffer, Words_Ends_And_Beginnings) {
  EXPECT_TRUE(SearchPChar("a-b", "a", true, true));
  EXPECT_FALSE(SearchPChar("abc", "AB", false, true));
  EXPECT_FALSE(SearchPChar("", "a", false, false));
  EXPECT_TRUE(SearchPChar("naïve", "NA", false, true)) << "accents are no letters of a word";
  EXPECT_FALSE(SearchPChar(" b c", "b", false, true)) << "the first character begins no word behind it";
  std::string longest;
  for (int i = 0; i < 254; ++i) longest += "ä";
  EXPECT_TRUE(SearchString(longest + "x", "X", false, false));
  EXPECT_FALSE(SearchString(longest + "äx", "X", false, false));
  EXPECT_FALSE(SearchString(longest + "xy", "xy", false, false)) << "cut by the end";
  EXPECT_TRUE(SearchStartingString("john", "JO", false));
  EXPECT_FALSE(SearchStartingString("john", "JO", true));
  EXPECT_FALSE(SearchStartingString("jo", "john", false));
  EXPECT_FALSE(SearchStartingString("ajohn", "john", false));
}

struct TEdit_Text : TEdit_Control {
  std::string_view Text() override { return "Zoë and zoë"; }
  std::size_t Selection_Start() override { return Start; }
  std::size_t Selection_Length() override { return Length; }
  void Set_Selection(std::size_t start, std::size_t length) override {
    Start = start;
    Length = length;
  }
  std::size_t Start = 0, Length = 0;
};

TEST_F(Search_Buffer, A_Control_Selects_One_Match_After_The_Other) {
  TEdit_Text control;
  EXPECT_TRUE(SearchMemo(control, "zoë", {}));
  EXPECT_EQ(control.Start + 10 * control.Length, 30U);
  EXPECT_TRUE(SearchMemo(control, "zoë", {}));
  EXPECT_EQ(control.Start + 10 * control.Length, 38U);
  EXPECT_FALSE(SearchMemo(control, "zoë", {}));
  EXPECT_FALSE(SearchMemo(control, "", {}));
  EXPECT_TRUE(SearchMemo(control, "ZOË", {.Down = false}));
  EXPECT_EQ(control.Start, 0U);
}

}  // namespace
