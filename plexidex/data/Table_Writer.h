#pragma once

#include <map>
#include <vector>

#include "Alert_Rows.h"
#include "Private_Lines.h"
#include "Table_Reader.h"

namespace Kt_data_01 {

/// The pending row of a view: a new row, or a change of the reader's current one. Its changes leave the
/// reader's batch current. Everything but Cancel throws EData_Error.
class TTable_Writer {
 public:
  TTable_Writer(const TTable_Context& table, const TTable_Range& range, TTable_Reader& reader)
      : table(table),
        range(range),
        reader(reader),
        values(table.Def.Columns.size()),
        alerts(table),
        private_lines(table) {}

  void Insert();
  void Edit();
  void Cancel() noexcept {
    state = TState::Browse;
    set = 0;
  }
  void Set(TField field, const TValue& value);
  void Set_Fields(TValues from_first);
  /// Writes the pending row and positions the reader on it; does nothing without one.
  void Post();
  /// Deletes the reader's current row and moves to the next.
  void Delete();

  /// A column of the pending row; null when the value is that of the reader's current row.
  const TOwned_Value* Value(TField field) { return state == TState::Browse ? nullptr : Pending(field); }

 private:
  enum class TState { Browse, Insert, Edit };

  const TOwned_Value* Pending(TField field);
  bool Is_Set(std::size_t column) const { return (set >> column & 1) != 0; }
  int Bind_Pending(TStatement& statement) const;
  void Write_Insert();
  void Write_Edit();

  const TTable_Context& table;
  const TTable_Range& range;
  TTable_Reader& reader;
  TState state = TState::Browse;
  std::vector<TOwned_Value> values;  // by column
  TColumn_Set set = 0;               // those set in the pending row
  std::map<TColumn_Set, TPrepared> inserters, updaters;
  TPrepared deleter;
  TAlert_Rows alerts;
  TPrivate_Lines private_lines;
};

}  // namespace Kt_data_01
