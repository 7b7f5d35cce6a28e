#pragma once

// The texts of all statements on the tables, in SQL that every engine understands; what engines word in their
// own ways is behind TEngine. "?" stands for a value: each routine says which its statement takes, in order.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "Schema.h"

namespace Kt_data_01 {

/// A name as an identifier.
std::string Quoted(std::string_view name);
/// A column as conditions name it: the table stands under the alias d.
std::string Column_Sql(const TTable_Def& table, int column);

/// Columns of a table, a bit for each by its position.
using TColumn_Set = std::uint64_t;
/// The columns' values, by position.
std::string Insert_Sql(const TTable_Def& table, TColumn_Set columns);
/// The columns' values, by position; then the row's number and the old value of its first column.
std::string Update_Sql(const TTable_Def& table, TColumn_Set columns);
/// The row's number and the value of its first column.
std::string Delete_Sql(const TTable_Def& table);

/// Deletes the rows in which a column has the value.
std::string Delete_Rows_Sql(const TTable_Def& table, int column);
/// Deletes the rows in which a column has the Key of a row of `owners` in which `owner_column` has the value.
std::string Delete_Rows_Of_Sql(const TTable_Def& table, int column, const TTable_Def& owners,
                               int owner_column);
/// Keys that end in a text: the text twice, then how many at most.
std::string Key_Ending_Sql(const TTable_Def& table);
/// The columns of the rows whose value in the first of them no row of `other` has in `other_column`.
std::string Unmatched_Sql(const TTable_Def& table, std::initializer_list<std::string_view> columns,
                          const TTable_Def& other, std::string_view other_column);
/// The same for one column: each value once, and how many rows have it.
std::string Unmatched_Count_Sql(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                                std::string_view other_column);

/// The statements that make an empty database one of Schema_Version, but for its stamp.
std::string Creation_Sql(TEngine& engine);

}  // namespace Kt_data_01
