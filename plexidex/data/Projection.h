#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "Schema.h"

namespace Kt_data_01 {

/// The columns that a view reads, and their places in its rows.
struct TProjection {
  /// The named columns, or all when none is named. The table's first column is always read: the engine may
  /// reuse a row ID, and then it tells the rows apart. Throws EData_Error for an unknown column.
  TProjection(const TTable_Def& table, std::initializer_list<std::string_view> columns);

  /// Adds a column. Blobs are part of a row only where they are named.
  void Add(int column, bool may_be_blob = false);

  const TTable_Def* Table;
  std::vector<int> Columns;  // positions in the table, in reading order
  std::vector<TColumn_Type> Types;
  std::vector<int> Slot;  // by position in the table; -1 for a column that is not read
};

}  // namespace Kt_data_01
