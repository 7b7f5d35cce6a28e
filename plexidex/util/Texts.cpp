#include <unicode/coll.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "ICU_Texts.h"
#include "Kt_util_01.h"
#include "User_Formats.h"

namespace Kt_util_01 {

namespace {

struct TUser_Locale {
  icu::Locale Locale;
  TFormat_Settings Own, Settings;  // the locale's, and those in use
  std::unique_ptr<icu::Collator> Collator;
};

std::unique_ptr<icu::Collator> Case_Blind_Collator(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
  if (U_FAILURE(status)) throw std::runtime_error("The rules for comparing texts cannot be loaded.");
  collator->setStrength(icu::Collator::SECONDARY);
  // Composed and decomposed letters are equal, and sort keys agree with comparison for both.
  collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
  return collator;
}

TUser_Locale Load_Locale(const std::string& name) {
  TUser_Locale loaded;
  Resolve_Locale(name, loaded.Locale);
  loaded.Own = loaded.Settings = Settings_From_Locale(name);
  loaded.Collator = Case_Blind_Collator(loaded.Locale);
  return loaded;
}

TUser_Locale& User_Locale() {
  static TUser_Locale user_locale = Load_Locale("");
  return user_locale;
}

bool Is_ASCII(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char Upper_ASCII(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

void Append_Code_Point(std::string& out, UChar32 c) {
  char buffer[U8_MAX_LENGTH];
  std::int32_t length = 0;
  U8_APPEND_UNSAFE(buffer, length, c);
  out.append(buffer, static_cast<std::size_t>(length));
}

/// Reads the code point at `position` and moves on; negative for bytes that are not valid UTF-8.
UChar32 Next_Code_Point(std::string_view text, std::size_t& position) {
  UChar32 c = 0;
  U8_NEXT(text.data(), position, text.size(), c);
  return c;
}

bool Is_Valid_UTF8(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    if (Next_Code_Point(text, position) < 0) return false;
  }
  return true;
}

/// 0x80..0x9F of Windows-1252; the five codes it leaves free stand for the control characters of that number.
constexpr char16_t Windows_1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

int Code_Point_Width(UChar32 c) {
  constexpr UChar32 soft_hyphen = 0xAD;
  if (c < 0 || c == soft_hyphen) return 1;
  switch (u_charType(c)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
    case U_CONTROL_CHAR:
      return 0;
    default:
      break;
  }
  // The vowels and final consonants that join a preceding Korean consonant.
  if (c >= 0x1160 && c <= 0x11FF) return 0;
  const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

void Install_Locale(const std::string& locale) {
  User_Locale() = Load_Locale(locale);
}

std::string Locale_Country() {
  return User_Locale().Locale.getCountry();
}

const TFormat_Settings& Locale_Formats() {
  return User_Locale().Own;
}

void Replace_Formats(const TFormat_Settings& settings) {
  User_Locale().Settings = settings;
}

const TFormat_Settings& Format_Settings() {
  return User_Locale().Settings;
}

int CompareText(std::string_view a, std::string_view b) {
  if (a == b) return 0;
  UErrorCode status = U_ZERO_ERROR;
  const UCollationResult result =
      User_Locale().Collator->compareUTF8({a.data(), static_cast<std::int32_t>(a.size())},
                                          {b.data(), static_cast<std::int32_t>(b.size())}, status);
  return result == UCOL_LESS ? -1 : (result == UCOL_GREATER ? 1 : 0);
}

std::string Sort_Key(std::string_view text) {
  const icu::Collator& collator = *User_Locale().Collator;
  const icu::UnicodeString source = To_ICU(text);
  std::string key(text.size() * 2 + 16, '\0');
  const auto write = [&] {
    return static_cast<std::size_t>(collator.getSortKey(source, reinterpret_cast<std::uint8_t*>(key.data()),
                                                        static_cast<std::int32_t>(key.size())));
  };
  std::size_t length = write();
  if (length > key.size()) {
    key.resize(length);
    length = write();
  }
  // Without the terminating zero.
  key.resize(length > 0 ? length - 1 : 0);
  return key;
}

std::string UpperCase(std::string_view text) {
  const icu::Locale& locale = User_Locale().Locale;
  const std::string_view language = locale.getLanguage();
  // Turkish, Azeri and Lithuanian have rules of their own for the letter i.
  if (Is_ASCII(text) && language != "tr" && language != "az" && language != "lt")
    return Simple_UpperCase(text);
  return From_ICU(To_ICU(text).toUpper(locale));
}

std::string Simple_UpperCase(std::string_view text) {
  std::string out(text);
  unsigned bits = 0;
  for (char& c : out) {
    bits |= static_cast<unsigned char>(c);
    c = Upper_ASCII(c);
  }
  if (bits < 0x80) return out;

  out.clear();
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const UChar32 c = Next_Code_Point(text, position);
    const UChar32 upper = c < 0 ? c : u_toupper(c);
    if (upper == c)
      out += text.substr(start, position - start);
    else
      Append_Code_Point(out, upper);
  }
  return out;
}

std::string Valid_UTF8(std::string_view text) {
  if (Is_Valid_UTF8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() * 2);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    Append_Code_Point(out, byte >= 0x80 && byte < 0xA0 ? Windows_1252[byte - 0x80] : byte);
  }
  return out;
}

int Display_Width(std::string_view text) {
  int width = 0;
  for (std::size_t position = 0; position < text.size();)
    width += Code_Point_Width(Next_Code_Point(text, position));
  return width;
}

}  // namespace Kt_util_01
