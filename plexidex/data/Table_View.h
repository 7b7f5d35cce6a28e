#pragma once

// A table's view from the inside. Navigation is in Table_Walk.cpp, the engine's statements in Table_Sql.cpp,
// what is found without asking in Table_Lookup.cpp, pending rows in Table_Write.cpp.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Database.h"
#include "Owned_Value.h"
#include "Row_Store.h"
#include "Sql_Text.h"

namespace Kt_data_01 {

// How many rows are read ahead at first, and at most.
inline constexpr std::size_t First_Batch = 32;
inline constexpr std::size_t First_Cached_Batch = 512;
inline constexpr std::size_t Largest_Batch = 8192;
inline constexpr std::size_t Largest_Batch_Arena = 64 << 20;

class TTable::TImpl final : public TTable_Link {
 public:
  TImpl(TDatabase& database, const TTable_Def& def, bool is_cursor,
        std::initializer_list<std::string_view> columns)
      : database(database),
        def(def),
        name(def.Name),
        number(Table_Number(def)),
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

  void Set_Index(std::string_view wanted);
  bool FindKey(TValues key);
  void SetRange(TValues from, TValues to);
  void CancelRange();
  void Set_Filter(std::string_view expression);
  void Go_To_End(bool first);
  void Move(bool onward);
  bool Eof() const { return place == TPlace::End; }
  bool Bof() const { return place == TPlace::Start || (place == TPlace::End && bof); }

  std::int64_t Record_Count();

  std::string_view Text(TField field);
  TText Shared_Text(TField field);
  std::int64_t Integer(TField field);
  double Real(TField field);
  std::string Blob(TField field);

  void Insert();
  void Edit();
  void Cancel() noexcept;
  void Set(TField field, const TValue& value);
  void SetFields(TValues values);
  void Post();
  void Delete();
  void Prefetch(TImpl& target, TField via);
  void Cache_On();
  void Cache_Off();
  const TTable_Def& Def() const { return def; }
  TDatabase& Database() const { return database; }
  const std::string& Name() const { return name; }

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
  EData_Error Error(const char* operation, const std::string& reason) const;

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

  void Add_Column(TProjection& to, int column) const;
  TProjection Project(std::initializer_list<std::string_view> columns) const;
  const TColumn_Def& Column(TField field) const;
  std::string Column_Name(int column) const { return Column_Sql(def, column); }
  std::string Bare_Name(int column) const;
  int Slot(TField field) const;
  const TOwned_Value* Pending(TField field) const;
  TRow_Store& Row();

  std::int64_t Row_Id() const { return unloaded ? *unloaded : rows->Id(at); }

  // Reads the row that was written last, if somebody wants to know it.
  void Load();
  bool filtered() const { return !filter.empty(); }
  bool Fresh() const { return stamp == database.Table_Serial(number); }
  std::size_t First_Size() const { return caching ? First_Cached_Batch : First_Batch; }

  void Stand(TPlace where);
  void Forget_Position() noexcept;
  void Forget_Statements() noexcept;
  void Check_Opening();
  static void Assign(std::vector<TOwned_Value>& target, TValues values);
  void To_Batch();
  std::string Order(std::size_t from, bool ascending) const;

  // "(a, b) >= (?, ?)" over index columns `from` up to `to`, with the row number behind them when wanted.
  std::string Tuple_Condition(std::size_t from, std::size_t to, bool with_row_id,
                              const char* comparison) const;
  std::string From() const { return " FROM " + Quoted(name) + " d"; }

  std::string By_Row_Id_Sql() const;
  std::string Finder_Sql(std::size_t key_columns) const;
  std::string Where(bool ascending, bool anchored) const;
  std::string Fetch_Sql(bool ascending, bool anchored) const;

  // Gives Where its values and returns the number of the parameter that follows them.
  int Bind_Range(TStatement& statement, bool ascending, bool anchored) const;
  void Bind_Cell(TStatement& statement, int parameter, int column) const;

  // Reads the next rows in one direction: from the end of the range, or following the row at `at`.
  void Fetch(bool ascending, bool anchored);

  // False when the row did not come along, or may have changed since.
  bool Find_Linked(std::string_view key);
  bool Find_Cached(std::string_view key);
  void Look_Up(std::string_view key);
  void Write_Insert();
  int Bind_Pending(TStatement& statement);
  void Write_Edit();

  // Counts a change that the rows read ahead by this view already take into account.
  void Own_Change();

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
  TColumn_Set set = 0;  // columns set in the pending row, a bit each

  std::uint64_t opening = 0;
  std::vector<TStatement*> finders;  // by number of key columns
  TStatement* fetchers[4] = {};
  std::map<TColumn_Set, TStatement*> inserters, updaters;
  TStatement* deleter = nullptr;
};

}  // namespace Kt_data_01
