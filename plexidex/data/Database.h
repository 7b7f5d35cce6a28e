#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Engine.h"
#include "Kt_data_01.h"
#include "Schema.h"
#include "Schema_Update.h"
#include "Sqlite_Engine.h"

namespace Kt_data_01 {

/// Has a table view forget what a failed update may have spoilt.
class TTable_Link {
 public:
  virtual void After_Failure() noexcept = 0;

 protected:
  ~TTable_Link() = default;
};

/// One connection: its statements, its update bracket, and the numbers by which caches and read-ahead notice
/// change. Opened and closed explicitly.
class TDatabase {
 public:
  enum class TMode { Create_If_Missing, Must_Exist };

  TDatabase() = default;
  ~TDatabase() { Close(); }
  TDatabase(const TDatabase&) = delete;
  TDatabase& operator=(const TDatabase&) = delete;

  /// Opens a file, brings an older schema up to date, or makes a new database with its parent folders. Throws
  /// EOpen_Error and changes nothing when the file is no database, one of another program, or of a newer
  /// schema.
  void Open(const std::string& path, TMode mode, const TSqlite_Options& options = {});
  /// Takes an engine whose schema is in place. For tests that put faults between table layer and engine.
  void Adopt(std::unique_ptr<TEngine> new_engine);
  /// Undoes what is still open.
  void Close() noexcept;
  bool Is_Open() const { return engine != nullptr; }
  const std::string& Path() const { return path; }
  /// Counts openings, so that views know when their statements died.
  std::uint64_t Opening() const { return opening; }

  TEngine& Engine();
  /// Prepared once and kept. No user may leave it un-reset.
  TStatement& Statement(const std::string& sql);

  bool Start_Update();
  void EndUpdate();
  void FailUpdate(std::string_view tag) noexcept;
  void FailRead(std::string_view tag) noexcept;
  int Bracket_Depth() const { return static_cast<int>(brackets.size()); }
  /// To be called when an operation has thrown.
  void Operation_Failed(const std::string& reason) noexcept;

  void Enter_Snapshot();
  void Leave_Snapshot() noexcept;
  /// Inside a snapshot or a bracket: nobody else's change can come in between.
  bool Is_Stable() const { return reading || !brackets.empty(); }

  /// A number that moves with every change of a table, by whomever; other connections' changes are noticed at
  /// the beginning of a snapshot or bracket.
  std::uint64_t Table_Serial(std::size_t table) const { return serials[table]; }
  void Table_Changed(std::size_t table) { ++serials[table]; }

  void Attach(TTable_Link* link) { links.push_back(link); }
  void Detach(TTable_Link* link) noexcept;

 private:
  struct TBracket {
    int Exceptions;  // under way when it began
    bool Failed = false;
    std::string Reason;
  };

  void Undo_Bracket() noexcept;
  void All_Changed() noexcept;
  void Notice_External_Changes();
  void Show_Reports() noexcept;
  void Refuse(const std::string& reason);

  std::unique_ptr<TEngine> engine;
  std::string path;
  std::uint64_t opening = 0;
  std::unordered_map<std::string, std::unique_ptr<TStatement>> statements;
  std::vector<TBracket> brackets;
  bool closed_as_failed = false;  // the last bracket was undone by EndUpdate and awaits its FailUpdate
  int snapshots = 0;
  bool reading = false;
  std::int64_t external_changes = 0;
  std::vector<std::uint64_t> serials = std::vector<std::uint64_t>(Schema().size(), 1);
  std::vector<TTable_Link*> links;
  std::vector<std::pair<std::string, std::string>> reports;  // caption, text
  std::string last_refusal;
};

/// A statement of one user, prepared when it is first needed, and again when the database has been opened
/// anew.
class TPrepared {
 public:
  /// `text` is called for the statement's text only where it has to be prepared.
  template <class TText>
  TStatement& Get(TDatabase& database, TText text) {
    if (!statement || opening != database.Opening()) {
      statement = &database.Statement(text());
      opening = database.Opening();
    }
    return *statement;
  }
  /// To be called when the text would be another.
  void Forget() noexcept { statement = nullptr; }

 private:
  TStatement* statement = nullptr;
  std::uint64_t opening = 0;
};

/// The database that the module's tables belong to.
TDatabase& Shared_Database();

/// Opens the shared database and makes its owner the current user, or closes it.
void Open_Database(const std::string& path, TDatabase::TMode mode, const TSqlite_Options& options = {});
void Close_Database() noexcept;

}  // namespace Kt_data_01
