#pragma once

// Bringing an iCalendar file into a book of the shared database.

#include <string>

#include "Import_Update.h"
#include "Report.h"

namespace Plexidex {

/// Checks the structure of the whole file first, then reads, plans and writes it, one calendar object after
/// the other, in one update. Throws EImport_Error, with nothing written, for a file that is not a calendar or
/// is truncated, for a book that does not exist, and when the database takes no update or the update fails;
/// the database reports its own failure besides. What the progress throws ends the import the same way.
TImport_Report Import_Calendar(const std::string& file, const TImport_Options& options);

}  // namespace Plexidex
