#pragma once

#include <string>

namespace Kt_data_01 {

/// Whether a file is at this path that may be a database, or false when nothing is. Throws EOpen_Error for a
/// path that cannot be a database's: a folder, a pipe, a path too long, a file that may not be read.
bool Is_Database_Path(const std::string& path);

/// Whether writing to this path would overwrite a database or a file that belongs to one, under whatever name
/// or link: one that is open, or any other of this engine.
bool Would_Overwrite_Database(const std::string& path);

}  // namespace Kt_data_01
