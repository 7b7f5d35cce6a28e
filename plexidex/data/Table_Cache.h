#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "Row_Cache.h"
#include "Table_Reader.h"

namespace Kt_data_01 {

/// Finds rows by a unique text key without asking the engine: among those that came along with another view's
/// batch (TTable::Prefetch), or among those found before (Set_Cache). Serves only inside a snapshot or a
/// bracket and while nothing has changed.
class TTable_Cache {
 public:
  TTable_Cache(const TTable_Context& table, const TTable_Range& range, const TProjection& columns)
      : table(table), range(range), columns(columns) {}

  /// Where a row lies; without a store there is no row with this key. It stays there until the next call.
  struct TFound {
    TRow_Store* Store = nullptr;
    std::size_t Row = 0;
  };
  /// Whether it can be asked now.
  bool May_Find() const {
    return (is_on || source) && range.Finds_By_Text() && range.Shape().Filter.empty() &&
           table.Database.Is_Stable();
  }
  /// Only where it may. Nothing when the engine must be asked; may ask it itself, and throw EData_Error.
  std::optional<TFound> Find(std::string_view key);

  void On() { is_on = true; }
  void Off();
  /// To be called when the index has changed.
  void Forget();
  /// Looks first among the rows that come along with the batches of `source`.
  void Serve_From(const TTable_Reader& reader, TLinked_Rows& rows, TField column);

 private:
  std::optional<TFound> Find_Linked(std::string_view key) const;
  TFound Find_Kept(std::string_view key);
  // Asks the engine, and keeps what it says.
  std::int64_t Read(std::string_view key);
  std::unique_ptr<TRow_Cache> New_Cache() const;

  const TTable_Context& table;
  const TTable_Range& range;
  const TProjection& columns;
  bool is_on = false;
  std::unique_ptr<TRow_Cache> kept;
  std::uint64_t serial = 0;           // the table's when `kept` was begun
  std::int64_t most_rows = Not_Read;  // the largest row number: an upper bound, read in no time
  TPrepared finder;

  const TTable_Reader* source = nullptr;
  TLinked_Rows* linked = nullptr;
  TField via;

  static constexpr std::int64_t Not_Read = -1;
};

}  // namespace Kt_data_01
