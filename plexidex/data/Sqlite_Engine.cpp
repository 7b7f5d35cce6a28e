#include "Sqlite_Engine.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <random>
#include <sstream>
#include <thread>

namespace Kt_data_01 {

namespace {

// What the system said; not every failure reaches the connection. Whoever asks has cleared errno before.
int Cause(sqlite3* connection) {
  const int cause = sqlite3_system_errno(connection);
  return cause != 0 ? cause : errno;
}

bool Is_Full(sqlite3* connection) {
  const int error = sqlite3_errcode(connection) & 0xff;
  const int cause = Cause(connection);
#ifdef EDQUOT
  if (error == SQLITE_IOERR && cause == EDQUOT) return true;
#endif
  return error == SQLITE_FULL || (error == SQLITE_IOERR && cause == ENOSPC);
}

// What went wrong, for people.
std::string Reason(sqlite3* connection) {
  const int cause = Cause(connection);
  if (Is_Full(connection)) return "the disk is full";
  switch (sqlite3_errcode(connection) & 0xff) {
    case SQLITE_BUSY:
      return "another program is writing to it; try again in a moment";
    case SQLITE_CORRUPT:
      return "the file is damaged";
    case SQLITE_NOTADB:
      return "it is not a database";
    case SQLITE_READONLY:
      return "it is read-only";
    case SQLITE_IOERR:
      return cause == EFBIG ? "the file would become larger than allowed"
                            : std::string("the disk could not be read or written") +
                                  (cause != 0 ? std::string(" (") + std::strerror(cause) + ")" : "");
    default:
      return sqlite3_errmsg(connection);
  }
}

[[noreturn]] void Fail(sqlite3* connection) {
  switch (sqlite3_errcode(connection) & 0xff) {
    case SQLITE_BUSY:
      throw EBusy_Error(Reason(connection));
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      throw EDamage_Error(Reason(connection));
    default:
      throw EEngine_Error(Reason(connection));
  }
}

class TSqlite_Statement final : public TStatement {
 public:
  TSqlite_Statement(sqlite3* connection, std::string_view sql) : connection(connection) {
    if (sqlite3_prepare_v3(connection, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement, nullptr) != SQLITE_OK) {
      Fail(connection);
    }
  }
  ~TSqlite_Statement() override { sqlite3_finalize(statement); }
  TSqlite_Statement(const TSqlite_Statement&) = delete;
  TSqlite_Statement& operator=(const TSqlite_Statement&) = delete;

  void Bind(int parameter, std::int64_t value) override {
    Check(sqlite3_bind_int64(statement, parameter + 1, value));
  }
  void Bind(int parameter, double value) override {
    Check(sqlite3_bind_double(statement, parameter + 1, value));
  }
  void Bind(int parameter, std::string_view text) override {
    // An empty view may have no address, which would bind null.
    Check(sqlite3_bind_text64(statement, parameter + 1, text.empty() ? "" : text.data(), text.size(),
                              SQLITE_STATIC, SQLITE_UTF8));
  }
  void Bind_Blob(int parameter, std::string_view bytes) override {
    Check(sqlite3_bind_blob64(statement, parameter + 1, bytes.empty() ? "" : bytes.data(), bytes.size(),
                              SQLITE_STATIC));
  }

  bool Step() override {
    errno = 0;
    switch (sqlite3_step(statement)) {
      case SQLITE_ROW:
        return true;
      case SQLITE_DONE:
        return false;
      default: {
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> reset(statement, &sqlite3_reset);
        Fail(connection);
      }
    }
  }

  std::int64_t Integer(int column) override { return sqlite3_column_int64(statement, column); }
  double Real(int column) override { return sqlite3_column_double(statement, column); }
  std::string_view Text(int column) override {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
  }
  std::string_view Blob(int column) override {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
  }
  void Reset() noexcept override {
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
  }

 private:
  void Check(int result) {
    if (result != SQLITE_OK) Fail(connection);
  }

  sqlite3* connection;
  sqlite3_stmt* statement = nullptr;
};

class TSqlite_Engine final : public TEngine {
 public:
  TSqlite_Engine(const std::string& path, const TSqlite_Options& options) : options(options) {
    try {
      Connect(path);
      if (!Read_Header()) {
        // The index of the write-ahead log, which connections share in a file, can also lie in the memory of
        // one that has the database to itself.
        sqlite3_close(connection);
        Connect(path);
        Execute("PRAGMA locking_mode = EXCLUSIVE");
        if (!Read_Header()) Fail(connection);
      }
      Execute("PRAGMA foreign_keys = ON");
      Execute("PRAGMA synchronous = FULL");
      // The journals of statements and savepoints need not survive a crash.
      Execute("PRAGMA temp_store = MEMORY");
      Execute("PRAGMA cache_size = " + std::to_string(-options.Cache_Bytes / 1024));
      if (options.Max_Pages > 0) Execute("PRAGMA max_page_count = " + std::to_string(options.Max_Pages));
      data_version = Prepare("PRAGMA data_version");
      begin = Prepare("BEGIN");
    } catch (...) {
      sqlite3_close(connection);
      throw;
    }
  }
  ~TSqlite_Engine() override {
    data_version.reset();
    begin.reset();
    sqlite3_close(connection);
  }
  TSqlite_Engine(const TSqlite_Engine&) = delete;
  TSqlite_Engine& operator=(const TSqlite_Engine&) = delete;

