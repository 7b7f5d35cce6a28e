#include "Row_Cache.h"

#include <functional>

namespace Kt_data_01 {

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

std::int64_t TRow_Cache::Add_Current(TStatement& statement) {
  const auto row = static_cast<std::uint32_t>(rows.Count());
  rows.Append(statement);
  Put(rows.Text(row, key_slot), row);
  return row;
}

void TRow_Cache::Add_Missing(std::string_view key) {
  missing.emplace_back(key);
  Put(key, Missing_Bit | static_cast<std::uint32_t>(missing.size() - 1));
}

}  // namespace Kt_data_01
