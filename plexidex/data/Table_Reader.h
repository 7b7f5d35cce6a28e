#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Linked_Rows.h"
#include "Table_Range.h"

namespace Kt_data_01 {

/// Reads the rows of a range in batches and has a position on one of them. Each batch continues after the
/// last key of the one before, so no statement stays open between two calls. What reads from the engine
/// throws EData_Error.
class TTable_Reader {
 public:
  TTable_Reader(const TTable_Context& table, const TTable_Range& range, TProjection columns)
      : table(table),
        range(range),
        columns(std::move(columns)),
        batch(this->columns),
        next_batch(this->columns) {}
  TTable_Reader(const TTable_Reader&) = delete;
  TTable_Reader& operator=(const TTable_Reader&) = delete;

  const TProjection& Columns() const { return columns; }
  /// To be called after each change of the range.
  void Range_Changed(TTable_Range::TChange change);
  /// Prefetches rows of another table along with each batch, see TLinked_Rows.
  TLinked_Rows& Prefetch(const TTable_Context& other, const TJoin& join);
  /// Leaves out rows whose text fails the test, but for the last one examined of each batch.
  void Set_Text_Test(TField field, std::function<bool(std::string_view)> test);
  /// Whether the first batch is a large one.
  void Read_Far_Ahead(bool on) { first_limit = on ? Large_First_Batch : First_Batch; }

  // ---- position

  void To_End(bool first);
  void Move(bool onward);
  /// Positions on the first row with a key (TTable_Range::Check_Key); false, at the end, if there is none.
  bool Find(TValues key);
  bool Eof() const { return place == TPlace::End; }
  bool Bof() const { return place == TPlace::Start || (place == TPlace::End && empty); }
  std::int64_t Count() const;
  /// Positions on a row of another store with the same columns, or at the end if `store` is null, and returns
  /// whether there is a row. The store must not change until the reader has left it.
  bool Stand_On(TRow_Store* store, std::size_t row);
  /// Leaves another store: without a position, or keeping a copy of the row.
  void Leave_Store() noexcept;
  void Copy_Row();
  /// Index of the current row in Batch(); nothing when it is not there or the table has changed since.
  std::optional<std::size_t> Row_In_Batch() const;
  const TRow_Store& Batch() const { return batch; }

  // ---- values of the current row; these throw when there is none, and for a column that is not read

  std::string_view Text(TField field) { return Row().Text(at, Slot(field)); }
  TText Shared_Text(TField field) { return Row().Shared_Text(at, Slot(field)); }
  std::int64_t Integer(TField field);
  double Real(TField field);
  std::string Blob(TField field);

  // ---- for the writer

  /// Brings the current row into the batch, so that it can be written; throws when there is none.
  void Own_Row();
  /// The same, and reads it again; throws when it has been deleted.
  void Read_Again();
  /// Binds row ID and first column of the row owned, which identify it.
  void Bind_Row(TStatement& statement, int parameter) const;
  std::int64_t Own_Row_Id() const { return batch.Id(at); }
  /// Positions on a row just written, which is read when its values are asked for.
  void Stand_On_Written(std::int64_t row_id);
  void Stand_On_Written() { Stand_On_Written(batch.Id(at)); }
  /// Counts a change of the table after which the batch is still current: the row owned was deleted, or
  /// changed in the columns then set by Set.
  void Own_Change();
  /// Ignores a column that is not read.
  void Set(int column, const TValue& value);

 private:
  enum class TPlace { None, Row, Start, End };

  // Rows in the first batch and in the largest.
  static constexpr std::size_t First_Batch = 32;
  static constexpr std::size_t Large_First_Batch = 512;
  static constexpr std::size_t Largest_Batch = 8192;
  // Texts of the rows and of those prefetched, about: what the processor's caches hold.
  static constexpr std::size_t Largest_Batch_Arena = 1 << 20;
  // Rows examined for a batch, at most, where a test leaves some out.
  static constexpr std::size_t Most_Examined = 16384;

  TRow_Store& Row() {
    if (place != TPlace::Row) Throw_No_Row();
    if (written) Read_Written();
    return *rows;
  }
  int Slot(TField field) const {
    const auto position = static_cast<std::size_t>(field.Position);
    if (position >= columns.Slot.size() || columns.Slot[position] < 0) Throw_Not_Read(field);
    return columns.Slot[position];
  }
  void Read_Column(int column);
  [[noreturn]] void Throw_No_Row() const;
  [[noreturn]] void Throw_Not_Read(TField field) const;

  bool Fresh() const { return serial == table.Serial(); }
  void Stand(TPlace where);
  void Forget_Statements() noexcept;
  void Read_Written();
  // Reads the next batch, at the range's end or after the current row.
  void Fetch(TStep step);
  // The joined row after which a batch continues; nothing when no row comes with several.
  std::optional<std::int64_t> Joined_Row(TStep step) const;
  // To be called when the batch consists of the current row only.
  void Begin_Batch_With_Row(std::uint64_t row_serial);

  const TTable_Context& table;
  const TTable_Range& range;
  TProjection columns;

  TPlace place = TPlace::None;
  bool empty = false;  // at the end because the range has no rows
  TRow_Store batch, next_batch;
  TRow_Store* rows = &batch;  // the store of the current row: the batch or another one
  std::size_t at = 0;
  std::optional<std::int64_t> written;  // row ID of the current row if it was written and not read since
  bool forward = true, exhausted = false;
  std::size_t first_limit = First_Batch, limit = First_Batch;
  std::uint64_t serial = 0;  // of the table when the batch was read; 0: never fresh
  std::vector<std::unique_ptr<TLinked_Rows>> links;
  std::function<bool(std::string_view)> test;
  int tested = 0;  // the column of the statement

  std::vector<TPrepared> finders;  // by number of key columns, from 1
  TPrepared fetchers[4], row_reader;
};

}  // namespace Kt_data_01
