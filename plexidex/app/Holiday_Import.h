#pragma once

#include "Calendar_Import.h"

namespace Plexidex {

struct THoliday_Report {
  std::int64_t Read = 0;   // components in the file
  std::int64_t Added = 0;  // days
  std::int64_t Known = 0;  // days that were there already
  std::vector<TImport_Remark> Unused;
};

/// Adds the days of the file's events to the holidays of a country; the book of the options means nothing.
/// Never removes a holiday, and adds none twice. Throws as Import_Calendar does, also for an empty country.
THoliday_Report Import_Holidays(const std::string& file, const std::string& country,
                                const TImport_Options& options);

}  // namespace Plexidex
