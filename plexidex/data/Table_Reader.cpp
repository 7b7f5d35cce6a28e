#include "Table_Reader.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Kt_data_01 {

void TTable_Reader::Range_Changed(TTable_Range::TChange change) {
  if (change == TTable_Range::TChange::None) return;
  Stand(TPlace::None);
  rows = &batch;
  serial = 0;
  if (change == TTable_Range::TChange::Rows) return;
  // A batch continues after the index columns of the row before.
  for (const int column : range.Shape().Columns) Read_Column(column);
  Forget_Statements();
}

TLinked_Rows& TTable_Reader::Prefetch(const TTable_Context& other, const TJoin& join) {
  links.push_back(std::make_unique<TLinked_Rows>(other, *join.Columns, join));
  Read_Column(join.Via);
  Range_Changed(TTable_Range::TChange::Shape);
  return *links.back();
}

void TTable_Reader::Set_Text_Test(TField field, std::function<bool(std::string_view)> wanted) {
  tested = 1 + Slot(field);  // the row ID comes first
  test = std::move(wanted);
  Range_Changed(TTable_Range::TChange::Rows);
}

void TTable_Reader::To_End(bool first) {
  limit = first_limit;
  Fetch({first, false});
  Stand(batch.Count() ? TPlace::Row : TPlace::End);
  empty = batch.Count() == 0;
  at = 0;
}

void TTable_Reader::Move(bool onward) {
  const TPlace end = onward ? TPlace::End : TPlace::Start;
  if (place == end) return;
  if (place != TPlace::Row) return To_End(onward);
  if (written) Read_Written();
  if (rows != &batch) Copy_Row();
  const bool goes_on = forward == onward && Fresh();
  if (goes_on) {
    if (at + 1 < batch.Count()) {
      ++at;
      return;
    }
    if (exhausted) return Stand(end);
  }
  limit = goes_on ? std::min(limit * 4, Largest_Batch) : first_limit;
  Fetch({onward, true});
  at = 0;
  Stand(batch.Count() ? TPlace::Row : end);
}

bool TTable_Reader::Find(TValues key) {
  return table.Guarded("find", [&] {
    if (finders.size() < key.size()) finders.resize(key.size());
    TUse use(finders[key.size() - 1].Get(table.Database,
                                         [&] { return Find_Sql(columns, range.Shape(), key.size()); }));
    int parameter = 0;
    for (const TValue& value : key) Bind(*use, parameter++, value);
    const bool found = use->Step();
    batch.Clear();
    for (const auto& link : links) link->Forget();
    if (found) batch.Append(*use);
    Stand(found ? TPlace::Row : TPlace::End);
    Begin_Batch_With_Row(table.Serial());
    limit = first_limit;
    return found;
  });
}

std::int64_t TTable_Reader::Count() const {
  return table.Guarded("count", [&] {
    TUse use(table.Database.Statement(Count_Sql(table.Def, range.Shape())));
    range.Bind_Step(*use, {}, batch, 0);
    return use->Step() ? use->Integer(0) : 0;
  });
}

bool TTable_Reader::Stand_On(TRow_Store* store, std::size_t row) {
  Stand(store ? TPlace::Row : TPlace::End);
  rows = store ? store : &batch;
  at = row;
  return store != nullptr;
}

void TTable_Reader::Leave_Store() noexcept {
  if (rows == &batch) return;
  Stand(TPlace::None);
  rows = &batch;
}

void TTable_Reader::Copy_Row() {
  if (rows == &batch || place != TPlace::Row) return;
  next_batch.Clear();
  next_batch.Append(*rows, at);
  std::swap(batch, next_batch);
  Begin_Batch_With_Row(0);
}

std::optional<std::size_t> TTable_Reader::Row_In_Batch() const {
  if (place != TPlace::Row || written || rows != &batch || !Fresh()) return {};
  return at;
}

std::int64_t TTable_Reader::Integer(TField field) {
  const TRow_Store& row = Row();
  const int slot = Slot(field);
  if (columns.Types[static_cast<std::size_t>(slot)] == TColumn_Type::DateTime)
    return static_cast<std::int64_t>(row.Real(at, slot));
  return row.Integer(at, slot);
}

double TTable_Reader::Real(TField field) {
  const TRow_Store& row = Row();
  const int slot = Slot(field);
  if (columns.Types[static_cast<std::size_t>(slot)] == TColumn_Type::DateTime) return row.Real(at, slot);
  return static_cast<double>(row.Integer(at, slot));
}

std::string TTable_Reader::Blob(TField field) {
  table.Column(field);
  const TRow_Store& row = Row();
  return table.Guarded("read", [&] {
    TUse use(table.Database.Statement(Blob_Sql(table.Def, field.Position)));
    use->Bind(0, row.Id(at));
    return use->Step() ? std::string(use->Blob(0)) : std::string();
  });
}

