#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

std::string Name_Of(const TTable_Def& table, int column) {
  return Quoted(table.Columns[static_cast<std::size_t>(column)].Name);
}

// Tells a row from another that has got its number.
std::string Row_Condition(const TTable_Def& table) {
  return " WHERE row_id = ? AND " + Name_Of(table, 0) + " = ?";
}

std::string Unmatched_Rows(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                           std::string_view other_column) {
  return " FROM " + Quoted(table.Name) + " d WHERE NOT EXISTS (SELECT 1 FROM " + Quoted(other.Name) +
         " o WHERE o." + Quoted(other_column) + " = d." + Quoted(column) + ")";
}

}  // namespace

std::string Quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

std::string Column_Sql(const TTable_Def& table, int column) {
  return "d." + Name_Of(table, column);
}

std::string Insert_Sql(const TTable_Def& table, TColumn_Set columns) {
  std::string names, values;
  for (std::size_t i = 0; i < table.Columns.size(); ++i) {
    if (!(columns >> i & 1)) continue;
    names += (names.empty() ? "" : ", ") + Quoted(table.Columns[i].Name);
    values += values.empty() ? "?" : ", ?";
  }
  return "INSERT INTO " + Quoted(table.Name) +
         (names.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + values + ")");
}

std::string Update_Sql(const TTable_Def& table, TColumn_Set columns) {
  std::string changes;
  for (std::size_t i = 0; i < table.Columns.size(); ++i) {
    if (columns >> i & 1) changes += (changes.empty() ? "" : ", ") + Quoted(table.Columns[i].Name) + " = ?";
  }
  return "UPDATE " + Quoted(table.Name) + " SET " + changes + Row_Condition(table);
}

std::string Delete_Sql(const TTable_Def& table) {
  return "DELETE FROM " + Quoted(table.Name) + Row_Condition(table);
}

std::string Delete_Rows_Sql(const TTable_Def& table, int column) {
  return "DELETE FROM " + Quoted(table.Name) + " WHERE " + Name_Of(table, column) + " = ?";
}

std::string Delete_Rows_Of_Sql(const TTable_Def& table, int column, const TTable_Def& owners,
                               int owner_column) {
  return "DELETE FROM " + Quoted(table.Name) + " WHERE " + Name_Of(table, column) + " IN (SELECT " +
         Quoted("Key") + " FROM " + Quoted(owners.Name) + " WHERE " + Name_Of(owners, owner_column) + " = ?)";
}

std::string Key_Ending_Sql(const TTable_Def& table) {
  const std::string key = Quoted("Key");
  return "SELECT " + key + " FROM " + Quoted(table.Name) + " WHERE substr(" + key + ", length(" + key +
         ") - length(?) + 1) = ? LIMIT ?";
}

std::string Unmatched_Sql(const TTable_Def& table, std::initializer_list<std::string_view> columns,
                          const TTable_Def& other, std::string_view other_column) {
  std::string names;
  for (const std::string_view column : columns) names += (names.empty() ? "d." : ", d.") + Quoted(column);
  return "SELECT " + names + Unmatched_Rows(table, *columns.begin(), other, other_column);
}

std::string Unmatched_Count_Sql(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                                std::string_view other_column) {
  const std::string name = "d." + Quoted(column);
  return "SELECT " + name + ", count(*)" + Unmatched_Rows(table, column, other, other_column) + " GROUP BY " +
         name;
}

std::string Creation_Sql(TEngine& engine) {
  std::string sql;
  for (const TTable_Def& table : Schema()) {
    sql += "CREATE TABLE " + Quoted(table.Name) + " (";
    for (const TColumn_Def& column : table.Columns) {
      sql += Quoted(column.Name) + " " + engine.Column_Declaration(column.Type, column.Default);
      if (!column.References.empty())
        sql += " REFERENCES " + Quoted(column.References) + " (" + Quoted("Key") + ")";
      sql += ", ";
    }
    sql += "row_id " + engine.Row_Id_Declaration() + ");\n";
    for (const TIndex_Def& index : table.Indexes) {
      std::string columns;
      for (const std::string_view column : index.Columns)
        columns += (columns.empty() ? "" : ", ") + Quoted(column);
      sql += std::string("CREATE ") + (index.Unique ? "UNIQUE " : "") + "INDEX " +
             Quoted(std::string(table.Name) + "_" + std::string(index.Name)) + " ON " + Quoted(table.Name) +
             " (" + columns + ");\n";
    }
  }
  return sql;
}

}  // namespace Kt_data_01
