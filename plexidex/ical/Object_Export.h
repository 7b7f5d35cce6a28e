#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kept_Changes.h"
#include "Report.h"

namespace Plexidex {

/// The components with what was changed here since their import; what was not is as it came. The user's zone
/// must be that of the import. Nothing when the components cannot be read any more. Counts what it gives.
std::optional<std::string> Export_Object(const TKept_Object& object, TZones& zones, TExport_Report& report);

}  // namespace Plexidex
