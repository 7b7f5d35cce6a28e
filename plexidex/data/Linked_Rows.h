#pragma once

#include <cstdint>
#include <utility>

#include "Row_Store.h"
#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// Rows of a table looked up that come along with the batches of a reader of another one, one for each row of
/// the batch; a row number of 0 where there is none.
class TLinked_Rows {
 public:
  /// Of the table looked up: the columns wanted and the key's; and the reader's column that it equals.
  TLinked_Rows(const TTable_Context& table, const TProjection& columns, int key, int via)
      : table(table), columns(columns), key(key), via(via), rows(columns), next_rows(columns) {}

  TJoin Join() const { return {&columns, key, via}; }

  /// Reading a batch: Begin, Add for each row, and Take once all are read, which lets the rows of the batch
  /// before go.
  void Begin() {
    next_rows.Clear();
    next_serial = table.Serial();
  }
  /// Returns the column behind its own.
  int Add(TStatement& statement, int column) {
    next_rows.Append(statement, column);
    return column + static_cast<int>(columns.Columns.size()) + 1;
  }
  void Take() {
    std::swap(rows, next_rows);
    next_rows.Clear();
    serial = next_serial;
  }
  void Forget() { rows.Clear(); }

  TRow_Store& Rows() { return rows; }
  /// Whether a row of the batch has one that is still as it was read.
  bool Has(std::size_t row) const { return row < rows.Count() && serial == table.Serial(); }

 private:
  const TTable_Context& table;
  const TProjection& columns;
  const int key, via;
  TRow_Store rows, next_rows;
  std::uint64_t serial = 0, next_serial = 0;
};

}  // namespace Kt_data_01
