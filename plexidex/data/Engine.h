#pragma once

// The seam between the table layer and a database engine. The table layer writes portable SQL with "?" for
// values and "row_id" for the engine's own ascending row number; everything else about an engine stays behind
// this header.

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

/// The engine's own words for what went wrong.
class EEngine_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class TColumn_Type { Text, Integer, Boolean, DateTime, Blob };

/// A prepared statement. Columns and parameters count from 0. Every call may throw EEngine_Error; Reset does
/// not.
class TStatement {
 public:
  virtual ~TStatement() = default;
  virtual void Bind(int parameter, std::int64_t value) = 0;
  virtual void Bind(int parameter, double value) = 0;
  /// Not copied: must stay as it is until Reset.
  virtual void Bind(int parameter, std::string_view text) = 0;
  virtual void Bind_Blob(int parameter, std::string_view bytes) = 0;
  /// True while there is a row.
  virtual bool Step() = 0;
  virtual std::int64_t Integer(int column) = 0;
  virtual double Real(int column) = 0;
  /// Valid until the next Step or Reset.
  virtual std::string_view Text(int column) = 0;
  virtual std::string_view Blob(int column) = 0;
  /// Ends the execution, so that no reader stays open, and frees the bound values.
  virtual void Reset() noexcept = 0;
};

/// Resets a statement however its use ends.
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

/// What a database says of itself.
struct TIdentity {
  bool Empty = false;        // nothing was ever made in it
  std::int64_t Program = 0;  // whose it is; 0 when it does not say
  std::int64_t Version = 0;  // of its schema
};

class TEngine {
 public:
  virtual ~TEngine() = default;

  virtual TIdentity Identify() = 0;
  /// Writes down whose the database is and the version of its schema, inside the transaction that makes it
  /// so.
  virtual void Stamp(std::int64_t program, std::int64_t version) = 0;
  /// How a column of this type is declared, with its default; `number` is that of numbers.
  virtual std::string Column_Declaration(TColumn_Type type, std::int64_t number) = 0;
  /// How the column `row_id` is declared.
  virtual std::string Row_Id_Declaration() = 0;

  /// To be called once the file is known to be ours: settings that the file remembers.
  virtual void Prepare_Storage() = 0;

  virtual std::unique_ptr<TStatement> Prepare(std::string_view sql) = 0;
  /// Runs statements that give no rows.
  virtual void Execute(const std::string& sql) = 0;

  /// Begins a write transaction, waiting for another writer no longer than the busy time. When the database
  /// cannot be written, nothing is open and the reason is returned, in the user's words.
  virtual std::optional<std::string> Begin_Write() = 0;
  virtual void Begin_Read() = 0;
  virtual void Commit() = 0;
  virtual void Rollback() noexcept = 0;
  /// A part of the open transaction that can be undone by itself. The first has level 1, one inside it level
  /// 2; ended from the inside out.
  virtual void Begin_Part(int level) = 0;
  virtual void Keep_Part(int level) = 0;
  virtual void Undo_Part(int level) = 0;
  /// An engine may end a transaction by itself after an error such as a full disk.
  virtual bool In_Transaction() = 0;

  virtual std::int64_t Last_Row_Id() = 0;
  virtual std::int64_t Rows_Changed() = 0;
  /// A number that moves when another connection has changed the database. Inside a transaction it stands
  /// still.
  virtual std::int64_t External_Changes() = 0;

  /// What is damaged in the file, a line for each damage; empty for a sound database.
  virtual std::vector<std::string> Check_Storage() = 0;
};

}  // namespace Kt_data_01
