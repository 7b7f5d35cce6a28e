#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "Kt_find.h"
#include "Kt_util_01.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Kt_util_01 {

namespace {

constexpr bool Is_ASCII(unsigned char byte) {
  return byte < 0x80;
}

constexpr bool Continues(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// All characters that become this one in upper case, itself the first.
std::vector<UChar32> Variants_Of(UChar32 upper) {
  using TPair = std::pair<UChar32, UChar32>;
  static const std::vector<TPair> lower_cases = [] {
    constexpr UChar32 behind_all_letters_with_case = 0x20000;
    std::vector<TPair> pairs;
    for (UChar32 c = 0; c < behind_all_letters_with_case; ++c) {
      if (const UChar32 its_upper = u_toupper(c); its_upper != c) pairs.emplace_back(its_upper, c);
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
  }();
  std::vector<UChar32> variants{upper};
  for (auto at = std::lower_bound(lower_cases.begin(), lower_cases.end(), TPair(upper, 0));
       at != lower_cases.end() && at->first == upper; ++at)
    variants.push_back(at->second);
  return variants;
}

std::string Encoded(UChar32 c) {
  char buffer[U8_MAX_LENGTH];
  std::int32_t length = 0;
  U8_APPEND_UNSAFE(buffer, length, c);
  return std::string(buffer, static_cast<std::size_t>(length));
}

// How often a byte occurs in texts, roughly, in a thousandth.
double Frequency(unsigned char byte) {
  constexpr std::string_view by_frequency = " etaoinsrhldcumfgpwybvkxjqz";
  constexpr double most = 120, least = 0.3, capital = 0.05;
  if (!Is_ASCII(byte)) return Continues(static_cast<char>(byte)) ? 0.5 : 1;
  if (byte >= '0' && byte <= '9') return 4;
  const bool is_capital = byte >= 'A' && byte <= 'Z';
  const std::size_t place = by_frequency.find(static_cast<char>(is_capital ? byte | 0x20 : byte));
  if (place == std::string_view::npos) return 2;
  const double share = most / static_cast<double>(1 + place);
  return std::max(least, is_capital ? share * capital : share);
}

// Bytes of which some bits are given, in two ways: one for the bytes of a set that are ASCII, one for others.
struct TByte_Filter {
  std::array<unsigned char, 2> Mask{}, Value{};  // lets everything through

  TByte_Filter() = default;
  explicit TByte_Filter(const std::string& bytes) {
    std::array<bool, 2> used{};
    for (const char c : bytes) {
      const auto byte = static_cast<unsigned char>(c);
      const std::size_t way = Is_ASCII(byte) ? 0 : 1;
      if (!used[way]) {
        Mask[way] = 0xFF;
        Value[way] = byte;
        used[way] = true;
      }
      Mask[way] &= static_cast<unsigned char>(~(Value[way] ^ byte));
      Value[way] &= Mask[way];
    }
    for (const std::size_t way : {0, 1}) {
      if (used[way]) continue;
      Mask[way] = Mask[1 - way];
      Value[way] = Value[1 - way];
    }
  }

  bool Lets_Through(char c) const {
    const auto byte = static_cast<unsigned char>(c);
    return (byte & Mask[0]) == Value[0] || (byte & Mask[1]) == Value[1];
  }
  double Share() const {
    double share = 0;
    for (int byte = 0; byte < 256; ++byte) {
      if (Lets_Through(static_cast<char>(byte))) share += Frequency(static_cast<unsigned char>(byte));
    }
    return share;
  }
  bool Has_One_Way() const { return Mask[0] == Mask[1] && Value[0] == Value[1]; }
};

#if defined(__SSE2__)
// The same for sixteen bytes at a time, in one way or both.
template <bool Both_Ways>
struct TWide_Filter {
  const __m128i Mask, Value, Other_Mask, Other_Value;

  explicit TWide_Filter(const TByte_Filter& filter)
      : Mask(_mm_set1_epi8(static_cast<char>(filter.Mask[0]))),
        Value(_mm_set1_epi8(static_cast<char>(filter.Value[0]))),
        Other_Mask(_mm_set1_epi8(static_cast<char>(filter.Mask[1]))),
        Other_Value(_mm_set1_epi8(static_cast<char>(filter.Value[1]))) {}

  __m128i Lets_Through(const char* at) const {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i one = _mm_cmpeq_epi8(_mm_and_si128(bytes, Mask), Value);
    if constexpr (!Both_Ways) return one;
    return _mm_or_si128(one, _mm_cmpeq_epi8(_mm_and_si128(bytes, Other_Mask), Other_Value));
  }
};
#endif

// Two bytes of a text, one behind the other, by which places are chosen to be looked at closer.
struct TAnchor {
  TByte_Filter First, Second;
  std::size_t Split = 0;   // the character of the text that begins ...
  std::size_t Offset = 0;  // ... so many bytes behind the first of the two
};

}  // namespace

std::size_t Count_Characters(std::string_view text) {
  std::size_t continuing = 0, at = 0;
#if defined(__SSE2__)
  // A byte that continues a character is below -64 when it has a sign, as none else. Each sum of a lane fits
  // into a byte for 255 steps.
  constexpr std::size_t step = 16, steps = 255;
  const __m128i limit = _mm_set1_epi8(-64);
  while (at + step <= text.size()) {
    __m128i lanes = _mm_setzero_si128();
    for (std::size_t i = 0; i < steps && at + step <= text.size(); ++i, at += step)
      lanes = _mm_sub_epi8(
          lanes, _mm_cmplt_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at)), limit));
    const __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
    continuing += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                  static_cast<std::size_t>(_mm_extract_epi16(sums, 4));
  }
