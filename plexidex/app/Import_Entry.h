#pragma once

#include <vector>

#include "Import_Component.h"
#include "Import_Plan.h"

namespace Plexidex {

/// Plans what becomes of the components of one UID, which have been identified but not read. What cannot be
/// used goes to the report.
void Plan_Entry(std::vector<TComponent>& components, TZones& zones, TDateTime until, TPlanned_Entry& entry,
                TImport_Report& report);

}  // namespace Plexidex
