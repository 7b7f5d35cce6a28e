#include "Table_Cache.h"

#include <utility>

namespace Kt_data_01 {

namespace {

// Once this share of a table has been looked up row by row, reading the whole table is cheaper, except for
// small numbers.
constexpr std::int64_t Scan_Share = 8;
constexpr std::int64_t Fewest_Before_Scan = 32;

}  // namespace

std::optional<TTable_Cache::TFound> TTable_Cache::Find(std::string_view key) {
  if (source) {
    if (const auto found = Find_Linked(key)) return found;
  }
  if (!Keeps()) return {};
  return Find_Kept(key);
}

void TTable_Cache::Off() {
  is_on = false;
  kept.reset();
}

void TTable_Cache::Forget() {
  kept.reset();
  finder.Forget();
}

void TTable_Cache::Serve_From(const TTable_Reader& reader, TLinked_Rows& rows, TField column) {
  source = &reader;
  linked = &rows;
  via = column;
}

std::optional<TTable_Cache::TFound> TTable_Cache::Find_Linked(std::string_view key) const {
  const auto row = source->Row_In_Batch();
  if (!row || !linked->Has(*row)) return {};
  const int slot = source->Columns().Slot[static_cast<std::size_t>(via.Position)];
  if (source->Batch().Text(*row, slot) != key) return {};
  TRow_Store& rows = linked->Rows();
  return rows.Id(*row) == 0 ? TFound{} : TFound{&rows, *row};
}

TTable_Cache::TFound TTable_Cache::Find_Kept(std::string_view key) {
  std::unique_ptr<TRow_Cache> outdated;  // kept until the end, as the key may be a text in it
  if (!kept || serial != table.Serial()) {
    outdated = std::exchange(kept, New_Cache());
    serial = table.Serial();
    most_rows = Not_Read;
  }
  std::int64_t row = kept->Find(key);
  if (row == TRow_Cache::Unknown) row = table.Guarded("find", [&] { return Read(key); });
  return row < 0 ? TFound{} : TFound{&kept->Rows(), static_cast<std::size_t>(row)};
}

std::int64_t TTable_Cache::Read(std::string_view key) {
  if (most_rows == Not_Read) {
    TUse use(table.Database.Statement(Largest_Row_Sql(table.Def)));
    most_rows = use->Step() ? use->Integer(0) : 0;
  }
  const auto size = static_cast<std::int64_t>(kept->Size());
  if ((size + 1) * Scan_Share > most_rows && size >= Fewest_Before_Scan) {
    auto all = New_Cache();
    TUse use(table.Database.Statement(Scan_Sql(columns)));
    while (use->Step()) all->Add_Current(*use);
    all->Set_Complete();
    const std::int64_t row = all->Find(key);
    kept = std::move(all);
    return row;
  }
  TUse use(finder.Get(table.Database, [&] { return Find_Sql(columns, range.Shape(), 1); }));
  use->Bind(0, key);
  if (use->Step()) return kept->Add_Current(*use);
  kept->Add_Missing(key);
  return TRow_Cache::Missing;
}

std::unique_ptr<TRow_Cache> TTable_Cache::New_Cache() const {
  const auto key = static_cast<std::size_t>(range.Shape().Columns[0]);
  return std::make_unique<TRow_Cache>(columns, columns.Slot[key]);
}

}  // namespace Kt_data_01
