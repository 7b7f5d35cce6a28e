#pragma once

#include <string>

#include "Kt_dates.h"
#include "Report.h"

namespace Plexidex {

/// A small calendar file to try things out on: sets, single events and tasks that lie around the day `today`.
std::string Sample_Calendar(Kt_util_01::TDateTime today);
struct TSample_Report {
  std::string Book;                        // its name
  TImport_Report Calendar;                 // of the file
  std::int64_t Contacts = 0, Entries = 0;  // besides; none in a book that has contacts
};
/// Brings it into a book, "" being the first, with some contacts that have entries and details of their own.
/// Throws EImport_Error or EData_Error, with nothing of the part at fault written.
TSample_Report Fill_With_Sample(const std::string& book, Kt_util_01::TDateTime today);
/// Writes it to a file; how many components it has. Throws EOutput_Error.
std::int64_t Write_Sample_Calendar(const std::string& file, Kt_util_01::TDateTime today);

}  // namespace Plexidex
