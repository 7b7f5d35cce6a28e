#pragma once

// Writing a book of the shared database to an iCalendar file.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "Kt_lists.h"

namespace Plexidex {

/// An export that did not happen; one sentence with the file and the reason.
class EExport_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TExport_Report {
  std::int64_t Rules = 0;   // sets written as a rule
  std::int64_t Dates = 0;   // sets written as a list of their dates, because no rule says these
  std::int64_t Events = 0;  // single events
  std::int64_t Tasks = 0;
  std::int64_t Left_Out = 0;  // occurrences with a date that a calendar file cannot hold
};

/// Writes what the current user may see of a book ("" is the first one) in local time, to a new file that
/// takes the place of `file` when it is complete. Throws EExport_Error, with `file` as it was, when the book
/// does not exist, the data cannot be read or the file cannot be written. Progress may be null.
TExport_Report Export_Calendar(const std::string& file, const std::string& book,
                               Kt_data_01::TProgress_Bar* progress = nullptr);

}  // namespace Plexidex
