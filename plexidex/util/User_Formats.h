#pragma once

// What the user wants otherwise than the locale has it.

#include <optional>
#include <string>

#include "Kt_util_01.h"

namespace Kt_util_01 {

/// "" and 0 stand for the locale's.
struct TUser_Formats {
  int First_Day = 0;       // of the week: 1 Sunday .. 7 Saturday
  std::string Date, Time;  // as the platform writes patterns: dd/MM/yyyy, HH:mm, h:mm AP
};

TUser_Formats Read_User_Formats();
void Write_User_Formats(const TUser_Formats& formats);

/// The settings with a short date of day, month and year of four digits in any order, or a short time of
/// hours and minutes, written as such a pattern says. None for a pattern that is none, or that writes what
/// cannot be read back.
std::optional<TFormat_Settings> With_Date_Pattern(TFormat_Settings settings, const std::string& pattern);
std::optional<TFormat_Settings> With_Time_Pattern(TFormat_Settings settings, const std::string& pattern);

/// Those of the locale, whatever the user wants.
const TFormat_Settings& Locale_Formats();
void Replace_Formats(const TFormat_Settings& settings);
/// Makes what the settings say the formats in use, until the next Install_Locale; a pattern that is none is
/// as if it were not there.
void Apply_User_Formats();

}  // namespace Kt_util_01
