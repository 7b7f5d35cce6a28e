#include "Sqlite_Engine.h"

#include <sqlite3.h>

#include <sstream>

namespace Kt_data_01 {

namespace {

[[noreturn]] void Fail(sqlite3* connection) {
  throw EEngine_Error(sqlite3_errmsg(connection));
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
    switch (sqlite3_step(statement)) {
      case SQLITE_ROW:
        return true;
      case SQLITE_DONE:
        return false;
      default: {
        const std::string reason = sqlite3_errmsg(connection);
        sqlite3_reset(statement);
        throw EEngine_Error(reason);
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
  TSqlite_Engine(const std::string& path, const TSqlite_Options& options) {
    const int access = options.Read_Only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int result = sqlite3_open_v2(path.c_str(), &connection, access | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK) {
      const std::string reason = connection ? sqlite3_errmsg(connection) : sqlite3_errstr(result);
      sqlite3_close(connection);
      throw EEngine_Error(reason);
    }
    try {
      sqlite3_busy_timeout(connection, options.Busy_Msecs);
      sqlite3_extended_result_codes(connection, 1);
      // A file that is not a database must be noticed before anything is done to it.
      Read_Header();
      Execute("PRAGMA foreign_keys = ON");
      Execute("PRAGMA synchronous = FULL");
      // The journals of statements and savepoints need not survive a crash.
      Execute("PRAGMA temp_store = MEMORY");
      Execute("PRAGMA cache_size = " + std::to_string(-options.Cache_Bytes / 1024));
      if (options.Max_Pages > 0) Execute("PRAGMA max_page_count = " + std::to_string(options.Max_Pages));
      data_version = Prepare("PRAGMA data_version");
    } catch (...) {
      sqlite3_close(connection);
      throw;
    }
  }
  ~TSqlite_Engine() override {
    data_version.reset();
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
    if (sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail(connection);
  }

  std::optional<std::string> Begin_Write() override {
    const int result = sqlite3_exec(connection, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK) {
      // A read-only connection may begin, and fails only at its first write.
      if (!sqlite3_db_readonly(connection, "main")) return {};
      Rollback();
      return "it is read-only";
    }
    switch (result & 0xff) {
      case SQLITE_READONLY:
        return "it is read-only";
      case SQLITE_BUSY:
        return "another program is writing to it";
      default:
        return sqlite3_errmsg(connection);
    }
  }
  void Begin_Read() override {
    Execute("BEGIN");
    try {
      External_Changes();  // the snapshot is taken by the first read
    } catch (...) {
      Rollback();
      throw;
    }
  }
  void Commit() override { Execute("COMMIT"); }
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

  std::int64_t Read_Number(std::string_view sql) {
    const auto statement = Prepare(sql);
    return statement->Step() ? statement->Integer(0) : 0;
  }

  void Read_Header() {
    if (sqlite3_exec(connection, "PRAGMA schema_version", nullptr, nullptr, nullptr) == SQLITE_OK) return;
    // Readers share the write-ahead log, whose files lie beside the database.
    const int error = sqlite3_errcode(connection) & 0xff;
    if (error == SQLITE_READONLY || error == SQLITE_CANTOPEN)
      throw EEngine_Error("its folder must be writable, even for reading");
    Fail(connection);
  }

  sqlite3* connection = nullptr;
  std::unique_ptr<TStatement> data_version;
};

}  // namespace

std::unique_ptr<TEngine> Open_Sqlite(const std::string& path, const TSqlite_Options& options) {
  return std::make_unique<TSqlite_Engine>(path, options);
}

}  // namespace Kt_data_01
