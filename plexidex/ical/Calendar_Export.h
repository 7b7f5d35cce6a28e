#pragma once

// Writing a book of the shared database to an iCalendar file.

#include <string>

#include "Kt_lists.h"
#include "Report.h"

namespace Plexidex {

/// Writes what the current user may see of a book ("" is the first one), what was imported and not changed
/// here as it came, and the rest in local time, to a new file that takes the place of `file` when it is
/// complete. Throws EExport_Error, with `file` as it was, when the book does not exist, the data cannot be
/// read or the file cannot be written. Progress may be null.
TExport_Report Export_Calendar(const std::string& file, const std::string& book,
                               Kt_data_01::TProgress_Bar* progress = nullptr);

}  // namespace Plexidex
