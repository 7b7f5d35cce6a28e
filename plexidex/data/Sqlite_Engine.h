#pragma once

#include <memory>
#include <string>

#include "Engine.h"

namespace Kt_data_01 {

struct TSqlite_Options {
  bool Read_Only = false;
  int Busy_Msecs = 5000;  // how long a writer waits for another
  std::int64_t Cache_Bytes = 64 << 20;
  std::int64_t Max_Pages = 0;  // 0: no limit
};

/// Opens a database file; creates an empty one if there is none, unless read-only. Throws EEngine_Error, also
/// for a file that is not a database.
std::unique_ptr<TEngine> Open_Sqlite(const std::string& path, const TSqlite_Options& options);

}  // namespace Kt_data_01
