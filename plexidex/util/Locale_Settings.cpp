#include <unicode/calendar.h>
#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "ICU_Texts.h"
#include "Kt_util_01.h"

namespace Kt_util_01 {

namespace {

/// The first of the variables that says something, in the order in which the C library heeds them.
std::string Environment_Locale() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return "C";
}

// By names alone: ICU's list of all locales as objects takes a noticeable part of the program's start.
bool Is_Known_Language(std::string_view language) {
  for (std::int32_t i = uloc_countAvailable() - 1; i >= 0; --i) {
    const std::string_view name = uloc_getAvailable(i);
    if (name.starts_with(language) && (name.size() == language.size() || name[language.size()] == '_'))
      return true;
  }
  return false;
}

struct TPattern_Part {
  char Letter;  // 0 for a literal
  int Count;
  std::string Literal;
};

bool Is_Letter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

/// Takes an ICU pattern apart: letters are fields, quotes protect letters, two quotes are one.
std::vector<TPattern_Part> Split_Pattern(const icu::UnicodeString& pattern) {
  std::vector<TPattern_Part> parts;
  icu::UnicodeString literal;
  const auto end_literal = [&] {
    if (!literal.isEmpty()) parts.push_back({'\0', 0, Plain_Text(literal)});
    literal.remove();
  };
  bool quoted = false;
  for (std::int32_t i = 0; i < pattern.length(); ++i) {
    const char16_t c = pattern[i];
    if (c == u'\'') {
      if (i + 1 < pattern.length() && pattern[i + 1] == u'\'') {
        literal += c;
        ++i;
      } else {
        quoted = !quoted;
      }
    } else if (!quoted && Is_Letter(c)) {
      end_literal();
      if (!parts.empty() && parts.back().Letter == static_cast<char>(c))
        ++parts.back().Count;
      else
        parts.push_back({static_cast<char>(c), 1, {}});
    } else {
      literal += c;
    }
  }
  end_literal();
  return parts;
}

std::string Field_For(const TPattern_Part& part) {
  const auto letters = [&part](char letter, int most) {
    return std::string(static_cast<std::size_t>(std::min(part.Count, most)), letter);
  };
  switch (part.Letter) {
    // Two digits are not enough to read a date back.
    case 'y':
    case 'u':
      return "yyyy";
    case 'M':
    case 'L':
      return part.Count > 4 ? "mmm" : letters('m', 4);
    case 'd':
      return letters('d', 2);
    case 'E':
    case 'c':
      return part.Count == 4 ? "dddd" : "ddd";
    case 'h':
    case 'H':
    case 'K':
    case 'k':
      return letters('h', 2);
    case 'm':
      return letters('n', 2);
    case 's':
      return letters('s', 2);
    case 'a':
    case 'b':
    case 'B':
      return "ampm";
    default:
      return "";
  }
}

std::string Quoted(const std::string& literal) {
  const bool plain = std::all_of(literal.begin(), literal.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0x80 || c == ' ' || c == '.' || c == ',' || c == '-';
  });
  if (plain) return literal;
  const char quote = literal.find('"') == std::string::npos ? '"' : '\'';
  return quote + literal + quote;
}

bool Is_Number(const TPattern_Part& part) {
  return part.Letter != '\0' && std::string_view("yuMLdhHKkms").find(part.Letter) != std::string_view::npos;
}

/// The text between the first two numbers; empty when there is none.
std::string Find_Separator(const std::vector<TPattern_Part>& parts) {
  for (std::size_t i = 1; i + 1 < parts.size(); ++i) {
    if (parts[i].Letter == '\0' && Is_Number(parts[i - 1]) && Is_Number(parts[i + 1]))
      return parts[i].Literal;
  }
  return "";
}

/// Turns an ICU pattern into one of FormatDateTime. Text equal to `separator` becomes `separator_mark`; an
/// empty `separator` is first found in the pattern.
std::string Convert_Pattern(const icu::UnicodeString& icu_pattern, char separator_mark,
                            std::string& separator) {
  const std::vector<TPattern_Part> parts = Split_Pattern(icu_pattern);
  if (separator.empty()) separator = Find_Separator(parts);
  std::string pattern;
  for (const TPattern_Part& part : parts) {
    if (part.Letter != '\0')
      pattern += Field_For(part);
    else if (part.Literal == separator)
      pattern += separator_mark;
    else
      pattern += Quoted(part.Literal);
  }
  const std::size_t first = pattern.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return pattern.substr(first, pattern.find_last_not_of(' ') - first + 1);
}

icu::UnicodeString ICU_Pattern(const icu::DateFormat* format) {
  icu::UnicodeString pattern;
  if (const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format)) simple->toPattern(pattern);
  return pattern;
}

void Assign(std::string& field, const std::string& value) {
  if (!value.empty()) field = value;
}

