#pragma once

// What an import is going to write: made from the file alone, before anything is written.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Event_Record.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

struct TPlanned_Change {
  bool Deleted = false;
  TDateTime To = 0;
  KTReminds::TAlarm Alarm;
  int Part = -1;  // the component of the object that says so, from 0; -1 for none of its own
};

/// One occurrence of a planned event.
struct TPlanned_Occurrence {
  TDateTime Date = 0;
  TDateTime Named = 0;  // how the file names it
  KTReminds::TAlarm Alarm;
  int Part = -1;  // as of a change
};

/// What an event says, whatever its dates.
struct TPlanned_Content {
  KTReminds::TEvent_Record Record;  // without key, owner and dates
  KTReminds::TAlarm Alarm;
  int Days = 1;       // that each date covers
  int Lead_Days = 0;  // of a task, from its start to the day on which it is due

  bool Is_Task() const { return Record.EventType == Kt_data_01::TEntry_Type::Task; }
};

/// One set, or single events that differ in nothing but their date.
struct TPlanned_Event : TPlanned_Content {
  int Part = 0;                                     // the component of the object that it is made of, from 0
  std::vector<TDateTime> Dates;                     // of a set, one with a pattern, the first one only
  std::map<std::int64_t, TPlanned_Change> Changes;  // of a set, by the moment in milliseconds
  std::vector<TDateTime> Extra;                     // further occurrences of a set
  std::vector<TDateTime> Named;                     // of no set: how the file names its dates

  bool Is_Set() const { return Record.Pattern.Freq > KTReminds::TFrequency::None; }
  /// As they are written; those of single events of several days one after the other.
  std::vector<TPlanned_Occurrence> Occurrences() const;
};

/// A calendar object: all components of one UID.
struct TPlanned_Object {
  std::string UID, Digest;
  std::string Text;                          // its components as they came, after the zones that they name
  std::map<std::string, std::string> Zones;  // those zones by their digests
  bool Cut = false;                          // some of it was more than the budget of the import allows
  bool Withdrawn = false;                    // has no dates any more; what an earlier import brought goes
  std::vector<TPlanned_Event> Events;
  std::set<std::int64_t> Done;  // moments, in milliseconds, that the file calls dealt with
};

}  // namespace Plexidex
