#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Linked_Rows.h"
#include "Table_Range.h"

namespace Kt_data_01 {

/// Reads the rows of a range in batches and stands on one of them. A batch goes on from the last key of the
/// one before, so that no statement stays open between two calls. All that asks the engine throws
/// EData_Error.
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
  /// Has rows of another table come along, as TTable::Prefetch.
  TLinked_Rows& Bring_Along(const TTable_Context& other, const TProjection& other_columns, int key, int via);
  /// Whether batches begin large, for a view on whose way much is looked up.
  void Read_Far_Ahead(bool on) { first_limit = on ? Large_First_Batch : First_Batch; }

  // ---- position

  void To_End(bool first);
  void Move(bool onward);
  /// Positions on the first row with a key, whose size must have been checked.
  bool Find(TValues key);
  bool Eof() const { return place == TPlace::End; }
  bool Bof() const { return place == TPlace::Start || (place == TPlace::End && empty); }
  std::int64_t Count() const;
  /// Stands on a row that somebody else keeps, or at the end without one, and says which. The row must stay
  /// where it is until the reader stands elsewhere.
  bool Stand_On(TRow_Store* store, std::size_t row);
  /// Lets go of a row that somebody else keeps: without the position, or with a copy of the row.
  void Let_Go() noexcept;
  void Keep_Copy();
  /// Where the current row lies in Batch(); nothing when it lies elsewhere or may have changed since it was
  /// read.
  std::optional<std::size_t> Row_In_Batch() const;
  const TRow_Store& Batch() const { return batch; }

  // ---- values of the current row; they throw when there is none, and for a column that is not read

  std::string_view Text(TField field) { return Row().Text(at, Slot(field)); }
  TText Shared_Text(TField field) { return Row().Shared_Text(at, Slot(field)); }
  std::int64_t Integer(TField field);
  double Real(TField field);
  std::string Blob(TField field);

  // ---- for the writer of the current row

  /// Takes the row over from whoever keeps it; throws when there is none.
  void Own_Row();
  /// Takes the row over and reads it again; throws when it has been deleted.
  void Read_Again();
  /// The row's number and the value of its first column, which tell it from every other.
  void Bind_Row(TStatement& statement, int parameter) const;
  /// Stands on a row that was written and will be read when somebody wants to know it.
  void Stand_On_Written(std::int64_t row_id);
  void Stand_On_Written() { Stand_On_Written(batch.Id(at)); }
  /// Counts a change that the batch takes into account: the row has gone, or has got values given by Set.
  void Own_Change();
  /// Does nothing for a column that is not read.
  void Set(int column, const TValue& value);

 private:
  enum class TPlace { None, Row, Start, End };

  // How many rows are read at first, and at most.
  static constexpr std::size_t First_Batch = 32;
  static constexpr std::size_t Large_First_Batch = 512;
  static constexpr std::size_t Largest_Batch = 8192;
  static constexpr std::size_t Largest_Batch_Arena = 64 << 20;

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
  // Reads the next rows in one direction: from the end of the range, or following the current row.
  void Fetch(TStep step);
  // The batch is but the current row, as it was under a serial of the table.
  void Begin_Batch_With_Row(std::uint64_t read_at);

  const TTable_Context& table;
  const TTable_Range& range;
  TProjection columns;

  TPlace place = TPlace::None;
  bool empty = false;  // at the end because there is no row at all
  TRow_Store batch, next_batch;
  TRow_Store* rows = &batch;  // where the current row lies: in the batch, or with somebody else
  std::size_t at = 0;
  std::optional<std::int64_t> written;  // number of the current row when it was written and not read since
  bool forward = true, exhausted = false;
  std::size_t first_limit = First_Batch, limit = First_Batch;
  std::uint64_t serial = 0;  // the table's when the batch was read; 0 is never fresh
  std::vector<std::unique_ptr<TLinked_Rows>> links;

  std::vector<TPrepared> finders;  // by number of key columns
  TPrepared fetchers[4], row_reader;
};

}  // namespace Kt_data_01
