#pragma once

// The texts of all statements on the tables, in SQL that every engine understands; what engines word in their
// own ways is behind TEngine. "?" stands for a value: each routine says which its statement takes, in order.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "Projection.h"
#include "Schema.h"

namespace Kt_data_01 {

/// A name as an identifier.
std::string Quoted(std::string_view name);
/// A column as conditions name it: the table stands under the alias d.
std::string Column_Sql(const TTable_Def& table, int column);

/// What decides the conditions of a range and its order, apart from its values.
struct TRange_Shape {
  std::vector<int> Columns;       // of the index
  bool Unique = false;            // the index
  std::size_t Low = 0, High = 0;  // how many leading columns each end of the range has
  std::size_t Equal = 0;          // leading columns on which both ends agree
  std::string Filter;             // a condition, or empty
};

/// One step of a walk through a range: up or down, and from a row or from the range's end.
struct TStep {
  bool Ascending = true, From_Row = false;
};

/// Rows that come along: those of `Columns` whose value in `Key` equals that in `Via` of the table walked.
struct TJoin {
  const TProjection* Columns;
  int Key, Via;
};

// What reads rows gives the row's number and then the projection's columns.

/// The next rows of a walk, in its order, each followed by the joined ones. Takes the values of the ends on
/// which they agree; going on from a row, its other index columns and its number; of an end that is still
/// ahead the other columns, the low one first; then how many rows at most.
std::string Fetch_Sql(const TProjection& columns, const TRange_Shape& range, const std::vector<TJoin>& joins,
                      TStep step);
/// Whether an end is still ahead.
bool Needs_Low(const TRange_Shape& range, TStep step);
bool Needs_High(const TRange_Shape& range, TStep step);
/// How many rows the range has. Takes what Fetch_Sql takes from the range's end, but for the number.
std::string Count_Sql(const TTable_Def& table, const TRange_Shape& range);
/// The first row whose leading index columns equal the values; the ends of the range do not count.
std::string Find_Sql(const TProjection& columns, const TRange_Shape& range, std::size_t key_columns);
/// A row by its number.
std::string Row_Sql(const TProjection& columns);
/// A column by its row's number.
std::string Blob_Sql(const TTable_Def& table, int column);
/// All rows.
std::string Scan_Sql(const TProjection& columns);
/// The largest row number; null in an empty table.
std::string Largest_Row_Sql(const TTable_Def& table);

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
