#pragma once

// How what a user types is taken apart.

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "ICU_Texts.h"
#include "Kt_util_01.h"

namespace Kt_util_01 {

inline std::string_view Trimmed(std::string_view text) {
  // What is pasted often brings the end of its line along.
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

inline bool Is_Digit(char c) {
  return c >= '0' && c <= '9';
}

/// Made comparable whatever the case, code point by code point.
inline std::string Fold(std::string_view text) {
  const bool is_ASCII =
      std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (is_ASCII) return Simple_UpperCase(Trimmed(text));
  icu::UnicodeString source = To_ICU(text);
  // The Turkish capital of i has no small letter of one code point that would fold to the same.
  source.findAndReplace(icu::UnicodeString(u'\u0130'), icu::UnicodeString(u'I'));
  return std::string(Trimmed(Simple_UpperCase(Plain_Text(source))));
}

/// A folded text that is taken from the front piece by piece.
class TReader {
 public:
  explicit TReader(std::string_view folded) : rest(folded) {}

  bool At_End() const { return rest.empty(); }
  bool At_Digit() const { return !rest.empty() && Is_Digit(rest[0]); }
  std::string_view Rest() const { return rest; }

  /// Whether there were any.
  bool Skip_Blanks() {
    const std::size_t before = rest.size();
    while (!rest.empty() && (rest[0] == ' ' || rest[0] == '\t')) rest.remove_prefix(1);
    return rest.size() != before;
  }

  bool Take(std::string_view folded) {
    if (folded.empty() || !rest.starts_with(folded)) return false;
    rest.remove_prefix(folded.size());
    return true;
  }

  bool Take_One_Of(std::string_view characters) {
    if (rest.empty() || characters.find(rest[0]) == std::string_view::npos) return false;
    rest.remove_prefix(1);
    return true;
  }

  /// Takes all digits that follow; false, and nothing taken, when there is none or more than `most`.
  bool Take_Number(int most, int& value, int& digits) {
    int length = 0;
    int number = 0;
    while (static_cast<std::size_t>(length) < rest.size() &&
           Is_Digit(rest[static_cast<std::size_t>(length)])) {
      if (length == most) return false;
      number = number * 10 + (rest[static_cast<std::size_t>(length++)] - '0');
    }
    if (length == 0) return false;
    rest.remove_prefix(static_cast<std::size_t>(length));
    value = number;
    digits = length;
    return true;
  }

  /// Takes the longest of the names that follows, also without its dot; its number from 1, or 0.
  template <std::size_t Size>
  int Take_Name(const std::array<std::string, Size>& long_names,
                const std::array<std::string, Size>& short_names) {
    std::size_t longest = 0;
    int found = 0;
    for (const auto* names : {&long_names, &short_names}) {
      for (std::size_t i = 0; i < Size; ++i) {
        const std::string folded = Fold((*names)[i]);
        std::string_view name = folded;
        if (!rest.starts_with(name) && name.ends_with('.')) name.remove_suffix(1);
        if (name.size() > longest && rest.starts_with(name)) {
          longest = name.size();
          found = static_cast<int>(i) + 1;
        }
      }
    }
    rest.remove_prefix(longest);
    return found;
  }

 private:
  std::string_view rest;
};

}  // namespace Kt_util_01
