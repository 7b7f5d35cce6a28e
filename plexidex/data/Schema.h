#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Engine.h"
#include "Kt_data_01.h"

namespace Kt_data_01 {

struct TColumn_Def {
  std::string_view Name;
  TColumn_Type Type;
  std::int64_t Default = 0;          // of a number; a text's default is empty
  std::string_view References = {};  // the table whose column Key it refers to
};

struct TIndex_Def {
  std::string_view Name;
  std::vector<std::string_view> Columns;
  bool Unique = false;
};

struct TTable_Def {
  std::string_view Name;
  std::vector<TColumn_Def> Columns;
  std::vector<TIndex_Def> Indexes;

  /// Position of a column, -1 for an unknown one; case-insensitive.
  int Column(std::string_view name) const;
  /// The same, but throws EData_Error for an unknown one.
  int Known_Column(std::string_view name) const;
  /// Null for an unknown index; case-insensitive.
  const TIndex_Def* Index(std::string_view name) const;
};

/// All tables, each after those that it refers to.
const std::vector<TTable_Def>& Schema();
/// Throws EData_Error for an unknown table; case-insensitive.
const TTable_Def& Table_Def(std::string_view name);
/// Position of a table in Schema().
std::size_t Table_Number(const TTable_Def& table);

/// Version of Schema(), recorded in the database file.
inline constexpr int Schema_Version = 6;

/// The statements that migrate from the version before to this one, in which $NOW stands for the current date
/// and time. A released migration is never changed.
struct TMigration {
  int Version;
  std::string Sql;
};
/// In ascending order, ending with Schema_Version. There is none to version 1, the first one.
const std::vector<TMigration>& Migrations();

/// Case-insensitive.
bool Same_Name(std::string_view a, std::string_view b);

}  // namespace Kt_data_01
