#pragma once

// The pattern language of FormatDateTime, taken apart once for writing dates and for reading them.

#include <cstddef>
#include <string_view>

namespace Kt_util_01 {

enum class TField {
  Literal,
  Date_Separator,
  Time_Separator,
  Day,  // of 3 and 4 letters a name; of 5 the short date, of more the long one
  Month,
  Year,
  Hour,
  Minute,
  Second,
  Msec,
  Time,           // t, tt
  Date_And_Time,  // c
  AmPm_Letters,   // am/pm
  A_P_Letters,    // a/p
  AmPm_Names,     // ampm
};

struct TPattern_Token {
  TField Field;
  int Count;              // letters in a row
  std::string_view Text;  // as in the pattern; of a quoted literal without its quotes
};

/// Walks over a pattern, which must outlive the scanner. Every pattern is valid.
class TPattern_Scanner {
 public:
  explicit TPattern_Scanner(std::string_view pattern) : rest(pattern) {}

  /// False at the end of the pattern.
  bool Next(TPattern_Token& token);

 private:
  TPattern_Token Take(TField field, std::size_t length);

  std::string_view rest;
  bool after_hour = false;
};

/// Whether the pattern names the half of the day, and hours therefore go from 1 to 12.
bool Has_AmPm(std::string_view pattern);

}  // namespace Kt_util_01