void Set_Patterns(TFormat_Settings& settings, const icu::Locale& locale) {
  using icu::DateFormat;
  const auto date_pattern = [&locale](DateFormat::EStyle style) {
    return ICU_Pattern(std::unique_ptr<DateFormat>(DateFormat::createDateInstance(style, locale)).get());
  };
  const auto time_pattern = [&locale](DateFormat::EStyle style) {
    return ICU_Pattern(std::unique_ptr<DateFormat>(DateFormat::createTimeInstance(style, locale)).get());
  };
  std::string date_separator;
  std::string time_separator;
  Assign(settings.ShortDateFormat, Convert_Pattern(date_pattern(DateFormat::kShort), '/', date_separator));
  Assign(settings.LongDateFormat, Convert_Pattern(date_pattern(DateFormat::kFull), '/', date_separator));
  Assign(settings.ShortTimeFormat, Convert_Pattern(time_pattern(DateFormat::kShort), ':', time_separator));
  Assign(settings.LongTimeFormat, Convert_Pattern(time_pattern(DateFormat::kMedium), ':', time_separator));
  Assign(settings.DateSeparator, date_separator);
  Assign(settings.TimeSeparator, time_separator);
}

template <std::size_t Size>
void Copy_Names(std::array<std::string, Size>& names, const icu::UnicodeString* source, std::int32_t count,
                std::int32_t first) {
  for (std::size_t i = 0; i < Size; ++i) {
    const auto from = static_cast<std::int32_t>(i) + first;
    if (from < count) names[i] = Plain_Text(source[from]);
  }
}

void Set_Names(TFormat_Settings& settings, const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DateFormatSymbols symbols(locale, status);
  if (U_FAILURE(status)) return;
  std::int32_t count = 0;
  const icu::UnicodeString* names = symbols.getShortMonths(count);
  Copy_Names(settings.ShortMonthNames, names, count, 0);
  names = symbols.getMonths(count);
  Copy_Names(settings.LongMonthNames, names, count, 0);
  // Days are counted from 1 there.
  names = symbols.getShortWeekdays(count);
  Copy_Names(settings.ShortDayNames, names, count, 1);
  names = symbols.getWeekdays(count);
  Copy_Names(settings.LongDayNames, names, count, 1);
  names = symbols.getAmPmStrings(count);
  if (count >= 2) {
    Assign(settings.TimeAMString, Plain_Text(names[0]));
    Assign(settings.TimePMString, Plain_Text(names[1]));
  }
}

void Set_Numbers(TFormat_Settings& settings, const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols symbols(locale, status);
  if (U_FAILURE(status)) return;
  using icu::DecimalFormatSymbols;
  Assign(settings.DecimalSeparator,
         Plain_Text(symbols.getConstSymbol(DecimalFormatSymbols::kDecimalSeparatorSymbol)));
  Assign(settings.ThousandSeparator,
         From_ICU(symbols.getConstSymbol(DecimalFormatSymbols::kGroupingSeparatorSymbol)));
}

void Set_First_Day(TFormat_Settings& settings, const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(locale, status));
  if (U_FAILURE(status)) return;
  const UCalendarDaysOfWeek day = calendar->getFirstDayOfWeek(status);
  if (U_SUCCESS(status)) settings.FirstDayOfWeek = day;
}

}  // namespace

bool Resolve_Locale(const std::string& name, icu::Locale& locale) {
  locale = icu::Locale::getRoot();
  std::string id = name.empty() ? Environment_Locale() : name;
  std::string modifier;
  if (const std::size_t at = id.find('@'); at != std::string::npos) {
    modifier = id.substr(at + 1);
    id.resize(at);
  }
  // The encoding: texts are UTF-8 whatever it says.
  id = id.substr(0, id.find('.'));
  const icu::Locale found = icu::Locale::createFromName(id.c_str());
  if (found.isBogus() || !Is_Known_Language(found.getLanguage())) return false;
  if (id.starts_with("en_US_POSIX")) return false;
  const char* script = modifier == "latin" ? "Latn" : (modifier == "cyrillic" ? "Cyrl" : nullptr);
  locale = script == nullptr ? found : icu::Locale(found.getLanguage(), script, found.getCountry());
  return true;
}

TFormat_Settings Settings_From_Locale(const std::string& locale_name) {
  TFormat_Settings settings;
  icu::Locale locale;
  if (!Resolve_Locale(locale_name, locale)) {
    Set_Names(settings, icu::Locale::getEnglish());
    return settings;
  }
  // The calendar is Gregorian and digits are 0 to 9, whatever the locale prefers.
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale western = locale;
  western.setKeywordValue("calendar", "gregorian", status);
  western.setKeywordValue("numbers", "latn", status);
  if (U_FAILURE(status)) western = locale;
  Set_Patterns(settings, western);
  Set_Names(settings, western);
  Set_Numbers(settings, western);
  Set_First_Day(settings, western);
  return settings;
}

}  // namespace Kt_util_01
