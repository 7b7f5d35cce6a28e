#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Calendar_Export.h"
#include "Export_Lines.h"
#include "Recurrence.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

struct TStored_Occurrence {
  std::string Key;
  TDateTime Date = 0;  // in whole seconds, or days for an entry without times
  bool Done = false;
  bool Alarm = false;
  int Offset = 0;
  std::string Sound;
};

/// An event, set or task as the tables hold it.
struct TStored_Entry {
  std::string UID;
  std::string Title, Location, Notes;
  int Priority = 0, Activity = -1, EventType = 0;
  bool AllDay = false, Private = false;
  TDateTime FirstDate = 0;
  KTReminds::TRecurrence_Pattern Pattern;
  int Status = 0, Percentage = 0;
  std::int64_t Started = 0, Completed = 0, Budget = 0, Worked = 0;
  std::vector<TStored_Occurrence> Occurrences;  // in order of time, not empty
};

/// Writes an entry as components, and counts it.
void Write_Entry(const TStored_Entry& entry, TCalendar_Lines& lines, TExport_Report& report);

}  // namespace Plexidex
