#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "Row_Store.h"
#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// The rows that a view consists of, and their order: index, both ends, filter.
class TTable_Range {
 public:
  explicit TTable_Range(const TTable_Context& table) : table(table) {}

  /// What a change makes invalid.
  enum class TChange {
    None,
    Rows,  // the rows read
    Shape  // the rows read and the statements
  };

  /// These throw EData_Error and then change nothing.
  TChange Set_Index(std::string_view name);
  TChange Set(TValues from, TValues to);
  TChange Set_Filter(std::string_view expression);
  /// Removes both ends.
  TChange Cancel() noexcept;

  const TRange_Shape& Shape() const { return shape; }
  /// Whether the index is one on a single text column, and whether it is unique too.
  bool Has_Text_Key() const { return has_text_key; }
  bool Finds_By_Text() const { return has_text_key && shape.Unique; }
  /// Throws EData_Error if a key of the index cannot have so many columns.
  void Check_Key(std::size_t columns) const;

  /// Binds the parameters of Fetch_Sql but for the last, and returns the number of the next one. A batch that
  /// begins after a row begins after this one, with this joined row where there are several.
  int Bind_Step(TStatement& statement, TStep step, const TRow_Store& rows, std::size_t row,
                std::optional<std::int64_t> joined_row = {}) const;

 private:
  const TTable_Context& table;
  const TIndex_Def* index = nullptr;
  TRange_Shape shape;
  std::vector<TOwned_Value> low, high;
  bool has_text_key = false;
};

}  // namespace Kt_data_01
