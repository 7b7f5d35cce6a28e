#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Event_Record.h"
#include "Line_Writer.h"
#include "Report.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

struct TStored_Occurrence : KTReminds::TOccurrence {
  KTReminds::TAlarm Alarm;
};

/// An event, set or task as the tables hold it; dates are in whole seconds, or days for what has no time.
struct TStored_Event {
  std::string UID;
  KTReminds::TEvent_Record Record;
  std::vector<TStored_Occurrence> Occurrences;  // in order of time, not empty
};

/// Writes an event as components, and counts it.
void Write_Components(const TStored_Event& event, TLine_Writer& lines, TExport_Report& report);

}  // namespace Plexidex