#endif
  for (; at < text.size(); ++at) continuing += Continues(text[at]) ? 1 : 0;
  return text.size() - continuing;
}

std::string_view First_Characters(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    if (!Continues(text[at]) && count-- == 0) break;
  }
  return text.substr(0, at);
}

class TText_Finder::TImpl {
 public:
  TImpl(std::string_view given, bool match_case, bool whole_word)
      : text(Valid_UTF8(given)), whole_word(whole_word) {
    if (!match_case) text = Simple_UpperCase(text);
    std::vector<std::string> first_bytes, second_bytes, last_bytes;  // of each character's variants
    std::int32_t at = 0;
    while (at < static_cast<std::int32_t>(text.size())) {
      UChar32 c = 0;
      U8_NEXT(text.data(), at, static_cast<std::int32_t>(text.size()), c);
      characters.push_back(c);
      for (std::vector<std::string>* bytes : {&first_bytes, &second_bytes, &last_bytes})
        bytes->emplace_back();
      const std::vector<UChar32> variants = match_case ? std::vector<UChar32>{c} : Variants_Of(c);
      if (variants.size() > 1) exact = false;
      for (const UChar32 variant : variants) {
        const std::string bytes = Encoded(variant);
        first_bytes.back() += bytes.front();
        last_bytes.back() += bytes.back();
        if (bytes.size() > 1) second_bytes.back() += bytes[1];
      }
    }
    double best = 0;
    const auto consider = [&](const TAnchor& found) {
      const double share = found.First.Share() * found.Second.Share();
      if (best > 0 && share >= best) return;
      best = share;
      anchor = found;
    };
    for (std::size_t i = 0; i < characters.size(); ++i) {
      const TByte_Filter first(first_bytes[i]);
      const bool has_second = second_bytes[i].size() == first_bytes[i].size();
      consider({first, has_second ? TByte_Filter(second_bytes[i]) : TByte_Filter(), i, 0});
      if (i > 0) consider({TByte_Filter(last_bytes[i - 1]), first, i, 1});
    }
    std::int32_t before = 0;
    U8_FWD_N(text.data(), before, static_cast<std::int32_t>(text.size()),
             static_cast<std::int32_t>(anchor.Split));
    bytes_before = static_cast<std::size_t>(before);
  }

  std::optional<TMatch> Find(std::string_view in, std::size_t from) const {
    if (text.empty() || from >= in.size()) return {};
    std::size_t at = from;
    TMatch match{};
#if defined(__SSE2__)
    const bool one_way = anchor.First.Has_One_Way() && anchor.Second.Has_One_Way();
    if (one_way ? Find_Wide<false>(in, from, at, match) : Find_Wide<true>(in, from, at, match)) return match;
#endif
    for (; at < in.size(); ++at) {
      const char next = at + 1 < in.size() ? in[at + 1] : '\0';
      if (anchor.First.Lets_Through(in[at]) && anchor.Second.Lets_Through(next) && Is_At(in, from, at, match))
        return match;
    }
    return {};
  }

