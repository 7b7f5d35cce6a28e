#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "Engine.h"

namespace Kt_data_01 {

struct TSqlite_Options {
  bool Read_Only = false;
  std::chrono::milliseconds Busy_Time{5000};  // how long a writer waits for another
  /// Asked between two tries to begin a write transaction, with the time waited so far; false gives up. Then
  /// the busy time does not end that waiting. It may read, but not begin another.
  std::function<bool(std::chrono::milliseconds)> Go_On_Waiting = {};
  std::int64_t Cache_Bytes = 64 << 20;
  std::int64_t Max_Pages = 0;  // 0: no limit
};

/// Opens a database file; creates an empty one if there is none, unless read-only. Throws EEngine_Error, also
/// for a file that is not a database.
std::unique_ptr<TEngine> Open_Sqlite(const std::string& path, const TSqlite_Options& options);

}  // namespace Kt_data_01
