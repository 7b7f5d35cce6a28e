#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Calendar_Export.h"
#include "Event_Record.h"
#include "Export_Lines.h"

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
void Write_Event(const TStored_Event& event, TCalendar_Lines& lines, TExport_Report& report);

}  // namespace Plexidex
