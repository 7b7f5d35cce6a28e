#pragma once

// Rows read from the engine, packed: the values of a row are contiguous, all texts are in one buffer.

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
  /// Reads the statement's current row: the row ID from `column`, then the columns of the projection. An
  /// outer join's missing row gets row ID 0.
  void Append(TStatement& statement, int column = 0);
  /// Copies a row of another store with the same projection.
  void Append(const TRow_Store& other, std::size_t row);
  /// Updates a row from a statement as Append reads it. False, with nothing changed, when the first column
  /// differs: it is another row that reuses the row ID.
  bool Read_Again(std::size_t row, TStatement& statement);

  std::int64_t Id(std::size_t row) const { return ids[row]; }
  std::int64_t Integer(std::size_t row, int slot) const { return Cell(row, slot).integer; }
  double Real(std::size_t row, int slot) const { return Cell(row, slot).real; }
  std::string_view Text(std::size_t row, int slot) const {
    const TCell& cell = Cell(row, slot);
    return {arena.data() + cell.text.offset, cell.text.length};
  }
  /// Created by the first call, shared by later ones.
  TText Shared_Text(std::size_t row, int slot);

  /// The value must be of the column's kind.
  void Set(std::size_t row, int slot, const TValue& value);
  /// Binds the value of a column, given by its position in the table. The store must not change until the
  /// statement is reset.
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
