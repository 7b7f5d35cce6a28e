#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Component_Writer.h"
#include "File_Times.h"
#include "Kept_Text.h"

namespace Plexidex {

/// An imported calendar object: the components as they came, and what became of the events made of them.
struct TKept_Object {
  std::string UID;
  TDateTime Until = 0;  // the last day of endless rules, and the day of the import
  TDateTime Imported = 0;
  std::vector<TKept_Component> Parts;
  std::vector<std::vector<TStored_Event>> Events;  // by part
};

/// The components with what was changed here since their import; what was not is as it came. The user's zone
/// must be that of the import. Nothing when the components cannot be read any more. Counts what it gives.
std::optional<std::string> Export_Object(const TKept_Object& object, TZones& zones, TExport_Report& report);

}  // namespace Plexidex
