#pragma once

// The text of every statement on the tables, in SQL that all engines understand; what differs between engines
// is behind TEngine. Each routine names the parameters of its statement, in order.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "Projection.h"
#include "Schema.h"

namespace Kt_data_01 {

/// A name as an SQL identifier.
std::string Quoted(std::string_view name);
/// A column in a condition, where the table has the alias d.
std::string Column_Sql(const TTable_Def& table, int column);

/// All about a range that its statements depend on; its values are their parameters.
struct TRange_Shape {
  std::vector<int> Columns;       // of the index
  bool Unique = false;            // the index
  std::size_t Low = 0, High = 0;  // number of leading columns that each end has
  std::size_t Equal = 0;          // number of leading columns in which both ends are equal
  std::string Filter;             // a condition, or empty
};

/// Where a batch of rows begins, and in which direction it is read: after a row, or at the range's end.
struct TStep {
  bool Ascending = true, From_Row = false;
};

/// A left join with the rows of another table whose column `Key` equals the column `Via`. At most one join of
/// a batch may have several of them to a row, which then comes once with each, in their natural order.
struct TJoin {
  const TProjection* Columns;
  int Key, Via;
  bool Several = false;
};

// A selected row is its row ID, followed by the columns of the projection.

/// A batch of rows, each followed by the joined ones. Parameters: the columns in which both ends are equal;
/// after a row, its other index columns, its row ID and, where a join has several, the joined row's; the
/// other columns of the low end, if needed, and of the high end, if needed; the largest number of rows.
std::string Fetch_Sql(const TProjection& columns, const TRange_Shape& range, const std::vector<TJoin>& joins,
                      TStep step);
/// Whether the batch can reach beyond this end.
bool Needs_Low(const TRange_Shape& range, TStep step);
bool Needs_High(const TRange_Shape& range, TStep step);
/// The number of rows in the range. Parameters as of Fetch_Sql at the range's end, without the last.
std::string Count_Sql(const TTable_Def& table, const TRange_Shape& range);
/// The first row by its leading index columns, which are the parameters; ignores the ends of the range.
std::string Find_Sql(const TProjection& columns, const TRange_Shape& range, std::size_t key_columns);
/// A row. Parameter: the row ID.
std::string Row_Sql(const TProjection& columns);
/// One column of a row. Parameter: the row ID.
std::string Blob_Sql(const TTable_Def& table, int column);
/// All rows.
std::string Scan_Sql(const TProjection& columns);
/// The largest row ID.
std::string Largest_Row_Sql(const TTable_Def& table);

/// A set of columns, one bit for each position in the table.
using TColumn_Set = std::uint64_t;
/// Parameters: the columns, by position.
std::string Insert_Sql(const TTable_Def& table, TColumn_Set columns);
/// Parameters: the columns, by position; row ID and first column of the row as it was.
std::string Update_Sql(const TTable_Def& table, TColumn_Set columns);
/// Parameters: row ID and first column of the row.
std::string Delete_Sql(const TTable_Def& table);

/// Deletes the rows in which a column equals the parameter.
std::string Delete_Rows_Sql(const TTable_Def& table, int column);
/// Parameters: what stands in the column of these rows from now on, and what did so far.
std::string Replace_In_Rows_Sql(const TTable_Def& table, int column);
/// Deletes the rows in which a column equals the Key of a row of `owners` in which `owner_column` equals the
/// parameter.
std::string Delete_Rows_Of_Sql(const TTable_Def& table, int column, const TTable_Def& owners,
                               int owner_column);
/// Keys that end in a text. Parameters: the text, the text again, the largest number of keys.
std::string Key_Ending_Sql(const TTable_Def& table);
/// The columns of the rows for which `other` has no row whose `other_column` equals the first of them.
std::string Unmatched_Sql(const TTable_Def& table, std::initializer_list<std::string_view> columns,
                          const TTable_Def& other, std::string_view other_column);
/// The same for one column: each value once, with the number of its rows.
std::string Unmatched_Count_Sql(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                                std::string_view other_column);
/// The values that a column has in several rows, with the number of these.
std::string Repeated_Sql(const TTable_Def& table, std::string_view column);

/// The columns of the rows in which the first of them is no number, or none from `low` to before `end`.
std::string Outside_Sql(const TTable_Def& table, std::initializer_list<std::string_view> columns,
                        std::int64_t low, std::int64_t end);

/// The contacts of a book that are deleted or not, each with columns of its details, and last the name of its
/// template and the key of its folder. Parameters: the book, whether they are deleted, and when they are
/// narrowed by a column its value.
std::string Contact_Rows_Sql(const std::vector<std::string>& details, std::string_view narrowed_by);
/// The contacts of a category. Parameter: its key.
std::string Members_Sql();

/// What KT_Alerts.Dismissed says: that an alert waits for its moment or an answer, that it was answered or
/// past when it was written, which a clock that is set back does not change, or that what it is for was done
/// before it was due, which can be taken back.
constexpr std::int64_t Alert_Open = 0, Alert_Answered = 1, Alert_Done_Before = 2;
/// Writes when the alarm of a row of alarms, or of occurrences, is due, if it has one and that has changed.
/// Dismisses what is not later than now or done with. Parameters: row ID, now.
std::string Keep_Alert_Sql(const TTable_Def& table);
/// Takes the delay from the alarm of such a row whose entry is done, whose moment is another than was kept,
/// if that is still to come or the delay is over, or that was put off until a time that is over and answered;
/// to be followed by Keep_Alert_Sql. Parameters as before.
std::string End_Delay_Sql(const TTable_Def& table);
/// Settles the row of an alarm that is done with and has no answer, or takes that back while it is still to
/// come. Parameters as before.
std::string Settle_Alert_Sql();
/// The keys of alarms for which Keep_Alert_Sql would write something else than there is: 0 nothing is there,
/// 1 it is for another user, 2 for another time. Without alarms that have no occurrence.
std::string Wrong_Alerts_Sql();
/// Deletes what Keep_Alert_Sql wrote for a row of alarms. Parameter: row ID.
std::string Drop_Alert_Sql();
/// Says for whom the journal's lines of an event are private, "" when it is not. Parameter: its row ID.
std::string Keep_Private_Lines_Sql();

/// The statements that create the schema.
std::string Creation_Sql(TEngine& engine);

}  // namespace Kt_data_01
