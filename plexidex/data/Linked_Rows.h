#pragma once

#include <cstdint>
#include <utility>

#include "Row_Store.h"
#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// Prefetched rows (TTable::Prefetch): for each row of a reader's batch, the row of another table that it
/// refers to, or one of them where it comes once with each. Row ID 0 where there is none.
class TLinked_Rows {
 public:
  /// `table` and `columns` are those of the other table, `join` says how its rows are found.
  TLinked_Rows(const TTable_Context& table, const TProjection& columns, const TJoin& join)
      : table(table), join(join), rows(columns), next_rows(columns) {}

  const TJoin& Join() const { return join; }

  /// While a batch is read: Begin, then Add for each row, and at the end Take, which replaces the rows of the
  /// batch before.
  void Begin() {
    next_rows.Clear();
    next_serial = table.Serial();
  }
  std::size_t Next_Arena_Size() const { return next_rows.Arena_Size(); }
  /// Reads the row from the columns that begin at `column` and returns the column after them.
  int Add(TStatement& statement, int column) {
    next_rows.Append(statement, column);
    return column + static_cast<int>(join.Columns->Columns.size()) + 1;
  }
  void Take() {
    std::swap(rows, next_rows);
    next_rows.Clear();
    serial = next_serial;
  }
  void Forget() { rows.Clear(); }
  /// To be called when a column of the batch has got another value.
  void Column_Changed(int column) {
    if (column == join.Via) Forget();
  }

  TRow_Store& Rows() { return rows; }
  /// Whether there is an entry for this row of the batch and the other table has not changed since.
  bool Has(std::size_t row) const { return row < rows.Count() && serial == table.Serial(); }

 private:
  const TTable_Context& table;
  const TJoin join;
  TRow_Store rows, next_rows;
  std::uint64_t serial = 0, next_serial = 0;
};

}  // namespace Kt_data_01
