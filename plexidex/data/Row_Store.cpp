#include "Row_Store.h"

namespace Kt_data_01 {

namespace {

// A column of the statement's current row.
TValue Value_Of(TStatement& statement, int column, TColumn_Type type) {
  switch (type) {
    case TColumn_Type::Text:
      return statement.Text(column);
    case TColumn_Type::Blob:
      return statement.Blob(column);
    case TColumn_Type::DateTime:
      return statement.Real(column);
    default:
      return statement.Integer(column);
  }
}

bool Is_Text(TColumn_Type type) {
  return type == TColumn_Type::Text || type == TColumn_Type::Blob;
}

bool Same(const TValue& a, const TValue& b) {
  switch (a.Kind()) {
    case TValue::TKind::Text:
      return a.Text() == b.Text();
    case TValue::TKind::Real:
      return a.Real() == b.Real();
    default:
      return a.Integer() == b.Integer();
  }
}

}  // namespace

void TRow_Store::Clear() {
  ids.clear();
  cells.clear();
  arena.clear();
  shared.clear();
}

TRow_Store::TCell TRow_Store::Stored(std::string_view text) {
  TCell cell{};
  if (arena.size() + text.size() > 0xffffffffu) throw EEngine_Error("the texts of one list exceed 4 GiB");
  cell.text = {static_cast<std::uint32_t>(arena.size()), static_cast<std::uint32_t>(text.size())};
  arena.insert(arena.end(), text.begin(), text.end());
  return cell;
}

void TRow_Store::Append(TStatement& statement, int column) {
  ids.push_back(statement.Integer(column++));
  cells.resize(cells.size() + projection->Types.size());
  if (ids.back() == 0) return;
  TCell* cell = cells.data() + cells.size() - projection->Types.size();
  for (const TColumn_Type type : projection->Types) {
    switch (type) {
      case TColumn_Type::Text:
        *cell = Stored(statement.Text(column));
        break;
      case TColumn_Type::Blob:
        *cell = Stored(statement.Blob(column));
        break;
      case TColumn_Type::DateTime:
        cell->real = statement.Real(column);
        break;
      default:
        cell->integer = statement.Integer(column);
        break;
    }
    ++cell;
    ++column;
  }
}

void TRow_Store::Append(const TRow_Store& other, std::size_t row) {
  ids.push_back(other.ids[row]);
  int slot = 0;
  for (const TColumn_Type type : projection->Types) {
    cells.push_back(Is_Text(type) ? Stored(other.Text(row, slot)) : other.Cell(row, slot));
    ++slot;
  }
}

bool TRow_Store::Read_Again(std::size_t row, TStatement& statement) {
  for (std::size_t i = 0; i < projection->Types.size(); ++i) {
    const int slot = static_cast<int>(i);
    const TValue value = Value_Of(statement, slot + 1, projection->Types[i]);
    if (Same(Value(row, slot), value)) continue;
    if (slot == 0) return false;
    Set(row, slot, value);
  }
  return true;
}

TText TRow_Store::Shared_Text(std::size_t row, int slot) {
  if (shared.size() < cells.size()) shared.resize(cells.size());
  const std::size_t width = projection->Columns.size();
  TText& text = shared[row * width + static_cast<std::size_t>(slot)];
  if (text.Empty()) {
    // Rows that follow each other often say the same.
    const TText* before = row > 0 ? &text - width : nullptr;
    const std::string_view stored = Text(row, slot);
    text = before && *before == stored ? *before : TText(stored);
  }
  return text;
}

void TRow_Store::Set(std::size_t row, int slot, const TValue& value) {
  switch (value.Kind()) {
    case TValue::TKind::Text: {
      const TCell cell = Stored(value.Text());
      Cell(row, slot) = cell;
      shared.clear();
      break;
    }
    case TValue::TKind::Real:
      Cell(row, slot).real = value.Real();
      break;
    case TValue::TKind::Integer:
      Cell(row, slot).integer = value.Integer();
      break;
  }
}

void TRow_Store::Bind(std::size_t row, int column, TStatement& statement, int parameter) const {
  Kt_data_01::Bind(statement, parameter, Value(row, projection->Slot[static_cast<std::size_t>(column)]));
}

TValue TRow_Store::Value(std::size_t row, int slot) const {
  switch (projection->Types[static_cast<std::size_t>(slot)]) {
    case TColumn_Type::Text:
    case TColumn_Type::Blob:
      return Text(row, slot);
    case TColumn_Type::DateTime:
      return Real(row, slot);
    default:
      return Integer(row, slot);
  }
}

}  // namespace Kt_data_01
