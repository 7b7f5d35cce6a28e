#pragma once

#include <string>

namespace Kt_data_01 {

/// Where the database lies when the user names none: in the user's data folder, which need not exist yet.
/// Throws std::runtime_error when the system names no such folder.
std::string Default_Database();

}  // namespace Kt_data_01
