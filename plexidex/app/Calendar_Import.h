#pragma once

// Bringing an iCalendar file into a book of the shared database.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "Kt_dates.h"
#include "Kt_lists.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

/// A file that cannot be imported; one sentence that names the file, the place in it where there is one, and
/// the reason.
class EImport_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TImport_Options {
  std::string Book;  // name; "" is the first book, made as "My Calendar" when there is none
  bool Has_Until = false;
  TDateTime Until = 0;  // last day of endless rules, itself included; without Has_Until ten years from today
  Kt_data_01::TProgress_Bar* Progress = nullptr;  // not owned; stepped only while nothing is being written
};

struct TImport_Remark {
  std::string What;  // UID, or the title where there is none
  std::string Why;
};

/// Events, tasks and whatever else stands in a calendar are its components. Each of them is written, belongs
/// to something written (a changed date of a set), is unchanged, or stands among the unused.
struct TImport_Report {
  std::int64_t Read = 0;         // components in the file
  std::int64_t Sets = 0;         // recurring sets written
  std::int64_t Events = 0;       // single events written
  std::int64_t Tasks = 0;        // tasks written
  std::int64_t Occurrences = 0;  // dates of all that was written
  std::int64_t Unchanged = 0;    // components that an earlier import has brought as they are
  std::int64_t Replaced = 0;  // entries that an earlier import had brought otherwise and that were replaced
  std::vector<TImport_Remark> Unused;    // components that could not be used
  std::vector<TImport_Remark> Left_Out;  // what was left out of, or understood otherwise in, a used component
};

/// Reads the whole file first and then writes all of it in one update. Throws EImport_Error, with nothing
/// written, for a file that is no calendar or is cut short, for a book that does not exist, and when the
/// database takes no update or the update fails; the database reports its own failure besides.
TImport_Report Import_Calendar(const std::string& file, const TImport_Options& options);

}  // namespace Plexidex
