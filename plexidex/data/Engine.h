#pragma once

// The interface between the table layer and a database engine. The table layer writes portable SQL with "?"
// for parameters and "row_id" for the engine's ascending row ID; everything else about an engine is behind
// this header.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

/// An error of the engine, with its message.
class EEngine_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Another program holds a lock for too long.
class EBusy_Error : public EEngine_Error {
 public:
  using EEngine_Error::EEngine_Error;
};

/// The file is damaged, or no database at all.
class EDamage_Error : public EEngine_Error {
 public:
  using EEngine_Error::EEngine_Error;
};

/// A commit of which nobody can say whether it will hold.
class EUncertain_Error : public EEngine_Error {
 public:
  using EEngine_Error::EEngine_Error;
};

enum class TColumn_Type { Text, Integer, Boolean, DateTime, Blob };

/// A prepared statement. Columns and parameters count from 0. Everything but Reset may throw EEngine_Error.
class TStatement {
 public:
  virtual ~TStatement() = default;
  virtual void Bind(int parameter, std::int64_t value) = 0;
  virtual void Bind(int parameter, double value) = 0;
  /// Not copied: must stay valid until Reset.
  virtual void Bind(int parameter, std::string_view text) = 0;
  virtual void Bind_Blob(int parameter, std::string_view bytes) = 0;
  /// Executes up to the next row; false when there is none.
  virtual bool Step() = 0;
  virtual std::int64_t Integer(int column) = 0;
  virtual double Real(int column) = 0;
  /// Valid until the next Step or Reset.
  virtual std::string_view Text(int column) = 0;
  virtual std::string_view Blob(int column) = 0;
  /// Ends the execution, so that no read transaction stays open, and clears the parameters.
  virtual void Reset() noexcept = 0;
};

/// Resets a statement at the end of the scope.
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

/// What the file says about itself.
struct TIdentity {
  bool Empty = false;        // contains no tables
  std::int64_t Program = 0;  // ID of the program it belongs to; 0 when none is stated
  std::int64_t Version = 0;  // of its schema
};

class TEngine {
 public:
  virtual ~TEngine() = default;

  virtual TIdentity Identify() = 0;
  /// Records program ID and schema version; to be called inside the transaction that creates or migrates the
  /// schema.
  virtual void Stamp(std::int64_t program, std::int64_t version) = 0;
  /// The declaration of a column of this type; `number` is its default if it is a number.
  virtual std::string Column_Declaration(TColumn_Type type, std::int64_t number) = 0;
  /// The declaration of the column `row_id`.
  virtual std::string Row_Id_Declaration() = 0;

  /// Applies the settings that are stored in the file; to be called once it is known to be this program's.
  virtual void Prepare_Storage() = 0;

  virtual std::unique_ptr<TStatement> Prepare(std::string_view sql) = 0;
  /// Runs one or more statements that return no rows.
  virtual void Execute(const std::string& sql) = 0;

  /// Begins a write transaction, waiting for another writer no longer than the busy time. When that fails, no
  /// transaction is open, and the reason is returned as a text for the user; so when the file has been moved,
  /// replaced or removed under its name.
  virtual std::optional<std::string> Begin_Write() = 0;
  virtual void Begin_Read() = 0;
  /// Throws EUncertain_Error when the disk failed in the middle of it.
  virtual void Commit() = 0;
  virtual void Rollback() noexcept = 0;
  /// A part of the open transaction that can be rolled back by itself. The outermost part has level 1, a part
  /// inside it level 2 and so on; the innermost ends first.
  virtual void Begin_Part(int level) = 0;
  virtual void Keep_Part(int level) = 0;
  virtual void Undo_Part(int level) = 0;
  /// An engine may end the transaction by itself after an error such as a full disk.
  virtual bool In_Transaction() = 0;

  virtual std::int64_t Last_Row_Id() = 0;
  virtual std::int64_t Rows_Changed() = 0;
  /// A number that changes when another connection has changed the database, but not during a transaction.
  virtual std::int64_t External_Changes() = 0;

  /// Writes all that is committed into a new file, as of one moment, while others may write. Outside a
  /// transaction only.
  virtual void Copy_To(const std::string& file) = 0;
  /// Puts all that a database file holds in place of what there is: all of it or nothing, and seen by every
  /// connection. Waits for another writer like a statement. `first` is called when nobody else can write any
  /// more, and must not use this connection; when it throws, nothing is replaced.
  virtual void Replace_By(const std::string& file, const std::function<void()>& first) = 0;

  /// Checks the integrity of the file: one line per problem, empty for a sound database.
  virtual std::vector<std::string> Check_Storage() = 0;
};

}  // namespace Kt_data_01
