#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Row_Store.h"

namespace Kt_data_01 {

/// Rows by a unique text key, and keys known not to exist.
class TRow_Cache {
 public:
  TRow_Cache(const TProjection& projection, int key_slot)
      : rows(projection), key_slot(key_slot), slots(64, Empty) {}

  static constexpr std::int64_t Unknown = -2;
  static constexpr std::int64_t Missing = -1;

  /// The index of the row in Rows(), or Missing, or, unless the cache is complete, Unknown.
  std::int64_t Find(std::string_view key) const;
  /// Adds the statement's current row and returns its index in Rows().
  std::int64_t Add_Current(TStatement& statement);
  void Add_Missing(std::string_view key);
  /// To be called when all rows of the table have been added.
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
