#pragma once

#include <string>

#include "Database.h"
#include "Owned_Value.h"

namespace Kt_data_01 {

/// A table of a database, with what every operation on it needs.
struct TTable_Context {
  TTable_Context(TDatabase& database, const TTable_Def& def)
      : Database(database), Def(def), Name(def.Name), Number(Table_Number(def)) {}

  EData_Error Error(const char* operation, const std::string& reason) const {
    return EData_Error(operation, Name, reason);
  }
  /// Runs an operation on the engine. An exception marks the open bracket as failed and leaves as
  /// EData_Error.
  template <class TBody>
  auto Guarded(const char* operation, TBody body) const -> decltype(body()) {
    try {
      return body();
    } catch (const EData_Error& e) {
      Database.Operation_Failed(e.Reason);
      throw;
    } catch (const std::exception& e) {
      const EData_Error error = Error(operation, e.what());
      if (Database.Is_Open()) Database.Operation_Failed(error.Reason);
      throw error;
    }
  }
  /// Throws for a field that was never looked up.
  const TColumn_Def& Column(TField field) const {
    const auto position = static_cast<std::size_t>(field.Position);
    if (position >= Def.Columns.size()) throw Error("read", "no column was named");
    return Def.Columns[position];
  }
  /// Throws when no bracket is open.
  void Check_Bracket(const char* operation) const {
    if (Database.Bracket_Depth() == 0) throw Error(operation, "no update is open");
  }

  /// Increases with every change of the table.
  std::uint64_t Serial() const { return Database.Table_Serial(Number); }
  /// To be called after each change of the table.
  void Changed() const { Database.Table_Changed(Number); }

  TDatabase& Database;
  const TTable_Def& Def;
  const std::string Name;
  const std::size_t Number;
};

}  // namespace Kt_data_01
