#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "Schema.h"

namespace Kt_data_01 {

/// The columns that a view reads, and where each lies in its rows.
struct TProjection {
  /// The named columns, or all when none is named; always the first, which tells a row from a later one with
  /// the same number. Throws EData_Error for an unknown column.
  TProjection(const TTable_Def& table, std::initializer_list<std::string_view> columns);

  /// Reads one more column from now on. A blob is read by itself.
  void Add(int column);

  const TTable_Def* Table;
  std::vector<int> Columns;  // positions in the table, in the order they are read
  std::vector<TColumn_Type> Types;
  std::vector<int> Slot;  // by position in the table; -1 for a column that is not read
};

}  // namespace Kt_data_01
