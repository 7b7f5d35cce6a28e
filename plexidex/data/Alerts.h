#pragma once

// When the alarms of the current user go off. Alarms are the module's; the rows that say when each is due are
// kept with them by whatever writes an alarm, or the date of what it belongs to.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace Kt_data_01 {

using Kt_util_01::TDateTime;

struct TAlert {
  std::string Occurrence;  // of which it is the alarm
  TDateTime Due = 0;       // local time
};

/// What is due and neither dismissed nor put off, the first due first. An alarm that was past when it was
/// written is none of them. Throws EData_Error, like all of these.
std::vector<TAlert> Due_Alerts(TDateTime now);
/// When the next one after `now` is due; nothing when none is.
std::optional<TDateTime> Next_Alert(TDateTime now);

/// Both inside an update bracket, and for what was due then: an alarm that has been answered, put off or
/// moved meanwhile stays as it is. A dismissed one is no longer put off.
void Dismiss_Alert(const TAlert& alert);
/// Puts it off until a moment, which its alarm keeps. False when nothing was to be put off.
bool Put_Off_Alert(const TAlert& alert, TDateTime until);

/// What is still to be answered of an alarm whose row is about to be written anew.
struct TWaiting_Alert {
  TDateTime Moment = 0;    // as of its offset
  TDateTime NextTime = 0;  // until when it was put off, or 0
};
/// Nothing for an alarm that is still to come, or has been answered.
std::optional<TWaiting_Alert> Find_Waiting_Alert(std::string_view occurrence);
/// Inside an update bracket: has a new alarm wait as the former one did, if it has the same moment.
void Keep_Waiting_Alert(std::string_view occurrence, const TWaiting_Alert& waiting);

}  // namespace Kt_data_01
