#pragma once

// What the imports of events and of holidays share.

#include <functional>
#include <string>

#include "Calendar_Import.h"

namespace Plexidex {

/// The last day of endless rules.
TDateTime Import_Until(const TImport_Options& options);

/// Runs `write` in one update bracket. Throws EImport_Error, with nothing written, when the bracket cannot be
/// opened or fails, and reports a failure with the tag.
void Write_Import(const std::string& file, const char* tag, const std::function<void()>& write);

}  // namespace Plexidex
