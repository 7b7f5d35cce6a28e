#pragma once

// What an alarm is in words and in minutes.

#include <string>
#include <vector>

#include "Kt_dates.h"

namespace KTReminds {

using Kt_util_01::TDateTime;

/// The offsets that combo boxes offer, in their order.
const std::vector<std::string>& Alarm_Offset_Items();

/// "15 minutes before"; hours and minutes each with their own "before"; from a day on only whole days.
std::string Convert_Offset_to_ItemText(int Minutes);

/// Reads "90", "2 h", "1 day before": a number and the first letter of its unit; whatever follows does not
/// count. Returns whole minutes, -1 for a text that is no offset, another negative number as it was typed. A
/// number of 0 or more rewrites the text to its canonical form, without a unit when the letter is unknown.
int Convert_Alarm_ItemText(std::string& Text);

/// A typed offset in its canonical form; a text that is no offset as it was typed.
std::string Canonical_Offset(const std::string& text);

/// When an alarm fires, in words: "at" a time "on" a day, or for one put off, whose NextTime is not 0,
/// "until" then.
std::string Get_Alarm_TimeStr(TDateTime EventDate, TDateTime NextTime, int Offset);

}  // namespace KTReminds
