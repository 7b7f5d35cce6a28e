#pragma once

#include <string>
#include <vector>

namespace Kt_data_01 {

/// Looks through the shared database, in one state of it, for damage of the file and for events, occurrences
/// and alarms that do not belong together. One sentence per finding, with names as they are stored; many of
/// one kind are cut short by a line that counts the rest. Empty for a sound database.
std::vector<std::string> Check_Store();

}  // namespace Kt_data_01