  TIdentity Identify() override {
    return {Read_Number("SELECT count(*) FROM sqlite_schema") == 0, Read_Number("PRAGMA application_id"),
            Read_Number("PRAGMA user_version")};
  }
  void Stamp(std::int64_t program, std::int64_t version) override {
    Execute("PRAGMA application_id = " + std::to_string(program));
    Execute("PRAGMA user_version = " + std::to_string(version));
  }
  std::string Column_Declaration(TColumn_Type type, std::int64_t number) override {
    switch (type) {
      case TColumn_Type::Text:
        return "TEXT NOT NULL DEFAULT ''";
      case TColumn_Type::DateTime:
        return "REAL NOT NULL DEFAULT 0";
      case TColumn_Type::Blob:
        return "BLOB";
      default:
        return "INTEGER NOT NULL DEFAULT " + std::to_string(number);
    }
  }
  std::string Row_Id_Declaration() override { return "INTEGER PRIMARY KEY"; }

  void Prepare_Storage() override {
    if (!sqlite3_db_readonly(connection, "main")) Execute("PRAGMA journal_mode = WAL");
  }

  std::unique_ptr<TStatement> Prepare(std::string_view sql) override {
    return std::make_unique<TSqlite_Statement>(connection, sql);
  }

  void Execute(const std::string& sql) override {
    if (Run(sql.c_str()) != SQLITE_OK) Fail(connection);
  }