void TTable_Reader::Own_Row() {
  Row();
  Copy_Row();
}

void TTable_Reader::Read_Again() {
  Own_Row();
  table.Guarded("edit", [&] {
    TUse use(row_reader.Get(table.Database, [&] { return Row_Sql(columns); }));
    use->Bind(0, batch.Id(at));
    if (!use->Step() || !batch.Read_Again(at, *use))
      throw table.Error("edit", "the row has been deleted meanwhile");
  });
}

void TTable_Reader::Bind_Row(TStatement& statement, int parameter) const {
  statement.Bind(parameter, batch.Id(at));
  batch.Bind(at, 0, statement, parameter + 1);
}

void TTable_Reader::Stand_On_Written(std::int64_t row_id) {
  Stand(TPlace::Row);
  rows = &batch;
  written = row_id;
}

void TTable_Reader::Own_Change() {
  const bool fresh = Fresh();
  table.Changed();
  serial = fresh ? table.Serial() : 0;
}

void TTable_Reader::Set(int column, const TValue& value) {
  const int slot = columns.Slot[static_cast<std::size_t>(column)];
  if (slot >= 0) batch.Set(at, slot, value);
  for (const auto& link : links) link->Column_Changed(column);
}

void TTable_Reader::Read_Column(int column) {
  columns.Add(column);
  batch.Clear();
  next_batch.Clear();
}

void TTable_Reader::Throw_No_Row() const {
  throw table.Error("read", "there is no current row");
}

void TTable_Reader::Throw_Not_Read(TField field) const {
  throw table.Error("read",
                    "column " + Quoted(table.Column(field).Name) + " is not among those this view reads");
}

void TTable_Reader::Stand(TPlace where) {
  place = where;
  written.reset();
  empty = false;
}

void TTable_Reader::Forget_Statements() noexcept {
  finders.clear();
  for (TPrepared& fetcher : fetchers) fetcher.Forget();
  row_reader.Forget();
}

void TTable_Reader::Read_Written() {
  table.Guarded("read", [&] {
    TUse use(row_reader.Get(table.Database, [&] { return Row_Sql(columns); }));
    use->Bind(0, *written);
    if (!use->Step()) throw table.Error("read", "the row has been deleted meanwhile");
    batch.Clear();
    batch.Append(*use);
  });
  written.reset();
  Begin_Batch_With_Row(0);
}

void TTable_Reader::Fetch(TStep step) {
  table.Guarded("read", [&] {
    TPrepared& fetcher = fetchers[(step.Ascending ? 2 : 0) + (step.From_Row ? 1 : 0)];
    TStatement& statement = fetcher.Get(table.Database, [&] {
      std::vector<TJoin> joins;
      for (const auto& link : links) joins.push_back(link->Join());
      return Fetch_Sql(columns, range.Shape(), joins, step);
    });
    next_batch.Clear();
    for (const auto& link : links) link->Begin();
    const std::uint64_t before = table.Serial();
    bool all = true;
    {
      TUse use(statement);
      const int parameter = range.Bind_Step(*use, step, batch, at, Joined_Row(step));
      std::size_t may_examine = test ? Most_Examined : limit;
      use->Bind(parameter, static_cast<std::int64_t>(may_examine));
      const int own_columns = static_cast<int>(columns.Columns.size()) + 1;
      while (use->Step()) {
        if (--may_examine > 0 && test && !test(use->Text(tested))) continue;
        next_batch.Append(*use);
        int column = own_columns;
        std::size_t texts = next_batch.Arena_Size();
        for (const auto& link : links) {
          column = link->Add(*use, column);
          texts += link->Next_Arena_Size();
        }
        if (may_examine == 0 || next_batch.Count() == limit || texts > Largest_Batch_Arena) {
          all = false;
          break;
        }
      }
    }
    std::swap(batch, next_batch);
    next_batch.Clear();
    for (const auto& link : links) link->Take();
    rows = &batch;
    forward = step.Ascending;
    exhausted = all;
    serial = before;
  });
}

std::optional<std::int64_t> TTable_Reader::Joined_Row(TStep step) const {
  for (const auto& link : links) {
    if (!link->Join().Several) continue;
    if (const auto row = Row_In_Batch(); row && *row < link->Rows().Count()) return link->Rows().Id(*row);
    // Not known any more: behind all of them.
    return step.Ascending ? std::numeric_limits<std::int64_t>::max() : 0;
  }
  return {};
}

void TTable_Reader::Begin_Batch_With_Row(std::uint64_t row_serial) {
  rows = &batch;
  at = 0;
  forward = true;
  exhausted = false;
  serial = row_serial;
}

}  // namespace Kt_data_01
