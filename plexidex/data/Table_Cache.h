#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "Row_Cache.h"
#include "Table_Reader.h"

namespace Kt_data_01 {

/// Finds rows by a text key without a query: among the rows prefetched by another view (TTable::Prefetch), or
/// by a unique one among those found earlier (Set_Cache). Works only inside a snapshot or bracket, and
/// drops its rows when the table has changed.
class TTable_Cache {
 public:
  TTable_Cache(const TTable_Context& table, const TTable_Range& range, const TProjection& columns)
      : table(table), range(range), columns(columns) {}

  /// A row of a store, valid until the next Find; no store if no row has the key.
  struct TFound {
    TRow_Store* Store = nullptr;
    std::size_t Row = 0;
  };
  /// Whether Find may be called now.
  bool May_Find() const {
    return (Keeps() || (source && range.Has_Text_Key())) && range.Shape().Filter.empty() &&
           table.Database.Is_Stable();
  }
  /// Nothing when the caller has to query the engine. A miss in the cache is looked up and kept, so it may
  /// throw EData_Error.
  std::optional<TFound> Find(std::string_view key);

  void On() { is_on = true; }
  void Off();
  /// To be called when the index or the columns change.
  void Forget();
  /// Has Find look among the rows prefetched by another reader first; `column` is that reader's column with
  /// the key.
  void Serve_From(const TTable_Reader& reader, TLinked_Rows& rows, TField column);

 private:
  bool Keeps() const { return is_on && range.Finds_By_Text(); }
  std::optional<TFound> Find_Linked(std::string_view key) const;
  TFound Find_Kept(std::string_view key);
  // Queries the engine and keeps the result; returns as TRow_Cache::Find.
  std::int64_t Read(std::string_view key);
  std::unique_ptr<TRow_Cache> New_Cache() const;

  const TTable_Context& table;
  const TTable_Range& range;
  const TProjection& columns;
  bool is_on = false;
  std::unique_ptr<TRow_Cache> kept;
  std::uint64_t serial = 0;           // of the table when `kept` was created
  std::int64_t most_rows = Not_Read;  // largest row ID, an upper bound of the row count
  TPrepared finder;

  const TTable_Reader* source = nullptr;
  TLinked_Rows* linked = nullptr;
  TField via;

  static constexpr std::int64_t Not_Read = -1;
};

}  // namespace Kt_data_01
