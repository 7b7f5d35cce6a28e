#pragma once

#include <string>

#include "Kt_dates.h"

namespace KTReminds {

/// Gives one occurrence another date; its master, the other occurrences and its alarm, which is so long
/// before it, stay as they are. False when nothing was written: there is no such occurrence, the update was
/// refused, or it failed, which is reported.
bool Move_Occurrence(const std::string& key, Kt_util_01::TDateTime to);

}  // namespace KTReminds
