#include <algorithm>
#include <map>
#include <optional>

#include "Database.h"
#include "Filter.h"
#include "Row_Store.h"

namespace Kt_data_01 {

namespace {

constexpr std::size_t First_Batch = 32;
constexpr std::size_t First_Cached_Batch = 512;
constexpr std::size_t Largest_Batch = 8192;
constexpr std::size_t Largest_Batch_Arena = 64 << 20;
// A cached table of which this share has been looked up row by row is cheaper to scan as a whole.
constexpr std::size_t Scan_Share = 8;

struct TOwned_Value {
  TValue::TKind Kind = TValue::TKind::Integer;
  std::int64_t Integer = 0;
  double Real = 0;
  std::string Text;

  void Assign(const TValue& value) {
    Kind = value.Kind();
    switch (Kind) {
      case TValue::TKind::Integer:
        Integer = value.Integer();
        break;
      case TValue::TKind::Real:
        Real = value.Real();
        break;
      case TValue::TKind::Text:
        Text = value.Text();
        break;
    }
  }
  void Bind(TStatement& statement, int parameter) const {
    switch (Kind) {
      case TValue::TKind::Integer:
        statement.Bind(parameter, Integer);
        break;
      case TValue::TKind::Real:
        statement.Bind(parameter, Real);
        break;
      case TValue::TKind::Text:
        statement.Bind(parameter, std::string_view(Text));
        break;
    }
  }
  friend bool operator==(const TOwned_Value& a, const TOwned_Value& b) {
    if (a.Kind != b.Kind) return false;
    switch (a.Kind) {
      case TValue::TKind::Integer:
        return a.Integer == b.Integer;
      case TValue::TKind::Real:
        return a.Real == b.Real;
      default:
        return a.Text == b.Text;
    }
  }
};

void Bind(TStatement& statement, int parameter, const TValue& value) {
  switch (value.Kind()) {
    case TValue::TKind::Integer:
      statement.Bind(parameter, value.Integer());
      break;
    case TValue::TKind::Real:
      statement.Bind(parameter, value.Real());
      break;
    case TValue::TKind::Text:
      statement.Bind(parameter, value.Text());
      break;
  }
}

std::string Quoted(std::string_view name) {
  return "\"" + std::string(name) + "\"";
}

// Resets a statement however its use ends.
class TUse {
 public:
  explicit TUse(TStatement& statement) : statement(statement) {}
  ~TUse() { statement.Reset(); }
  TUse(const TUse&) = delete;
  TUse& operator=(const TUse&) = delete;
  TStatement* operator->() { return &statement; }
  TStatement& operator*() { return statement; }

 private:
  TStatement& statement;
};

std::size_t Def_Number(const TTable_Def& def) {
  return static_cast<std::size_t>(&def - Schema().data());
}

}  // namespace

class TTable::TImpl final : public TTable_Link {
 public:
  TImpl(TDatabase& database, const TTable_Def& def, bool is_cursor,
        std::initializer_list<std::string_view> columns)
      : database(database),
        def(def),
        name(def.Name),
        number(Def_Number(def)),
        is_cursor(is_cursor),
        projection(Project(columns)),
        batch(projection),
        next_batch(projection),
        pending(def.Columns.size()) {
    database.Attach(this);
  }
  ~TImpl() { database.Detach(this); }
  TImpl(const TImpl&) = delete;
  TImpl& operator=(const TImpl&) = delete;

  void After_Failure() noexcept override {
    Cancel();
    if (is_cursor) return;
    low.clear();
    high.clear();
    eq_prefix = 0;
    Forget_Position();
    Forget_Statements();
  }

  // ---- navigation

