#pragma once

// What an import is going to write: made from the file alone, before anything is written.

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Calendar_Import.h"
#include "Import_File.h"
#include "Recurrence.h"

namespace Plexidex {

struct TPlanned_Alarm {
  bool On = false;
  int Offset = 0;  // minutes before the occurrence
  std::string Sound;

  bool operator==(const TPlanned_Alarm&) const = default;
};

/// What an entry says, whatever its dates.
struct TPlanned_Content {
  std::string Title, Location, Notes;
  int Priority = 5;
  int Activity = -1;  // journal activity
  bool Private = false;
  bool AllDay = false;
  int Days = 1;  // days that each date covers
  TPlanned_Alarm Alarm;
};

struct TPlanned_Progress {
  int Status = 0;
  int Percentage = 0;
  std::int64_t Started = 0, Completed = 0;  // day numbers, 0 for none
  std::int64_t Budget = 0, Worked = 0;      // hundredths
  int Lead_Days = 0;                        // from the start day to the due day
};

struct TPlanned_Change {
  bool Deleted = false;
  TDateTime To = 0;
  TPlanned_Alarm Alarm;
};

/// One set, or single entries that differ in nothing but their date.
struct TPlanned_Event {
  TPlanned_Content Content;
  bool Is_Task = false;
  TPlanned_Progress Progress;
  KTReminds::TRecurrence_Pattern
      Pattern;                   // Freq 0: each of Dates becomes an entry of its own, over Content.Days days
  std::vector<TDateTime> Dates;  // of a set the first one only
  std::map<std::int64_t, TPlanned_Change> Changes;  // of a set, by the moment in milliseconds
  std::vector<TDateTime> Extra;                     // further occurrences of a set

  bool Is_Set() const { return Pattern.Freq > 0; }
};

/// All components of one UID.
struct TPlanned_Entry {
  std::string UID, Digest;
  bool Withdrawn = false;  // has no dates any more; what an earlier import brought goes
  std::vector<TPlanned_Event> Events;
  std::set<std::int64_t> Done;  // moments, in milliseconds, that the file calls dealt with
};

struct TPlan_Options {
  TDateTime Until = 0;
  bool Until_Was_Given = false;
  Kt_data_01::TProgress_Bar* Progress = nullptr;
  /// Whether an earlier import has brought this very content; null for never.
  std::function<bool(const std::string& uid, const std::string& digest)> Is_Unchanged;
};

/// Leaves out what is unchanged and what cannot be used; the report says so, and its counts of what was read
/// and is unchanged are filled in.
std::vector<TPlanned_Entry> Plan_Import(const TCalendar_File& file, const TPlan_Options& options,
                                        TImport_Report& report);

}  // namespace Plexidex
