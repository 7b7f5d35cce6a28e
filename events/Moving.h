#pragma once

#include <optional>
#include <string>

#include "Kt_dates.h"

namespace KTReminds {

/// Moves one occurrence to another day, at the time that it has; its master, the other occurrences and its
/// alarm, which is so long before it, stay as they are. Its new date; nothing when nothing was written: there
/// is no such occurrence, the update was refused, or it failed, which is reported.
std::optional<Kt_util_01::TDateTime> Move_Occurrence(const std::string& key, Kt_util_01::TDateTime to_day);

}  // namespace KTReminds
