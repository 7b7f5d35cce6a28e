#pragma once

#include <string>
#include <vector>

namespace Kt_data_01 {

/// Checks the shared database, in one snapshot, for damage of the file, for events, occurrences, alarms,
/// contacts, folders and what contacts have that refer to something missing, for alarms that do not go off
/// once, for their user and at their time, and for folders that lie in themselves. One sentence per finding,
/// with stored texts unchanged: make them printable before showing them. After 50 findings of a kind, one
/// line counts the rest. Empty for a sound database.
std::vector<std::string> Check_Store();

}  // namespace Kt_data_01
