#include <algorithm>

#include "Table_View.h"

namespace Kt_data_01 {

namespace {

// A cached table of which this share has been looked up row by row is cheaper to scan as a whole.
constexpr std::size_t Scan_Share = 8;

}  // namespace

void TTable::TImpl::Prefetch(TImpl& target, TField via) {
  if (!target.caches) throw Error("prefetch", "the other table has no unique index to be found by");
  links.push_back(std::make_unique<TLink>(target, via.Position));
  Add_Column(projection, via.Position);
  target.linked_from = this;
  target.link_number = links.size() - 1;
  Forget_Position();
  Forget_Statements();
}

void TTable::TImpl::Cache_On() {
  caching = true;
  limit = First_Size();
}

void TTable::TImpl::Cache_Off() {
  if (rows == (cache ? &cache->Rows() : nullptr) && place == TPlace::Row) To_Batch();
  caching = false;
  cache.reset();
}

bool TTable::TImpl::Find_Linked(std::string_view key) {
  const TImpl& from = *linked_from;
  TLink& link = *from.links[link_number];
  if (from.place != TPlace::Row || from.unloaded || from.rows != &from.batch ||
      link.Rows.Count() != from.batch.Count() || link.Stamp != database.Table_Serial(number) ||
      !from.Fresh() ||
      from.batch.Text(from.at, from.projection.Slot[static_cast<std::size_t>(link.Via)]) != key) {
    return false;
  }
  Stand(link.Rows.Id(from.at) != 0 ? TPlace::Row : TPlace::End);
  rows = &link.Rows;
  at = from.at;
  return true;
}

bool TTable::TImpl::Find_Cached(std::string_view key) {
  if (!cache || cache_stamp != database.Table_Serial(number)) {
    cache =
        std::make_unique<TRow_Cache>(projection, projection.Slot[static_cast<std::size_t>(index_columns[0])]);
    cache_stamp = database.Table_Serial(number);
    table_rows.reset();
  }
  std::int64_t row = cache->Find(key);
  if (row == TRow_Cache::Unknown) {
    Guarded("find", [&] { Look_Up(key); });
    row = cache->Find(key);
  }
  Stand(row >= 0 ? TPlace::Row : TPlace::End);
  rows = &cache->Rows();
  at = static_cast<std::size_t>(std::max<std::int64_t>(row, 0));
  return row >= 0;
}

void TTable::TImpl::Look_Up(std::string_view key) {
  Check_Opening();
  if (!table_rows) {
    TUse use(database.Statement("SELECT max(row_id) FROM " + Quoted(name)));
    table_rows = use->Step() ? static_cast<std::size_t>(use->Integer(0)) : 0;
  }
  if ((cache->Size() + 1) * Scan_Share > *table_rows && cache->Size() >= First_Batch) {
    cache =
        std::make_unique<TRow_Cache>(projection, projection.Slot[static_cast<std::size_t>(index_columns[0])]);
    TUse use(database.Statement("SELECT " + projection.Select_List("d") + From()));
    while (use->Step()) cache->Add_Current(*use);
    cache->Set_Complete();
    return;
  }
  finders.resize(std::max<std::size_t>(finders.size(), 1));
  if (!finders[0]) finders[0] = &database.Statement(Finder_Sql(1));
  TUse use(*finders[0]);
  use->Bind(0, key);
  if (use->Step()) {
    cache->Add_Current(*use);
  } else {
    cache->Add_Missing(key);
  }
}

}  // namespace Kt_data_01
