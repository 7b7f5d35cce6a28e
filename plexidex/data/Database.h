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

/// A table view, as its database knows it.
class TTable_Link {
 public:
  /// Called after an update was undone and when the database is closed. Drops the pending row, and range and
  /// position unless the view is a cursor.
  virtual void After_Failure() noexcept = 0;

 protected:
  ~TTable_Link() = default;
};

/// One connection: its prepared statements, its update bracket, and the serials that tell whether rows read
/// earlier are still current. Opened and closed explicitly.
class TDatabase {
 public:
  enum class TMode { Create_If_Missing, Must_Exist };

  TDatabase() = default;
  ~TDatabase() { Close(); }
  TDatabase(const TDatabase&) = delete;
  TDatabase& operator=(const TDatabase&) = delete;

  /// Opens a file and migrates an older schema, or creates a database and its parent folders. Throws
  /// EOpen_Error and changes nothing when the file is not a database, belongs to another program, or has a
  /// newer schema.
  void Open(const std::string& path, TMode mode, const TSqlite_Options& options = {});
  /// Uses an engine whose schema exists. For tests that inject faults between table layer and engine.
  void Adopt(std::unique_ptr<TEngine> adopted);
  /// Rolls back what is still open.
  void Close() noexcept;
  bool Is_Open() const { return engine != nullptr; }
  const std::string& Path() const { return path; }
  /// A number that changes when the database is opened or closed, which ends the life of its statements.
  std::uint64_t Opening() const { return opening; }

  TEngine& Engine();
  /// Prepared once and shared by all who use the same text: everybody must reset it after use.
  TStatement& Statement(const std::string& sql);

  bool Start_Update();
  void EndUpdate();
  void FailUpdate(std::string_view tag) noexcept;
  void FailRead(std::string_view tag) noexcept;
  int Bracket_Depth() const { return static_cast<int>(brackets.size()); }
  /// Marks the open bracket as failed. To be called when an operation has thrown.
  void Operation_Failed(const std::string& reason) noexcept;

  void Enter_Snapshot();
  void Leave_Snapshot() noexcept;
  /// Whether a snapshot or a bracket is open, so that no other connection's change becomes visible.
  bool Is_Stable() const { return reading || !brackets.empty(); }

  /// A number that increases with every change of a table. Changes by other connections are noticed when a
  /// snapshot or a bracket begins.
  std::uint64_t Table_Serial(std::size_t table) const { return serials[table]; }
  void Table_Changed(std::size_t table) { ++serials[table]; }
  /// Both move also when the database is opened or closed.
  TChange_Numbers Change_Numbers() const;

  void Attach(TTable_Link* link) { links.push_back(link); }
  void Detach(TTable_Link* link) noexcept;

 private:
  struct TBracket {
    int Exceptions;  // how many were in flight when it began
    bool Failed = false;
    std::string Reason;
  };

  void Undo_Bracket() noexcept;
  void All_Changed() noexcept;
  void Notice_External_Changes();
  void Show_Reports() noexcept;
  static void Refuse(const std::string& reason);

  std::unique_ptr<TEngine> engine;
  std::string path;
  std::uint64_t opening = 0;
  std::unordered_map<std::string, std::unique_ptr<TStatement>> statements;
  std::vector<TBracket> brackets;
  bool beginning = false;         // the outermost one, and may be waiting for another program
  bool closed_as_failed = false;  // the last bracket was undone by EndUpdate and awaits its FailUpdate
  bool uncertain = false;         // its commit failed in the middle
  int snapshots = 0;
  bool reading = false;
  std::int64_t external_changes = 0;
  std::uint64_t times_changed_by_others = 0;
  std::vector<std::uint64_t> serials = std::vector<std::uint64_t>(Schema().size(), 1);
  std::vector<TTable_Link*> links;
  std::vector<std::pair<std::string, std::string>> reports;  // caption, text
};

/// Keeps a prepared statement at hand; prepares it at first use, and again after the database was reopened.
class TPrepared {
 public:
  /// Calls `text` for the SQL only when the statement has to be prepared.
  template <class TText>
  TStatement& Get(TDatabase& database, TText text) {
    if (!statement || opening != database.Opening()) {
      statement = &database.Statement(text());
      opening = database.Opening();
    }
    return *statement;
  }
  /// To be called when the SQL would now be different.
  void Forget() noexcept { statement = nullptr; }

 private:
  TStatement* statement = nullptr;
  std::uint64_t opening = 0;
};

/// The database that the module's tables belong to.
TDatabase& Shared_Database();

/// Opens the shared database, or closes it. Its owner becomes the current user, or while it has users nobody,
/// who may do nothing: see Login.h.
void Open_Database(const std::string& path, TDatabase::TMode mode, const TSqlite_Options& options = {});
void Close_Database() noexcept;

}  // namespace Kt_data_01
