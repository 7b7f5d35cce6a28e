#pragma once

#include <vector>

#include "Component.h"
#include "Import_Budget.h"
#include "Planned.h"
#include "Report.h"

namespace Plexidex {

/// Plans what becomes of the components of one UID, which have been identified but not read. What cannot be
/// used goes to the report, and so does what is more than the budget allows.
void Plan_Object(std::vector<TComponent>& components, TZones& zones, TDateTime until, TImport_Budget& budget,
                 TPlanned_Object& object, TImport_Report& report);

}  // namespace Plexidex
