#include "Row_Store.h"

#include "Sql_Text.h"

namespace Kt_data_01 {

std::string TProjection::Select_List(const std::string& alias) const {
  std::string list = alias + ".row_id";
  for (const int column : Columns) {
    list += ", " + alias + "." + Quoted(Table->Columns[static_cast<std::size_t>(column)].Name);
  }
  return list;
}

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
  for (const TColumn_Type type : projection->Types) {
    TCell cell{};
    switch (type) {
      case TColumn_Type::Text:
        cell = Stored(statement.Text(column));
        break;
      case TColumn_Type::DateTime:
        cell.real = statement.Real(column);
        break;
      default:
        cell.integer = statement.Integer(column);
        break;
    }
    cells.push_back(cell);
    ++column;
  }
}

void TRow_Store::Append(const TRow_Store& other, std::size_t row) {
  ids.push_back(other.ids[row]);
  int slot = 0;
  for (const TColumn_Type type : projection->Types) {
    cells.push_back(type == TColumn_Type::Text ? Stored(other.Text(row, slot)) : other.Cell(row, slot));
    ++slot;
  }
}

TText TRow_Store::Shared_Text(std::size_t row, int slot) {
  if (shared.size() < cells.size()) shared.resize(cells.size());
  TText& text = shared[row * projection->Columns.size() + static_cast<std::size_t>(slot)];
  if (text.Empty()) text = TText(Text(row, slot));
  return text;
}

void TRow_Store::Set(std::size_t row, int slot, std::string_view text) {
  const TCell cell = Stored(text);
  Cell(row, slot) = cell;
  if (!shared.empty()) shared.clear();
}

std::string_view TRow_Cache::Key_At(std::uint32_t entry) const {
  return entry & Missing_Bit ? std::string_view(missing[entry & ~Missing_Bit]) : rows.Text(entry, key_slot);
}

std::size_t TRow_Cache::Slot_For(std::string_view key) const {
  const std::size_t mask = slots.size() - 1;
  std::size_t slot = std::hash<std::string_view>()(key) & mask;
  while (slots[slot] != Empty && Key_At(slots[slot]) != key) slot = (slot + 1) & mask;
  return slot;
}

std::int64_t TRow_Cache::Find(std::string_view key) const {
  const std::uint32_t entry = slots[Slot_For(key)];
  if (entry == Empty) return complete ? Missing : Unknown;
  return entry & Missing_Bit ? Missing : static_cast<std::int64_t>(entry);
}

void TRow_Cache::Put(std::string_view key, std::uint32_t entry) {
  if (++used * 2 > slots.size()) {
    std::vector<std::uint32_t> old(slots.size() * 2, Empty);
    old.swap(slots);
    for (const std::uint32_t moved : old) {
      if (moved != Empty) slots[Slot_For(Key_At(moved))] = moved;
    }
  }
  slots[Slot_For(key)] = entry;
}

void TRow_Cache::Add_Current(TStatement& statement) {
  const auto row = static_cast<std::uint32_t>(rows.Count());
  rows.Append(statement);
  Put(rows.Text(row, key_slot), row);
}

void TRow_Cache::Add_Missing(std::string_view key) {
  missing.emplace_back(key);
  Put(key, Missing_Bit | static_cast<std::uint32_t>(missing.size() - 1));
}

}  // namespace Kt_data_01
