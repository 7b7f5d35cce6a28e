#pragma once

#include <map>
#include <vector>

#include "Table_Reader.h"

namespace Kt_data_01 {

/// The pending row of a view, a new one or a change of the reader's, and what writes it. What is written
/// keeps the rows that the reader has read ahead. All but Cancel and Value throw EData_Error.
class TTable_Writer {
 public:
  TTable_Writer(const TTable_Context& table, const TTable_Range& range, TTable_Reader& reader)
      : table(table), range(range), reader(reader), values(table.Def.Columns.size()) {}

  void Insert();
  void Edit();
  void Cancel() noexcept {
    state = TState::Browse;
    set = 0;
  }
  void Set(TField field, const TValue& value);
  void Set_Fields(TValues from_first);
  /// Writes the pending row, on which the reader then stands; without one it does nothing.
  void Post();
  /// Deletes the reader's row and moves on.
  void Delete();

  /// What the pending row holds; null where that is what the reader's row holds.
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
  TColumn_Set set = 0;               // those that have been set
  std::map<TColumn_Set, TPrepared> inserters, updaters;
  TPrepared deleter;
};

}  // namespace Kt_data_01