 private:
#if defined(__SSE2__)
  // As far as there are whole steps; `at` is where the search must go on.
  template <bool Both_Ways>
  bool Find_Wide(std::string_view in, std::size_t from, std::size_t& at, TMatch& match) const {
    constexpr std::size_t step = 16;
    const TWide_Filter<Both_Ways> first(anchor.First), second(anchor.Second);
    // The last step begins where it just ends with the text, and passes over what has been looked at.
    while (at + 1 < in.size() && in.size() - from > step) {
      const std::size_t begin = std::min(at, in.size() - step - 1);
      const char* bytes = in.data() + begin;
      auto places = static_cast<unsigned>(
          _mm_movemask_epi8(_mm_and_si128(first.Lets_Through(bytes), second.Lets_Through(bytes + 1))));
      for (places &= ~0U << (at - begin); places != 0; places &= places - 1) {
        if (Is_At(in, from, begin + static_cast<std::size_t>(std::countr_zero(places)), match)) return true;
      }
      at = begin + step;
    }
    return false;
  }
#endif

  // Whether the text is where its anchor is.
  bool Is_At(std::string_view in, std::size_t from, std::size_t place, TMatch& match) const {
    const std::size_t split = place + anchor.Offset;
    return (exact ? Is_Same(in, split, match) : Is_Same_In_Upper_Case(in, split, match)) &&
           match.Begin >= from && (!whole_word || Is_Word(in, from, match));
  }

  bool Is_Same(std::string_view in, std::size_t split, TMatch& match) const {
    if (split < bytes_before) return false;
    match.Begin = split - bytes_before;
    match.End = match.Begin + text.size();
    return match.End <= in.size() && std::memcmp(in.data() + match.Begin, text.data(), text.size()) == 0;
  }

  bool Is_Same_In_Upper_Case(std::string_view in, std::size_t split, TMatch& match) const {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(in.data());
    match.End = match.Begin = split;
    for (std::size_t i = anchor.Split; i < characters.size(); ++i) {
      if (match.End >= in.size()) return false;
      UChar32 c = 0;
      U8_NEXT(bytes, match.End, in.size(), c);
      if (Upper(c) != characters[i]) return false;
    }
    for (std::size_t i = anchor.Split; i > 0; --i) {
      if (match.Begin == 0) return false;
      const auto window = static_cast<std::int32_t>(std::min<std::size_t>(match.Begin, U8_MAX_LENGTH));
      match.Begin -= static_cast<std::size_t>(window);
      std::int32_t place = window;
      UChar32 c = 0;
      U8_PREV(bytes + match.Begin, 0, place, c);
      if (Upper(c) != characters[i - 1]) return false;
      match.Begin += static_cast<std::size_t>(place);
    }
    return true;
  }

  static UChar32 Upper(UChar32 c) {
    if (c >= 'a' && c <= 'z') return c - ('a' - 'A');
    return c < 0x80 ? c : u_toupper(c);
  }

  static bool Is_Word(std::string_view in, std::size_t from, const TMatch& match) {
    if (match.End < in.size() && !Is_Word_Delimiter(in[match.End])) return false;
    if (match.Begin == from) return true;
    std::size_t before = match.Begin - 1;
    if (!Is_Word_Delimiter(in[before]) || Is_Word_Delimiter(in[match.Begin])) return false;
    while (before > from && Continues(in[before])) --before;
    return before > from;
  }

  std::string text;  // in upper case unless case counts
  const bool whole_word;
  bool exact = true;  // no character has variants
  std::vector<UChar32> characters;
  TAnchor anchor;
  std::size_t bytes_before = 0;  // the anchor's split
};

TText_Finder::TText_Finder(std::string_view text, bool match_case, bool whole_word)
    : impl(std::make_unique<const TImpl>(text, match_case, whole_word)) {}
TText_Finder::~TText_Finder() = default;
TText_Finder::TText_Finder(TText_Finder&&) noexcept = default;
TText_Finder& TText_Finder::operator=(TText_Finder&&) noexcept = default;

std::optional<TText_Finder::TMatch> TText_Finder::Find(std::string_view in, std::size_t from) const {
  return impl->Find(in, from);
}

}  // namespace Kt_util_01
