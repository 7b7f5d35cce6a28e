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

/// Whether two alarms are one in a file; those that are off are all alike.
bool Tell_The_Same(const KTReminds::TAlarm& one, const KTReminds::TAlarm& other);
/// The alarm that most occurrences have.
const KTReminds::TAlarm& Usual_Alarm(const TStored_Event& event);

/// What an event says besides its dates and alarms, as the lines of properties.
void Write_Contents(const KTReminds::TEvent_Record& record, TLine_Writer& lines);
void Write_Alarm(const KTReminds::TEvent_Record& record, const KTReminds::TAlarm& alarm, TLine_Writer& lines);
/// Which of its dates are done.
void Write_Done(const std::vector<TDateTime>& dates, bool are_days, TLine_Writer& lines);
/// The moment of writing, as a file gives it.
std::string Time_Stamp();

/// Writes an event as components, and counts it.
void Write_Components(const TStored_Event& event, TLine_Writer& lines, TExport_Report& report);

}  // namespace Plexidex
