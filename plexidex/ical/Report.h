#pragma once

// How importing and exporting calendar files went.

#include <cstdint>
#include <string>
#include <vector>

#include "Import_Report.h"

namespace Plexidex {

/// Events, tasks and whatever else stands in a calendar are its components. Each of them is written, belongs
/// to something written (a changed date of a set), is unchanged, or stands among the unused.
struct TImport_Report {
  std::int64_t Read = 0;                 // components in the file
  std::int64_t Sets = 0;                 // recurring sets written
  std::int64_t Events = 0;               // single events written
  std::int64_t Tasks = 0;                // tasks written
  std::int64_t Occurrences = 0;          // dates of all that was written
  std::int64_t Unchanged = 0;            // components that an earlier import has brought as they are
  std::int64_t Replaced = 0;             // UIDs that an earlier import had brought otherwise
  std::int64_t Ends = 0;                 // events written of which the file gives a time of end
  std::vector<TImport_Remark> Unused;    // components that could not be used
  std::vector<TImport_Remark> Left_Out;  // what was left out of, or understood otherwise in, a used component
};

/// What is told of end times that were not kept; "" where there are none.
std::string Ends_Remark(const TImport_Report& report);

struct THoliday_Report {
  std::int64_t Read = 0;   // components in the file
  std::int64_t Added = 0;  // days
  std::int64_t Known = 0;  // days that were there already
  std::vector<TImport_Remark> Unused;
  std::vector<TImport_Remark> Left_Out;  // dates beyond what a file may bring
};

struct TExport_Report {
  std::int64_t Rules = 0;   // sets written as a rule
  std::int64_t Dates = 0;   // sets written as a list of their dates, because no rule says these
  std::int64_t Events = 0;  // single events
  std::int64_t Tasks = 0;
  std::int64_t Left_Out = 0;  // occurrences with a date that a calendar file cannot hold
};

}  // namespace Plexidex
