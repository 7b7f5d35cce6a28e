#include <algorithm>

#include "Filter.h"
#include "Table_View.h"

namespace Kt_data_01 {

void TTable::TImpl::Set_Index(std::string_view wanted) {
  const TIndex_Def* found = nullptr;
  if (!wanted.empty()) {
    found = def.Index(wanted);
    if (!found) throw Error("index", "there is no index \"" + std::string(wanted) + "\"");
  }
  Cancel();
  if (found == index && low.empty() && high.empty()) {
    Forget_Position();
    return;
  }
  index = found;
  index_columns.clear();
  if (index) {
    for (const std::string_view column : index->Columns) index_columns.push_back(def.Column(column));
  }
  // The walk continues from the index's columns of the last row, whether the view's user reads them or not.
  for (const int column : index_columns) Add_Column(projection, column);
  batch.Clear();
  cache.reset();
  caches = index && index->Unique && index_columns.size() == 1 &&
           def.Columns[static_cast<std::size_t>(index_columns[0])].Type == TColumn_Type::Text;
  low.clear();
  high.clear();
  eq_prefix = 0;
  Forget_Position();
  Forget_Statements();
}

bool TTable::TImpl::FindKey(TValues key) {
  Cancel();
  if (!index || key.size() == 0 || key.size() > index_columns.size())
    throw Error("find", "the key does not fit the index");
  if (caches && !filtered() && database.Is_Stable()) {
    if (linked_from && Find_Linked(key.begin()->Text())) return place == TPlace::Row;
    if (caching) return Find_Cached(key.begin()->Text());
  }
  return Guarded("find", [&] {
    Check_Opening();
    if (finders.size() < key.size()) finders.resize(index_columns.size());
    TStatement*& finder = finders[key.size() - 1];
    if (!finder) {
      finder = &database.Statement(Finder_Sql(key.size()));
    }
    TUse use(*finder);
    int parameter = 0;
    for (const TValue& value : key) Bind(*use, parameter++, value);
    batch.Clear();
    const bool found = use->Step();
    if (found) batch.Append(*use);
    Stand(found ? TPlace::Row : TPlace::End);
    rows = &batch;
    at = 0;
    forward = true;
    exhausted = false;
    stamp = database.Table_Serial(number);
    limit = First_Size();
    return found;
  });
}

void TTable::TImpl::SetRange(TValues from, TValues to) {
  Cancel();
  if (from.size() > index_columns.size() || to.size() > index_columns.size()) {
    throw Error("range", "the key does not fit the index");
  }
  const std::size_t low_size = low.size(), high_size = high.size(), old_prefix = eq_prefix;
  Assign(low, from);
  Assign(high, to);
  eq_prefix = 0;
  while (eq_prefix < low.size() && eq_prefix < high.size() && low[eq_prefix] == high[eq_prefix]) ++eq_prefix;
  Forget_Position();
  if (low_size != low.size() || high_size != high.size() || old_prefix != eq_prefix) Forget_Statements();
}

void TTable::TImpl::CancelRange() {
  Cancel();
  if (low.empty() && high.empty()) return;
  low.clear();
  high.clear();
  eq_prefix = 0;
  Forget_Position();
  Forget_Statements();
}

void TTable::TImpl::Set_Filter(std::string_view expression) {
  Cancel();
  const std::string condition = expression.empty() ? std::string() : Filter_Condition(def, expression);
  if (condition == filter) return;
  filter = condition;
  Forget_Position();
  Forget_Statements();
}

void TTable::TImpl::Go_To_End(bool first) {
  Cancel();
  limit = First_Size();
  Fetch(first, false);
  Stand(batch.Count() ? TPlace::Row : TPlace::End);
  bof = batch.Count() == 0;
  at = 0;
}

void TTable::TImpl::Move(bool onward) {
  Cancel();
  if (place == TPlace::None) return Go_To_End(onward);
  if (place == TPlace::End && onward) return;
  if (place == TPlace::Start && !onward) return;
  if (place == TPlace::End || place == TPlace::Start) return Go_To_End(place == TPlace::Start);
  Load();
  if (rows == &batch && forward == onward && Fresh()) {
    if (at + 1 < batch.Count()) {
      ++at;
      return;
    }
    if (exhausted) return Stand(onward ? TPlace::End : TPlace::Start);
  }
  if (rows != &batch) To_Batch();
  if (forward == onward) {
    limit = std::min(limit * 4, Largest_Batch);
  } else {
    limit = First_Size();
  }
  if (!Fresh()) limit = First_Size();
  Fetch(onward, true);
  at = 0;
  Stand(batch.Count() ? TPlace::Row : onward ? TPlace::End : TPlace::Start);
}

std::int64_t TTable::TImpl::Record_Count() {
  return Guarded("count", [&] {
    Check_Opening();
    TUse use(database.Statement("SELECT count(*)" + From() + Where(true, false)));
    Bind_Range(*use, true, false);
    return use->Step() ? use->Integer(0) : 0;
  });
}

std::string_view TTable::TImpl::Text(TField field) {
  if (const TOwned_Value* value = Pending(field)) return value->Text;
  if (state == TState::Insert) return {};
  return Row().Text(at, Slot(field));
}

TText TTable::TImpl::Shared_Text(TField field) {
  if (Pending(field) || state == TState::Insert) return TText(Text(field));
  return Row().Shared_Text(at, Slot(field));
}

std::int64_t TTable::TImpl::Integer(TField field) {
  if (const TOwned_Value* value = Pending(field)) {
    return value->Kind == TValue::TKind::Real ? static_cast<std::int64_t>(value->Real) : value->Integer;
  }
  if (state == TState::Insert) return Column(field).Default;
  if (Column(field).Type == TColumn_Type::DateTime)
    return static_cast<std::int64_t>(Row().Real(at, Slot(field)));
  return Row().Integer(at, Slot(field));
}

double TTable::TImpl::Real(TField field) {
  if (const TOwned_Value* value = Pending(field)) {
    return value->Kind == TValue::TKind::Real ? value->Real : static_cast<double>(value->Integer);
  }
  if (state == TState::Insert) return static_cast<double>(Column(field).Default);
  if (Column(field).Type != TColumn_Type::DateTime)
    return static_cast<double>(Row().Integer(at, Slot(field)));
  return Row().Real(at, Slot(field));
}

std::string TTable::TImpl::Blob(TField field) {
  if (const TOwned_Value* value = Pending(field)) return value->Text;
  if (state == TState::Insert) return {};
  Row();
  return Guarded("read", [&] {
    TUse use(database.Statement("SELECT " + Column_Name(field.Position) + From() + " WHERE d.row_id = ?"));
    use->Bind(0, Row_Id());
    return use->Step() ? std::string(use->Blob(0)) : std::string();
  });
}

void TTable::TImpl::Add_Column(TProjection& to, int column) const {
  const auto position = static_cast<std::size_t>(column);
  if (to.Slot[position] >= 0 || def.Columns[position].Type == TColumn_Type::Blob) return;
  to.Slot[position] = static_cast<int>(to.Columns.size());
  to.Columns.push_back(column);
  to.Types.push_back(def.Columns[position].Type);
}

TProjection TTable::TImpl::Project(std::initializer_list<std::string_view> columns) const {
  TProjection made;
  made.Table = &def;
  made.Slot.assign(def.Columns.size(), -1);
  Add_Column(made, 0);  // tells a row from another that has got its number
  if (columns.size() == 0) {
    for (std::size_t i = 0; i < def.Columns.size(); ++i) Add_Column(made, static_cast<int>(i));
  }
  for (const std::string_view column : columns) Add_Column(made, def.Known_Column(column));
  return made;
}

const TColumn_Def& TTable::TImpl::Column(TField field) const {
  if (field.Position < 0) throw Error("read", "no column was named");
  return def.Columns[static_cast<std::size_t>(field.Position)];
}

int TTable::TImpl::Slot(TField field) const {
  const int slot = projection.Slot[static_cast<std::size_t>(field.Position)];
  if (slot < 0)
    throw Error("read", "column " + Bare_Name(field.Position) + " is not among those this view reads");
  return slot;
}

TRow_Store& TTable::TImpl::Row() {
  if (place != TPlace::Row) throw Error("read", "there is no current row");
  Load();
  return *rows;
}

void TTable::TImpl::Load() {
  if (!unloaded) return;
  Guarded("read", [&] {
    TUse use(database.Statement(By_Row_Id_Sql()));
    use->Bind(0, *unloaded);
    batch.Clear();
    if (!use->Step()) throw Error("read", "the row has been deleted meanwhile");
    batch.Append(*use);
  });
  unloaded.reset();
  rows = &batch;
  at = 0;
  forward = true;
  exhausted = false;
  stamp = 0;
}

void TTable::TImpl::Stand(TPlace where) {
  place = where;
  unloaded.reset();
  bof = false;
}

void TTable::TImpl::Forget_Position() noexcept {
  place = TPlace::None;
  unloaded.reset();
  rows = &batch;
  stamp = 0;
}

void TTable::TImpl::Forget_Statements() noexcept {
  finders.clear();
  std::fill(std::begin(fetchers), std::end(fetchers), nullptr);
  updaters.clear();
  inserters.clear();
  deleter = nullptr;
}

void TTable::TImpl::Check_Opening() {
  database.Engine();
  if (opening == database.Opening()) return;
  Forget_Statements();
  opening = database.Opening();
}

void TTable::TImpl::Assign(std::vector<TOwned_Value>& target, TValues values) {
  target.resize(values.size());
  std::size_t i = 0;
  for (const TValue& value : values) target[i++].Assign(value);
}

void TTable::TImpl::To_Batch() {
  next_batch.Clear();
  next_batch.Append(*rows, at);
  std::swap(batch, next_batch);
  rows = &batch;
  at = 0;
  forward = true;
  exhausted = false;
  stamp = 0;
}

void TTable::TImpl::Fetch(bool ascending, bool anchored) {
  Guarded("read", [&] {
    Check_Opening();
    TStatement*& fetcher = fetchers[(ascending ? 2 : 0) + (anchored ? 1 : 0)];
    if (!fetcher) fetcher = &database.Statement(Fetch_Sql(ascending, anchored));
    next_batch.Clear();
    for (const auto& link : links) {
      link->Next_Rows.Clear();
      link->Stamp = database.Table_Serial(link->Target->number);
    }
    const std::uint64_t before = database.Table_Serial(number);
    {
      TUse use(*fetcher);
      const int parameter = Bind_Range(*use, ascending, anchored);
      use->Bind(parameter, static_cast<std::int64_t>(limit));
      exhausted = true;
      const int own_columns = static_cast<int>(projection.Columns.size()) + 1;
      while (use->Step()) {
        next_batch.Append(*use);
        int column = own_columns;
        for (const auto& link : links) {
          link->Next_Rows.Append(*use, column);
          column += static_cast<int>(link->Target->projection.Columns.size()) + 1;
        }
        if (next_batch.Count() == limit || next_batch.Arena_Size() > Largest_Batch_Arena) {
          exhausted = false;
          break;
        }
      }
    }
    std::swap(batch, next_batch);
    next_batch.Clear();
    for (const auto& link : links) {
      std::swap(link->Rows, link->Next_Rows);
      link->Next_Rows.Clear();
    }
    rows = &batch;
    forward = ascending;
    stamp = before;
  });
}

EData_Error TTable::TImpl::Error(const char* operation, const std::string& reason) const {
  return EData_Error(operation, name, reason);
}

}  // namespace Kt_data_01
