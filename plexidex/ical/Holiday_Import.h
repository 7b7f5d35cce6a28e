#pragma once

#include "Import_Update.h"
#include "Report.h"

namespace Plexidex {

/// Adds the days of the file's events to the holidays of a country; the book of the options means nothing.
/// Never removes a holiday, and adds none twice. Throws as Import_Calendar does, also for an empty country.
THoliday_Report Import_Holidays(const std::string& file, const std::string& country,
                                const TImport_Options& options);

}  // namespace Plexidex
