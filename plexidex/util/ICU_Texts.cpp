#include "ICU_Texts.h"

#include <unicode/uchar.h>

namespace Kt_util_01 {

namespace {

bool Is_Direction_Mark(char16_t c) {
  return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069);
}

bool Is_Special_Blank(char16_t c) {
  return c == 0x00A0 || c == 0x2009 || c == 0x202F;
}

}  // namespace

icu::UnicodeString To_ICU(std::string_view text) {
  return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string From_ICU(const icu::UnicodeString& text) {
  std::string utf8;
  return text.toUTF8String(utf8);
}

std::string Plain_Text(const icu::UnicodeString& text) {
  icu::UnicodeString plain;
  for (std::int32_t i = 0; i < text.length(); ++i) {
    const char16_t c = text[i];
    if (Is_Direction_Mark(c)) continue;
    const std::int32_t digit = u_charDigitValue(c);
    plain += Is_Special_Blank(c) ? u' ' : digit >= 0 ? static_cast<char16_t>(u'0' + digit) : c;
  }
  return From_ICU(plain);
}

}  // namespace Kt_util_01