  void Set_Index(std::string_view wanted) {
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

  bool FindKey(TValues key) {
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

  void SetRange(TValues from, TValues to) {
    Cancel();
    if (from.size() > index_columns.size() || to.size() > index_columns.size()) {
      throw Error("range", "the key does not fit the index");
    }
    const std::size_t low_size = low.size(), high_size = high.size(), old_prefix = eq_prefix;
    Assign(low, from);
    Assign(high, to);
    eq_prefix = 0;
    while (eq_prefix < low.size() && eq_prefix < high.size() && low[eq_prefix] == high[eq_prefix])
      ++eq_prefix;
    Forget_Position();
    if (low_size != low.size() || high_size != high.size() || old_prefix != eq_prefix) Forget_Statements();
  }

  void CancelRange() {
    Cancel();
    if (low.empty() && high.empty()) return;
    low.clear();
    high.clear();
    eq_prefix = 0;
    Forget_Position();
    Forget_Statements();
  }

  void Set_Filter(std::string_view expression) {
    Cancel();
    const std::string condition = expression.empty() ? std::string() : Filter_Condition(def, expression);
    if (condition == filter) return;
    filter = condition;
    Forget_Position();
    Forget_Statements();
  }

  void Go_To_End(bool first) {
    Cancel();
    limit = First_Size();
    Fetch(first, false);
    Stand(batch.Count() ? TPlace::Row : TPlace::End);
    bof = batch.Count() == 0;
    at = 0;
  }

  void Move(bool onward) {
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

  bool Eof() const { return place == TPlace::End; }
  bool Bof() const { return place == TPlace::Start || (place == TPlace::End && bof); }

  std::int64_t Record_Count() {
    return Guarded("count", [&] {
      Check_Opening();
      TUse use(database.Statement("SELECT count(*)" + From() + Where(true, false)));
      Bind_Range(*use, true, false);
      return use->Step() ? use->Integer(0) : 0;
    });
  }

  // ---- reading

  std::string_view Text(TField field) {
    if (const TOwned_Value* value = Pending(field)) return value->Text;
    if (state == TState::Insert) return {};
    return Row().Text(at, Slot(field));
  }
  TText Shared_Text(TField field) {
    if (Pending(field) || state == TState::Insert) return TText(Text(field));
    return Row().Shared_Text(at, Slot(field));
  }
  std::int64_t Integer(TField field) {
    if (const TOwned_Value* value = Pending(field)) {
      return value->Kind == TValue::TKind::Real ? static_cast<std::int64_t>(value->Real) : value->Integer;
    }
    if (state == TState::Insert) return Column(field).Default;
    if (Column(field).Type == TColumn_Type::DateTime)
      return static_cast<std::int64_t>(Row().Real(at, Slot(field)));
    return Row().Integer(at, Slot(field));
  }
  double Real(TField field) {
    if (const TOwned_Value* value = Pending(field)) {
      return value->Kind == TValue::TKind::Real ? value->Real : static_cast<double>(value->Integer);
    }
    if (state == TState::Insert) return static_cast<double>(Column(field).Default);
    if (Column(field).Type != TColumn_Type::DateTime)
      return static_cast<double>(Row().Integer(at, Slot(field)));
    return Row().Real(at, Slot(field));
  }
  std::string Blob(TField field) {
    if (const TOwned_Value* value = Pending(field)) return value->Text;
    if (state == TState::Insert) return {};
    Row();
    return Guarded("read", [&] {
      TUse use(database.Statement("SELECT " + Column_Name(field.Position) + From() + " WHERE d.row_id = ?"));
      use->Bind(0, Row_Id());
      return use->Step() ? std::string(use->Blob(0)) : std::string();
    });
  }

  // ---- writing

  void Insert() {
    Cancel();
    state = TState::Insert;
  }

  void Edit() {
    Cancel();
    Row();
    if (rows != &batch) To_Batch();
    Guarded("edit", [&] {
      TUse use(database.Statement(By_Row_Id_Sql()));
      use->Bind(0, batch.Id(at));
      if (!use->Step() || use->Text(1) != batch.Text(at, 0))
        throw Error("edit", "the row has been deleted meanwhile");
      int column = 1;
      for (const TColumn_Type type : projection.Types) {
        const int slot = column - 1;
        switch (type) {
          case TColumn_Type::Text:
            if (use->Text(column) != batch.Text(at, slot)) batch.Set(at, slot, use->Text(column));
            break;
          case TColumn_Type::DateTime:
            batch.Set(at, slot, use->Real(column));
            break;
          default:
            batch.Set(at, slot, use->Integer(column));
            break;
        }
        ++column;
      }
    });
    state = TState::Edit;
  }

  void Cancel() noexcept {
    if (state == TState::Browse) return;
    state = TState::Browse;
    set = 0;
  }

  void Set(TField field, const TValue& value) {
    if (state == TState::Browse) throw Error("set", "the row is neither being inserted nor edited");
    TOwned_Value& slot = pending[static_cast<std::size_t>(field.Position)];
    slot.Assign(value);
    // What a column holds is decided by the table, not by the type that the caller happened to have.
    const TColumn_Type type = Column(field).Type;
    const bool is_text = type == TColumn_Type::Text || type == TColumn_Type::Blob;
    if (is_text != (slot.Kind == TValue::TKind::Text)) {
      throw Error("set", "column " + Bare_Name(field.Position) + " does not take such a value");
    }
    if (type == TColumn_Type::DateTime && slot.Kind == TValue::TKind::Integer) {
      slot.Real = static_cast<double>(slot.Integer);
      slot.Kind = TValue::TKind::Real;
    } else if (!is_text && type != TColumn_Type::DateTime && slot.Kind == TValue::TKind::Real) {
      slot.Integer = static_cast<std::int64_t>(slot.Real);
      slot.Kind = TValue::TKind::Integer;
    }
    set |= std::uint64_t{1} << field.Position;
  }

  void SetFields(TValues values) {
    if (values.size() > def.Columns.size()) throw Error("set", "there are more values than columns");
    int position = 0;
    for (const TValue& value : values) Set({position++}, value);
  }

  void Post() {
    if (state == TState::Browse) return;
    if (state == TState::Edit && set == 0) return Cancel();
    Guarded("write", [&] {
      if (database.Bracket_Depth() == 0) throw Error("write", "no update is open");
      Check_Opening();
      if (state == TState::Insert) {
        Write_Insert();
      } else {
        Write_Edit();
      }
    });
    state = TState::Browse;
    set = 0;
  }

  void Delete() {
    Cancel();
    Row();
    if (rows != &batch) To_Batch();
    Guarded("delete", [&] {
      if (database.Bracket_Depth() == 0) throw Error("delete", "no update is open");
      Check_Opening();
      if (!deleter) {
        deleter = &database.Statement("DELETE FROM " + Quoted(name) + " WHERE row_id = ? AND " +
                                      Bare_Name(0) + " = ?");
      }
      {
        TUse use(*deleter);
        use->Bind(0, batch.Id(at));
        use->Bind(1, batch.Text(at, 0));
        use->Step();
      }
      if (database.Engine().Rows_Changed() == 0) throw Error("delete", "the row has been deleted meanwhile");
      Own_Change();
    });
    Move(true);
  }

  void Prefetch(TImpl& target, TField via) {
    if (!target.caches) throw Error("prefetch", "the other table has no unique index to be found by");
    links.push_back(std::make_unique<TLink>(target, via.Position));
    Add_Column(projection, via.Position);
    target.linked_from = this;
    target.link_number = links.size() - 1;
    Forget_Position();
    Forget_Statements();
  }

  void Cache_On() {
    caching = true;
    limit = First_Size();
  }
  void Cache_Off() {
    if (rows == (cache ? &cache->Rows() : nullptr) && place == TPlace::Row) To_Batch();
    caching = false;
    cache.reset();
  }

  const TTable_Def& Def() const { return def; }
  TDatabase& Database() const { return database; }
  const std::string& Name() const { return name; }
  bool Is_Writing() const { return state != TState::Browse; }

 private:
  // Rows of another table that come along with the batch, one for each of its rows.
  struct TLink {
    TLink(TImpl& target, int via)
        : Target(&target), Via(via), Rows(target.projection), Next_Rows(target.projection) {}
    TImpl* Target;
    int Via;
    TRow_Store Rows, Next_Rows;
    std::uint64_t Stamp = 0;
  };

  enum class TPlace { None, Row, Start, End };
  enum class TState { Browse, Insert, Edit };

  EData_Error Error(const char* operation, const std::string& reason) const {
    return EData_Error(operation, name, reason);
  }

  // Runs an operation on the engine: what it throws becomes one kind of error and fails the open bracket.
  template <class TBody>
  auto Guarded(const char* operation, TBody body) -> decltype(body()) {
    try {
      return body();
    } catch (const EData_Error& e) {
      database.Operation_Failed(e.what());
      throw;
    } catch (const std::exception& e) {
      const EData_Error error = Error(operation, e.what());
      if (database.Is_Open()) database.Operation_Failed(error.what());
      throw error;
    }
  }

  void Add_Column(TProjection& to, int column) const {
    const auto position = static_cast<std::size_t>(column);
    if (to.Slot[position] >= 0 || def.Columns[position].Type == TColumn_Type::Blob) return;
    to.Slot[position] = static_cast<int>(to.Columns.size());
    to.Columns.push_back(column);
    to.Types.push_back(def.Columns[position].Type);
  }

  TProjection Project(std::initializer_list<std::string_view> columns) const {
    TProjection made;
    made.Table = &def;
    made.Slot.assign(def.Columns.size(), -1);
    Add_Column(made, 0);  // tells a row from another that has got its number
    if (columns.size() == 0) {
      for (std::size_t i = 0; i < def.Columns.size(); ++i) Add_Column(made, static_cast<int>(i));
    }
    for (const std::string_view column : columns) {
      const int position = def.Column(column);
      if (position < 0) throw EData_Error("open", name, "there is no column \"" + std::string(column) + "\"");
      Add_Column(made, position);
    }
    return made;
  }

  const TColumn_Def& Column(TField field) const {
    if (field.Position < 0) throw Error("read", "no column was named");
    return def.Columns[static_cast<std::size_t>(field.Position)];
  }
  std::string Column_Name(int column) const { return "d." + Bare_Name(column); }
  std::string Bare_Name(int column) const {
    return Quoted(def.Columns[static_cast<std::size_t>(column)].Name);
  }

  int Slot(TField field) const {
    const int slot = projection.Slot[static_cast<std::size_t>(field.Position)];
    if (slot < 0)
      throw Error("read", "column " + Bare_Name(field.Position) + " is not among those this view reads");
    return slot;
  }

  const TOwned_Value* Pending(TField field) const {
    if (state == TState::Browse || !(set >> field.Position & 1)) return nullptr;
    return &pending[static_cast<std::size_t>(field.Position)];
  }

  TRow_Store& Row() {
    if (place != TPlace::Row) throw Error("read", "there is no current row");
    Load();
    return *rows;
  }

  std::int64_t Row_Id() const { return unloaded ? *unloaded : rows->Id(at); }

  // Reads the row that was written last, if somebody wants to know it.
  void Load() {
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

  bool filtered() const { return !filter.empty(); }
  bool Fresh() const { return stamp == database.Table_Serial(number); }
  std::size_t First_Size() const { return caching ? First_Cached_Batch : First_Batch; }

  void Stand(TPlace where) {
    place = where;
    unloaded.reset();
    bof = false;
  }

  void Forget_Position() noexcept {
    place = TPlace::None;
    unloaded.reset();
    rows = &batch;
    stamp = 0;
  }

  void Forget_Statements() noexcept {
    finders.clear();
    std::fill(std::begin(fetchers), std::end(fetchers), nullptr);
    updaters.clear();
    inserters.clear();
    deleter = nullptr;
  }

  void Check_Opening() {
    database.Engine();
    if (opening == database.Opening()) return;
    Forget_Statements();
    opening = database.Opening();
  }

  static void Assign(std::vector<TOwned_Value>& target, TValues values) {
    target.resize(values.size());
    std::size_t i = 0;
    for (const TValue& value : values) target[i++].Assign(value);
  }

  void To_Batch() {
    next_batch.Clear();
    next_batch.Append(*rows, at);
    std::swap(batch, next_batch);
    rows = &batch;
    at = 0;
    forward = true;
    exhausted = false;
    stamp = 0;
  }

  std::string Order(std::size_t from, bool ascending) const {
    std::string order = " ORDER BY ";
    const char* direction = ascending ? "" : " DESC";
    for (std::size_t i = from; i < index_columns.size(); ++i)
      order += Column_Name(index_columns[i]) + direction + ", ";
    return order + "d.row_id" + direction;
  }

  // "(a, b) >= (?, ?)" over index columns `from` up to `to`, with the row number behind them when wanted.
  std::string Tuple_Condition(std::size_t from, std::size_t to, bool with_row_id,
                              const char* comparison) const {
    std::string left, right;
    for (std::size_t i = from; i < to; ++i) {
      left += (left.empty() ? "" : ", ") + Column_Name(index_columns[i]);
      right += right.empty() ? "?" : ", ?";
    }
    if (with_row_id) {
      left += left.empty() ? "d.row_id" : ", d.row_id";
      right += right.empty() ? "?" : ", ?";
    }
    if (left.find(',') == std::string::npos) return left + comparison + right;
    return "(" + left + ")" + comparison + "(" + right + ")";
  }

  std::string From() const { return " FROM " + Quoted(name) + " d"; }

  std::string By_Row_Id_Sql() const {
    return "SELECT " + projection.Select_List("d") + From() + " WHERE d.row_id = ?";
  }

  std::string Finder_Sql(std::size_t key_columns) const {
    std::string sql = "SELECT " + projection.Select_List("d") + From() + " WHERE ";
    for (std::size_t i = 0; i < key_columns; ++i)
      sql += (i ? " AND " : "") + Column_Name(index_columns[i]) + " = ?";
    if (filtered()) sql += " AND (" + filter + ")";
    if (index->Unique && key_columns == index_columns.size()) return sql;
    return sql + Order(key_columns, true) + " LIMIT 1";
  }

  std::string Where(bool ascending, bool anchored) const {
    std::vector<std::string> conditions;
    for (std::size_t i = 0; i < eq_prefix; ++i) conditions.push_back(Column_Name(index_columns[i]) + " = ?");
    if (anchored) {
      conditions.push_back(Tuple_Condition(eq_prefix, index_columns.size(), true, ascending ? " > " : " < "));
    }
    if (low.size() > eq_prefix && !(anchored && ascending)) {
      conditions.push_back(Tuple_Condition(eq_prefix, low.size(), false, " >= "));
    }
    if (high.size() > eq_prefix && !(anchored && !ascending)) {
      conditions.push_back(Tuple_Condition(eq_prefix, high.size(), false, " <= "));
    }
    if (filtered()) conditions.push_back("(" + filter + ")");
    std::string where;
    for (const std::string& condition : conditions)
      where += (where.empty() ? " WHERE " : " AND ") + condition;
    return where;
  }

  std::string Fetch_Sql(bool ascending, bool anchored) const {
    std::string columns = projection.Select_List("d"), joins;
    int number_of_link = 0;
    for (const auto& link : links) {
      const std::string alias = "l" + std::to_string(number_of_link++);
      columns += ", " + link->Target->projection.Select_List(alias);
      joins +=
          " LEFT JOIN " + Quoted(link->Target->name) + " " + alias + " ON " + alias + "." +
          Quoted(link->Target->def.Columns[static_cast<std::size_t>(link->Target->index_columns[0])].Name) +
          " = " + Column_Name(link->Via);
    }
    return "SELECT " + columns + From() + joins + Where(ascending, anchored) + Order(eq_prefix, ascending) +
           " LIMIT ?";
  }

  // Gives Where its values and returns the number of the parameter that follows them.
  int Bind_Range(TStatement& statement, bool ascending, bool anchored) const {
    int parameter = 0;
    for (std::size_t i = 0; i < eq_prefix; ++i) low[i].Bind(statement, parameter++);
    if (anchored) {
      for (std::size_t i = eq_prefix; i < index_columns.size(); ++i)
        Bind_Cell(statement, parameter++, index_columns[i]);
      statement.Bind(parameter++, batch.Id(at));
    }
    if (!(anchored && ascending)) {
      for (std::size_t i = eq_prefix; i < low.size(); ++i) low[i].Bind(statement, parameter++);
    }
    if (!(anchored && !ascending)) {
      for (std::size_t i = eq_prefix; i < high.size(); ++i) high[i].Bind(statement, parameter++);
    }
    return parameter;
  }

  void Bind_Cell(TStatement& statement, int parameter, int column) const {
    const int slot = projection.Slot[static_cast<std::size_t>(column)];
    switch (projection.Types[static_cast<std::size_t>(slot)]) {
      case TColumn_Type::Text:
        statement.Bind(parameter, batch.Text(at, slot));
        break;
      case TColumn_Type::DateTime:
        statement.Bind(parameter, batch.Real(at, slot));
        break;
      default:
        statement.Bind(parameter, batch.Integer(at, slot));
        break;
    }
  }

  // Reads the next rows in one direction: from the end of the range, or following the row at `at`.
  void Fetch(bool ascending, bool anchored) {
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

  // False when the row did not come along, or may have changed since.
  bool Find_Linked(std::string_view key) {
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

  bool Find_Cached(std::string_view key) {
    if (!cache || cache_stamp != database.Table_Serial(number)) {
      cache = std::make_unique<TRow_Cache>(projection,
                                           projection.Slot[static_cast<std::size_t>(index_columns[0])]);
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

  void Look_Up(std::string_view key) {
    Check_Opening();
    if (!table_rows) {
      TUse use(database.Statement("SELECT max(row_id) FROM " + Quoted(name)));
      table_rows = use->Step() ? static_cast<std::size_t>(use->Integer(0)) : 0;
    }
    if ((cache->Size() + 1) * Scan_Share > *table_rows && cache->Size() >= First_Batch) {
      cache = std::make_unique<TRow_Cache>(projection,
                                           projection.Slot[static_cast<std::size_t>(index_columns[0])]);
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

  void Write_Insert() {
    TStatement*& inserter = inserters[set];
    if (!inserter) {
      std::string names, values;
      for (std::size_t i = 0; i < def.Columns.size(); ++i) {
        if (!(set >> i & 1)) continue;
        names += (names.empty() ? "" : ", ") + Bare_Name(static_cast<int>(i));
        values += values.empty() ? "?" : ", ?";
      }
      inserter = &database.Statement(
          "INSERT INTO " + Quoted(name) +
          (names.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + values + ")"));
    }
    TUse use(*inserter);
    Bind_Pending(*use);
    use->Step();
    database.Table_Changed(number);
    place = TPlace::Row;
    bof = false;
    unloaded = database.Engine().Last_Row_Id();
  }

  int Bind_Pending(TStatement& statement) {
    int parameter = 0;
    for (std::size_t i = 0; i < def.Columns.size(); ++i) {
      if (!(set >> i & 1)) continue;
      if (def.Columns[i].Type == TColumn_Type::Blob) {
        statement.Bind_Blob(parameter++, pending[i].Text);
      } else {
        pending[i].Bind(statement, parameter++);
      }
    }
    return parameter;
  }

  void Write_Edit() {
    TStatement*& updater = updaters[set];
    if (!updater) {
      std::string changes;
      for (std::size_t i = 0; i < def.Columns.size(); ++i) {
        if (set >> i & 1) changes += (changes.empty() ? "" : ", ") + Bare_Name(static_cast<int>(i)) + " = ?";
      }
      updater = &database.Statement("UPDATE " + Quoted(name) + " SET " + changes + " WHERE row_id = ? AND " +
                                    Bare_Name(0) + " = ?");
    }
    {
      TUse use(*updater);
      const int parameter = Bind_Pending(*use);
      use->Bind(parameter, batch.Id(at));
      use->Bind(parameter + 1, batch.Text(at, 0));
      use->Step();
    }
    if (database.Engine().Rows_Changed() == 0) throw Error("write", "the row has been deleted meanwhile");
    bool moved = false;
    for (const int column : index_columns) moved = moved || (set >> column & 1);
    if (moved || filtered()) {
      database.Table_Changed(number);
      unloaded = batch.Id(at);
      return;
    }
    Own_Change();
    for (std::size_t i = 0; i < def.Columns.size(); ++i) {
      const int slot = projection.Slot[i];
      if (!(set >> i & 1) || slot < 0) continue;
      switch (def.Columns[i].Type) {
        case TColumn_Type::Text:
          batch.Set(at, slot, std::string_view(pending[i].Text));
          break;
        case TColumn_Type::DateTime:
          batch.Set(at, slot, pending[i].Real);
          break;
        default:
          batch.Set(at, slot, pending[i].Integer);
          break;
      }
    }
  }

  // Counts a change that the rows read ahead by this view already take into account.
  void Own_Change() {
    const bool fresh = Fresh();
    database.Table_Changed(number);
    stamp = fresh ? database.Table_Serial(number) : 0;
  }

  TDatabase& database;
  const TTable_Def& def;
  const std::string name;
  const std::size_t number;
  const bool is_cursor;
  TProjection projection;

  const TIndex_Def* index = nullptr;
  std::vector<int> index_columns;
  std::vector<TOwned_Value> low, high;
  std::size_t eq_prefix = 0;  // leading columns on which low and high agree
  std::string filter;

  TPlace place = TPlace::None;
  bool bof = false;  // at the end because there is no row at all
  TRow_Store batch, next_batch;
  TRow_Store* rows = &batch;  // the batch or the cache
  std::size_t at = 0;
  std::optional<std::int64_t> unloaded;  // number of the current row when it was written and not read since
  bool forward = true, exhausted = false;
  std::size_t limit = First_Batch;
  std::uint64_t stamp = 0;  // the table's serial when the batch was read; 0 is never fresh

  bool caching = false;
  bool caches = false;  // the index is one that the cache can serve
  std::vector<std::unique_ptr<TLink>> links;
  TImpl* linked_from = nullptr;
  std::size_t link_number = 0;
  std::unique_ptr<TRow_Cache> cache;
  std::uint64_t cache_stamp = 0;
  std::optional<std::size_t> table_rows;  // the largest row number: an upper bound, read in no time

  TState state = TState::Browse;
  std::vector<TOwned_Value> pending;
  std::uint64_t set = 0;  // columns set in the pending row, a bit each

  std::uint64_t opening = 0;
  std::vector<TStatement*> finders;  // by number of key columns
  TStatement* fetchers[4] = {};
  std::map<std::uint64_t, TStatement*> inserters, updaters;
  TStatement* deleter = nullptr;
};

TTable::TTable(std::string_view name) : TTable(Shared_Database(), name) {}
TTable::TTable(TDatabase& database, std::string_view name)
    : impl(std::make_unique<TImpl>(database, Table_Def(name), false,
                                   std::initializer_list<std::string_view>{})) {}
TTable::TTable(TTable& table, std::initializer_list<std::string_view> columns)
    : impl(std::make_unique<TImpl>(table.impl->Database(), table.impl->Def(), true, columns)) {}
TTable::TTable(TTable&&) noexcept = default;
TTable::~TTable() = default;

const std::string& TTable::Name() const {
  return impl->Name();
}

TField TTable::Field(std::string_view column) const {
  const int position = impl->Def().Column(column);
  if (position < 0)
    throw EData_Error("open", impl->Name(), "there is no column \"" + std::string(column) + "\"");
  return {position};
}

void TTable::Set_Index(std::string_view index) {
  impl->Set_Index(index);
}
bool TTable::FindKey(TValues key) {
  return impl->FindKey(key);
}
void TTable::SetRange(TValues low, TValues high) {
  impl->SetRange(low, high);
}
void TTable::CancelRange() {
  impl->CancelRange();
}
void TTable::Set_Filter(std::string_view expression) {
  impl->Set_Filter(expression);
}
void TTable::First() {
  impl->Go_To_End(true);
}
void TTable::Last() {
  impl->Go_To_End(false);
}
void TTable::Next() {
  impl->Move(true);
}
void TTable::Prior() {
  impl->Move(false);
}
bool TTable::Eof() const {
  return impl->Eof();
}
bool TTable::Bof() const {
  return impl->Bof();
}
std::int64_t TTable::Record_Count() const {
  return impl->Record_Count();
}
std::string_view TTable::Text(TField field) const {
  return impl->Text(field);
}
TText TTable::Shared_Text(TField field) const {
  return impl->Shared_Text(field);
}
std::int64_t TTable::Integer(TField field) const {
  return impl->Integer(field);
}
bool TTable::Boolean(TField field) const {
  return impl->Integer(field) != 0;
}
TDateTime TTable::DateTime(TField field) const {
  return impl->Real(field);
}
std::string TTable::Blob(TField field) const {
  return impl->Blob(field);
}
void TTable::Insert() {
  impl->Insert();
}
void TTable::Edit() {
  impl->Edit();
}
void TTable::Cancel() {
  impl->Cancel();
}
void TTable::Set(TField field, const TValue& value) {
  impl->Set(field, value);
}
void TTable::Set_Blob(TField field, std::string_view bytes) {
  impl->Set(field, TValue(bytes));
}
void TTable::SetFields(TValues values) {
  impl->SetFields(values);
}
void TTable::Delete() {
  impl->Delete();
}
void TTable::Prefetch(TField via, TTable& looked_up) {
  impl->Prefetch(*looked_up.impl, via);
}

void PostUpdate(TTable& table) {
  table.impl->Post();
}
void Set_Cache(TTable& table) {
  table.impl->Cache_On();
}
void Cache_Off(TTable& table) {
  table.impl->Cache_Off();
}

TTable Events_Table("KT_Events");
TTable Events_Data("KT_Events_Data");
TTable Alarms_Table("KT_Alarms");
TTable Contacts_Table("KT_Contacts");
TTable Contacts_Data("KT_Contacts_Data");
TTable Books_Table("KT_Books");
TTable Filters_Table("KT_Filters");
TTable Templates_Table("KT_Templates");
TTable Categories_Table("KT_Categories");
TTable Categories_InUse("KT_Categories_InUse");
TTable Fields_Table("KT_Fields");
TTable Flags_Table("KT_Flags");
TTable Links_Table("KT_Links");
TTable Log_Table("KT_Log");

}  // namespace Kt_data_01
