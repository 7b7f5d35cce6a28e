#pragma once

// Between ICU's texts and UTF-8, and from the names of locales to ICU's.

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <string>
#include <string_view>

namespace Kt_util_01 {

/// Bytes that are not valid UTF-8 become U+FFFD.
icu::UnicodeString To_ICU(std::string_view text);
std::string From_ICU(const icu::UnicodeString& text);

/// The text as a user can type it: without direction marks, no-break and thin blanks made plain, digits of
/// any script 0 to 9.
std::string Plain_Text(const icu::UnicodeString& text);

/// ICU's locale for a name as Settings_From_Locale takes it. False for "C", "POSIX" and unknown names;
/// `locale` is then the root locale.
bool Resolve_Locale(const std::string& name, icu::Locale& locale);

/// The country of the user's locale, in two capital letters; "" when it names none.
std::string Locale_Country();

}  // namespace Kt_util_01
