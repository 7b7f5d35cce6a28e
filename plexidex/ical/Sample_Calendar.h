#pragma once

#include <string>

#include "Kt_dates.h"

namespace Plexidex {

/// A small calendar file to try things out on: sets, single events and tasks that lie around the day `today`.
std::string Sample_Calendar(Kt_util_01::TDateTime today);
/// Brings it into a book, with two contacts that have entries and details of their own. Throws EImport_Error
/// or EData_Error, with nothing of the part at fault written.
void Fill_With_Sample(const std::string& book, Kt_util_01::TDateTime today);
/// Writes it to a file. Throws EOutput_Error.
void Write_Sample_Calendar(const std::string& file, Kt_util_01::TDateTime today);

}  // namespace Plexidex
