#pragma once

// Rows as read from the engine, packed: the values of a row lie side by side, texts in one arena.

#include <cstdint>
#include <string_view>
#include <vector>

#include "Engine.h"
#include "Kt_text.h"
#include "Owned_Value.h"
#include "Projection.h"

namespace Kt_data_01 {

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
  /// Reads a row again, from a statement as Append takes it. False, with nothing changed, when its first
  /// column has become another: then it is another row with the same number.
  bool Read_Again(std::size_t row, TStatement& statement);

  std::int64_t Id(std::size_t row) const { return ids[row]; }
  std::int64_t Integer(std::size_t row, int slot) const { return Cell(row, slot).integer; }
  double Real(std::size_t row, int slot) const { return Cell(row, slot).real; }
  std::string_view Text(std::size_t row, int slot) const {
    const TCell& cell = Cell(row, slot);
    return {arena.data() + cell.text.offset, cell.text.length};
  }
  /// Made at the first call and shared by later ones.
  TText Shared_Text(std::size_t row, int slot);

  /// The value's kind must be that of the column.
  void Set(std::size_t row, int slot, const TValue& value);
  /// Gives a statement the value of a column, by its position in the table. The rows must stay as they are
  /// until the statement's Reset.
  void Bind(std::size_t row, int column, TStatement& statement, int parameter) const;

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
  TValue Value(std::size_t row, int slot) const;

  const TProjection* projection;
  std::vector<std::int64_t> ids;
  std::vector<TCell> cells;
  std::vector<char> arena;
  std::vector<TText> shared;
};

}  // namespace Kt_data_01