  std::optional<std::string> Begin_Write() override {
    const auto since = std::chrono::steady_clock::now();
    for (;;) {
      beginning = true;
      const int result = Run("BEGIN IMMEDIATE");
      beginning = false;
      if (Has_Moved()) {
        Rollback();
        return std::string("the file \"") + sqlite3_db_filename(connection, "main") +
               "\" has been replaced or removed by another program and must be opened again";
      }
      if (result == SQLITE_OK) break;
      const std::string reason = Reason(connection);
      // Who waits here may use the connection, which the engine's own way of waiting forbids.
      if ((result & 0xff) != SQLITE_BUSY || !Wait(since, options.Go_On_Waiting)) return reason;
    }
    // A read-only connection may begin, and fails only at its first write.
    if (!sqlite3_db_readonly(connection, "main")) return {};
    Rollback();
    return "it is read-only";
  }
  void Begin_Read() override {
    begin->Step();
    begin->Reset();
    try {
      External_Changes();  // the snapshot is taken by the first read
    } catch (...) {
      Rollback();
      throw;
    }
  }
  void Commit() override {
    if (Run("COMMIT") == SQLITE_OK) return;
    // All of it was written, and may be found when the log is read anew.
    if (sqlite3_extended_errcode(connection) == SQLITE_IOERR_FSYNC)
      throw EUncertain_Error(Reason(connection));
    Fail(connection);
  }
  void Rollback() noexcept override {
    if (!sqlite3_get_autocommit(connection)) sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  void Begin_Part(int level) override { Execute("SAVEPOINT " + Part_Name(level)); }
  void Keep_Part(int level) override { Execute("RELEASE " + Part_Name(level)); }
  void Undo_Part(int level) override {
    Execute("ROLLBACK TO " + Part_Name(level));
    Keep_Part(level);
  }
  bool In_Transaction() override { return !sqlite3_get_autocommit(connection); }

  std::int64_t Last_Row_Id() override { return sqlite3_last_insert_rowid(connection); }
  std::int64_t Rows_Changed() override { return sqlite3_changes64(connection); }
  std::int64_t External_Changes() override {
    data_version->Step();
    const std::int64_t version = data_version->Integer(0);
    data_version->Reset();
    return version;
  }

  void Copy_To(const std::string& file) override {
    const auto copy = Prepare("VACUUM INTO ?");
    copy->Bind(0, std::string_view(file));
    copy->Step();
  }
  void Replace_By(const std::string& file, const std::function<void()>& first) override {
    TSqlite_Engine source(file, {.Read_Only = true});
    std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> backup(
        sqlite3_backup_init(connection, "main", source.connection, "main"), &sqlite3_backup_finish);
    if (!backup) Fail(connection);
    // A step of no pages takes the lock and no more.
    constexpr int no_page = 0, all_pages = -1;
    const auto since = std::chrono::steady_clock::now();
    errno = 0;
    const auto step = [&](int pages) {
      int result = 0;
      do {
        result = sqlite3_backup_step(backup.get(), pages);
      } while (((result & 0xff) == SQLITE_BUSY || (result & 0xff) == SQLITE_LOCKED) &&
               Wait(since, options.Go_On_Waiting));
      return result;
    };
    int result = step(no_page);
    if (result == SQLITE_OK) {
      first();
      errno = 0;
      result = step(all_pages);
    }
    backup.reset();
    // The connection knows the error once the backup is finished.
    if (result != SQLITE_DONE) Fail(connection);
  }

  std::vector<std::string> Check_Storage() override {
    std::vector<std::string> findings;
    const auto integrity = Prepare("PRAGMA integrity_check");
    while (integrity->Step()) {
      if (integrity->Text(0) == "ok") continue;
      // The problems of one B-tree come as one text of several lines.
      std::istringstream lines{std::string(integrity->Text(0))};
      for (std::string line; std::getline(lines, line);) findings.push_back(line);
    }
    const auto references = Prepare("PRAGMA foreign_key_check");
    while (references->Step()) {
      findings.push_back("a row of " + std::string(references->Text(0)) + " refers to a row of " +
                         std::string(references->Text(2)) + " that is not there");
    }
    return findings;
  }

 private:
  static std::string Part_Name(int level) { return "kt_part_" + std::to_string(level); }

  int Run(const char* sql) {
    errno = 0;
    return sqlite3_exec(connection, sql, nullptr, nullptr, nullptr);
  }

  std::int64_t Read_Number(std::string_view sql) {
    const auto statement = Prepare(sql);
    return statement->Step() ? statement->Integer(0) : 0;
  }

  void Connect(const std::string& path) {
    const int access = options.Read_Only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int result = sqlite3_open_v2(path.c_str(), &connection, access | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK) throw EEngine_Error(connection ? Reason(connection) : sqlite3_errstr(result));
    sqlite3_extended_result_codes(connection, 1);
    sqlite3_busy_handler(connection, &TSqlite_Engine::Is_Busy, this);
    sqlite3_wal_hook(connection, &TSqlite_Engine::Committed, this);
    // A file may come from anywhere: what its schema says is done only as far as it can do no harm.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    Execute("PRAGMA cell_size_check = ON");
  }

  // Whether the file is no longer what stands under its name, so that what is written to it would be lost.
  bool Has_Moved() {
    int moved = 0;
    return sqlite3_file_control(connection, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
           moved != 0;
  }

  // A file that is not a database must be noticed before anything is done to it. False when the full disk has
  // no room for the files that connections share.
  bool Read_Header() {
    if (Run("PRAGMA schema_version") == SQLITE_OK) return true;
    if (Is_Full(connection)) return false;
    // Readers share the write-ahead log, whose files lie beside the database.
    const int error = sqlite3_errcode(connection) & 0xff;
    if (error == SQLITE_READONLY || error == SQLITE_CANTOPEN)
      throw EEngine_Error("its folder must be writable, even for reading");
    Fail(connection);
  }

  // Lets some time pass; false when it is time to give up. Who has waited for long looks more often than a
  // newcomer, and so comes first.
  bool Wait(std::chrono::steady_clock::time_point since,
            const decltype(TSqlite_Options::Go_On_Waiting)& ask) {
    using namespace std::chrono;
    const auto waited = duration_cast<milliseconds>(steady_clock::now() - since);
    if (ask ? !ask(waited) : waited >= options.Busy_Time) return false;
    const std::int64_t longest = std::max<std::int64_t>(3, 40 - waited.count() / 100);
    std::this_thread::sleep_for(
        milliseconds(std::uniform_int_distribution(std::int64_t{1}, longest)(random)));
    return true;
  }

  // When a statement finds the database locked; 0 gives up.
  static int Is_Busy(void* engine, int tries) {
    auto& self = *static_cast<TSqlite_Engine*>(engine);
    if (self.beginning) return 0;
    if (tries == 0) self.busy_since = std::chrono::steady_clock::now();
    return self.Wait(self.busy_since, {}) ? 1 : 0;
  }

  // The change is kept now, whatever becomes of moving the log's pages to their places.
  static int Committed(void* /*engine*/, sqlite3* connection, const char* name, int log_pages) {
    constexpr int many = 1000;
    if (log_pages >= many)
      sqlite3_wal_checkpoint_v2(connection, name, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    return SQLITE_OK;
  }

  const TSqlite_Options options;
  bool beginning = false;  // a write transaction
  std::chrono::steady_clock::time_point busy_since;
  std::minstd_rand random{std::random_device{}()};
  sqlite3* connection = nullptr;
  std::unique_ptr<TStatement> data_version, begin;
};

}  // namespace

std::unique_ptr<TEngine> Open_Sqlite(const std::string& path, const TSqlite_Options& options) {
  return std::make_unique<TSqlite_Engine>(path, options);
}

}  // namespace Kt_data_01
