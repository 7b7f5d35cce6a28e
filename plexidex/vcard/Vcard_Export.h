#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Card.h"
#include "Import_Report.h"
#include "Kt_lists.h"

namespace Plexidex {

/// Writes the contacts of a book that the user may see as cards, and returns how many: all in one
/// version, 3.0 or 4.0, or without one those that were imported as they came, and the others in 4.0. "" is
/// the first book; progress may be null. Throws EExport_Error, with the file as it was.
std::int64_t Export_Vcards(const std::string& file, const std::string& book,
                           std::optional<TVcard_Version> version, Kt_data_01::TProgress_Bar* progress);

}  // namespace Plexidex
