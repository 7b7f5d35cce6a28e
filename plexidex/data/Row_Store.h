#pragma once

// Rows as read from the engine, packed: the values of a row lie side by side, texts in one arena.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Engine.h"
#include "Kt_text.h"
#include "Schema.h"

namespace Kt_data_01 {

/// The columns that a view reads, and where each lies in its rows.
struct TProjection {
  std::vector<int> Columns;  // positions in the table, in the order they are read
  std::vector<TColumn_Type> Types;
  std::vector<int> Slot;  // by position in the table; -1 for a column that is not read

  /// The row number and then the columns, of the table under its alias.
  std::string Select_List(const std::string& alias) const;
  const TTable_Def* Table = nullptr;
};

class TRow_Store {
 public:
  explicit TRow_Store(const TProjection& projection) : projection(&projection) {}

  std::size_t Count() const { return ids.size(); }
  std::size_t Arena_Size() const { return arena.size(); }
  void Clear();
  /// Reads the statement's current row: the row number stands in `column`, the projection's columns follow. A
  /// row number of 0 means that there is no such row.
  void Append(TStatement& statement, int column = 0);
  /// Adds a row taken over from another store of the same projection.
  void Append(const TRow_Store& other, std::size_t row);

  std::int64_t Id(std::size_t row) const { return ids[row]; }
  std::int64_t Integer(std::size_t row, int slot) const { return Cell(row, slot).integer; }
  double Real(std::size_t row, int slot) const { return Cell(row, slot).real; }
  std::string_view Text(std::size_t row, int slot) const {
    const TCell& cell = Cell(row, slot);
    return {arena.data() + cell.text.offset, cell.text.length};
  }
  /// Made at the first call and shared by later ones.
  TText Shared_Text(std::size_t row, int slot);

  void Set(std::size_t row, int slot, std::int64_t value) { Cell(row, slot).integer = value; }
  void Set(std::size_t row, int slot, double value) { Cell(row, slot).real = value; }
  void Set(std::size_t row, int slot, std::string_view text);

 private:
  union TCell {
    std::int64_t integer;
    double real;
    struct {
      std::uint32_t offset, length;
    } text;
  };

  TCell& Cell(std::size_t row, int slot) {
    return cells[row * projection->Columns.size() + static_cast<std::size_t>(slot)];
  }
  const TCell& Cell(std::size_t row, int slot) const {
    return cells[row * projection->Columns.size() + static_cast<std::size_t>(slot)];
  }
  TCell Stored(std::string_view text);

  const TProjection* projection;
  std::vector<std::int64_t> ids;
  std::vector<TCell> cells;
  std::vector<char> arena;
  std::vector<TText> shared;
};

/// Rows found by a unique text key, and keys known to be missing.
class TRow_Cache {
 public:
  TRow_Cache(const TProjection& projection, int key_slot)
      : rows(projection), key_slot(key_slot), slots(64, Empty) {}

  static constexpr std::int64_t Unknown = -2;
  static constexpr std::int64_t Missing = -1;

  /// A row of Rows(), or one of the two above; once all rows are in, nothing is unknown any more.
  std::int64_t Find(std::string_view key) const;
  void Add_Current(TStatement& statement);
  void Add_Missing(std::string_view key);
  void Set_Complete() { complete = true; }
  TRow_Store& Rows() { return rows; }
  std::size_t Size() const { return used; }

 private:
  static constexpr std::uint32_t Empty = 0xffffffff;
  static constexpr std::uint32_t Missing_Bit = 0x80000000;

  std::string_view Key_At(std::uint32_t entry) const;
  std::size_t Slot_For(std::string_view key) const;
  void Put(std::string_view key, std::uint32_t entry);

  TRow_Store rows;
  int key_slot;
  bool complete = false;
  std::size_t used = 0;
  std::vector<std::uint32_t> slots;  // a row, or Missing_Bit with a position in missing; open addressing
  std::vector<std::string> missing;
};

}  // namespace Kt_data_01
