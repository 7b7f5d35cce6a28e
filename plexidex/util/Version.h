#pragma once

namespace Plexidex {

/// Of the program and the module together, such as "0.5.0"; the build file names it.
const char* Version();

}  // namespace Plexidex
