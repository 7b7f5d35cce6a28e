#pragma once

#include <string_view>
#include <vector>

#include "Row_Store.h"
#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// Which rows of a table a view means, and in what order: its index, the ends of its range, its filter.
class TTable_Range {
 public:
  explicit TTable_Range(const TTable_Context& table) : table(table) {}

  /// What a change means for rows read and statements prepared before it.
  enum class TChange {
    None,
    Rows,  // the rows no longer count
    Shape  // nor do the statements: the range has another shape
  };

  /// As TTable's routines of these names; all but Cancel throw EData_Error, and change nothing then.
  TChange Set_Index(std::string_view name);
  TChange Set(TValues from, TValues to);
  TChange Cancel() noexcept;
  TChange Set_Filter(std::string_view expression);

  const TRange_Shape& Shape() const { return shape; }
  /// Whether one text finds at most one row: the index is a unique one over one text column.
  bool Finds_By_Text() const { return finds_by_text; }
  /// Throws EData_Error when a key cannot have so many columns.
  void Check_Key(std::size_t columns) const;

  /// Gives a statement of Fetch_Sql its values and returns the number of the parameter that follows them. The
  /// row to go on from is `row` of `rows`.
  int Bind_Step(TStatement& statement, TStep step, const TRow_Store& rows, std::size_t row) const;

 private:
  const TTable_Context& table;
  const TIndex_Def* index = nullptr;
  TRange_Shape shape;
  std::vector<TOwned_Value> low, high;
  bool finds_by_text = false;
};

}  // namespace Kt_data_01
