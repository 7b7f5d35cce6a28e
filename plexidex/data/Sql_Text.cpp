#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

std::string Name_Of(const TTable_Def& table, int column) {
  return Quoted(table.Columns[static_cast<std::size_t>(column)].Name);
}

std::string From(const TTable_Def& table) {
  return " FROM " + Quoted(table.Name) + " d";
}

std::string Select_List(const TProjection& columns, const std::string& alias) {
  std::string list = alias + ".row_id";
  for (const int column : columns.Columns) list += ", " + alias + "." + Name_Of(*columns.Table, column);
  return list;
}

std::string Select(const TProjection& columns) {
  return "SELECT " + Select_List(columns, "d") + From(*columns.Table);
}

std::string Order(const TTable_Def& table, const TRange_Shape& range, std::size_t from, bool ascending,
                  const std::string& joined_id = {}) {
  std::string order = " ORDER BY ";
  const char* direction = ascending ? "" : " DESC";
  for (std::size_t i = from; i < range.Columns.size(); ++i)
    order += Column_Sql(table, range.Columns[i]) + direction + ", ";
  order += std::string("d.row_id") + direction;
  return joined_id.empty() ? order : order + ", " + joined_id + direction;
}

// "(a, b) >= (?, ?)" over the index columns from range.Equal to `to`, followed by the row IDs.
std::string Tuple_Condition(const TTable_Def& table, const TRange_Shape& range, std::size_t to,
                            std::initializer_list<std::string> row_ids, const char* comparison) {
  std::string left, right;
  const auto add = [&](const std::string& column) {
    left += (left.empty() ? "" : ", ") + column;
    right += right.empty() ? "?" : ", ?";
  };
  for (std::size_t i = range.Equal; i < to; ++i) add(Column_Sql(table, range.Columns[i]));
  for (const std::string& row_id : row_ids) {
    if (!row_id.empty()) add(row_id);
  }
  if (left.find(',') == std::string::npos) return left + comparison + right;
  return "(" + left + ")" + comparison + "(" + right + ")";
}

std::string Where(const TTable_Def& table, const TRange_Shape& range, TStep step,
                  const std::string& joined_id = {}) {
  std::string where;
  const auto add = [&](const std::string& condition) {
    where += (where.empty() ? " WHERE " : " AND ") + condition;
  };
  for (std::size_t i = 0; i < range.Equal; ++i) add(Column_Sql(table, range.Columns[i]) + " = ?");
  if (step.From_Row)
    add(Tuple_Condition(table, range, range.Columns.size(), {"d.row_id", joined_id},
                        step.Ascending ? " > " : " < "));
  if (Needs_Low(range, step)) add(Tuple_Condition(table, range, range.Low, {}, " >= "));
  if (Needs_High(range, step)) add(Tuple_Condition(table, range, range.High, {}, " <= "));
  if (!range.Filter.empty()) add("(" + range.Filter + ")");
  return where;
}

// The engine may reuse a row ID: the first column tells the rows apart.
std::string Row_Condition(const TTable_Def& table) {
  return " WHERE row_id = ? AND " + Name_Of(table, 0) + " = ?";
}

std::string Select_Of_D(std::initializer_list<std::string_view> columns) {
  std::string names;
  for (const std::string_view column : columns) names += (names.empty() ? "d." : ", d.") + Quoted(column);
  return "SELECT " + names;
}

std::string Unmatched_Rows(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                           std::string_view other_column) {
  return From(table) + " WHERE NOT EXISTS (SELECT 1 FROM " + Quoted(other.Name) + " o WHERE o." +
         Quoted(other_column) + " = d." + Quoted(column) + ")";
}

// Of an alarm a, and the occurrence o that it belongs to.
std::string Alarms_With_Dates() {
  return R"( FROM "KT_Alarms" a JOIN "KT_Events_Data" o ON o."Key" = a."Key")";
}

std::string Alarm_Moment() {
  return R"((o."EventDate" - a."Offset" / 1440.0))";
}

std::string Alarm_Due() {
  return R"((CASE WHEN a."NextTime" = 0 THEN )" + Alarm_Moment() + R"( ELSE a."NextTime" END))";
}

/// What an alert says that is due then. Parameter 2: now.
std::string Answer_Sql(const std::string& due, const std::string& done) {
  return "CASE WHEN " + due + " <= ?2 THEN " + std::to_string(Alert_Answered) + " WHEN " + done + " THEN " +
         std::to_string(Alert_Done_Before) + " ELSE " + std::to_string(Alert_Open) + " END";
}

std::string Is_Written_Row(const TTable_Def& table) {
  return std::string(Same_Name(table.Name, "KT_Alarms") ? "a" : "o") + ".row_id = ?1";
}

}  // namespace

std::string Quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

std::string Column_Sql(const TTable_Def& table, int column) {
  return "d." + Name_Of(table, column);
}

bool Needs_Low(const TRange_Shape& range, TStep step) {
  return range.Low > range.Equal && !(step.From_Row && step.Ascending);
}

bool Needs_High(const TRange_Shape& range, TStep step) {
  return range.High > range.Equal && !(step.From_Row && !step.Ascending);
}

std::string Fetch_Sql(const TProjection& columns, const TRange_Shape& range, const std::vector<TJoin>& joins,
                      TStep step) {
  const TTable_Def& table = *columns.Table;
  std::string list = Select_List(columns, "d"), joined, joined_id;
  for (std::size_t i = 0; i < joins.size(); ++i) {
    const TTable_Def& other = *joins[i].Columns->Table;
    const std::string alias = "l" + std::to_string(i);
    list += ", " + Select_List(*joins[i].Columns, alias);
    joined += " LEFT JOIN " + Quoted(other.Name) + " " + alias;
    joined += " ON " + alias + "." + Name_Of(other, joins[i].Key) + " = " + Column_Sql(table, joins[i].Via);
    if (joins[i].Several) joined_id = alias + ".row_id";
  }
  return "SELECT " + list + From(table) + joined + Where(table, range, step, joined_id) +
         Order(table, range, range.Equal, step.Ascending, joined_id) + " LIMIT ?";
}

std::string Count_Sql(const TTable_Def& table, const TRange_Shape& range) {
  return "SELECT count(*)" + From(table) + Where(table, range, {});
}

std::string Find_Sql(const TProjection& columns, const TRange_Shape& range, std::size_t key_columns) {
  std::string sql = Select(columns);
  for (std::size_t i = 0; i < key_columns; ++i)
    sql += (i ? " AND " : " WHERE ") + Column_Sql(*columns.Table, range.Columns[i]) + " = ?";
  if (!range.Filter.empty()) sql += " AND (" + range.Filter + ")";
  if (range.Unique && key_columns == range.Columns.size()) return sql;
  return sql + Order(*columns.Table, range, key_columns, true) + " LIMIT 1";
}

std::string Row_Sql(const TProjection& columns) {
  return Select(columns) + " WHERE d.row_id = ?";
}

std::string Blob_Sql(const TTable_Def& table, int column) {
  return "SELECT " + Column_Sql(table, column) + From(table) + " WHERE d.row_id = ?";
}

std::string Scan_Sql(const TProjection& columns) {
  return Select(columns);
}

std::string Largest_Row_Sql(const TTable_Def& table) {
  return "SELECT max(row_id) FROM " + Quoted(table.Name);
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

std::string Replace_In_Rows_Sql(const TTable_Def& table, int column) {
  const std::string name = Name_Of(table, column);
  return "UPDATE " + Quoted(table.Name) + " SET " + name + " = ? WHERE " + name + " = ?";
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
  return Select_Of_D(columns) + Unmatched_Rows(table, *columns.begin(), other, other_column);
}

std::string Outside_Sql(const TTable_Def& table, std::initializer_list<std::string_view> columns,
                        std::int64_t low, std::int64_t end) {
  const std::string number = "d." + Quoted(*columns.begin());
  return Select_Of_D(columns) + " FROM " + Quoted(table.Name) + " d WHERE NOT (" + number +
         " >= " + std::to_string(low) + " AND " + number + " < " + std::to_string(end) + ")";
}

std::string Repeated_Sql(const TTable_Def& table, std::string_view column) {
  return Select_Of_D({column}) + ", count(*)" + From(table) + " GROUP BY d." + Quoted(column) +
         " HAVING count(*) > 1";
}

std::string Unmatched_Count_Sql(const TTable_Def& table, std::string_view column, const TTable_Def& other,
                                std::string_view other_column) {
  const std::string name = "d." + Quoted(column);
  return "SELECT " + name + ", count(*)" + Unmatched_Rows(table, column, other, other_column) + " GROUP BY " +
         name;
}

std::string Contact_Rows_Sql(const std::vector<std::string>& details, std::string_view narrowed_by) {
  const auto table = [](std::string_view name) { return Quoted(Table_Def(name).Name); };
  std::string list = "d.\"Key\", d.\"DisplayName\"";
  for (const std::string& column : details) list += ", l." + Quoted(column);
  return "SELECT " + list + ", t.\"Name\", d.\"Parent\" FROM " + table("KT_Contacts") + " d LEFT JOIN " +
         table("KT_Contacts_Data") + " l ON l.\"Contact\" = d.\"Key\" LEFT JOIN " + table("KT_Templates") +
         " t ON t.\"Key\" = l.\"Template\" WHERE d.\"Type\" = " + std::to_string(Contact_Type_Contact) +
         " AND d.\"Book\" = ? AND d.\"Deleted\" = ?" +
         (narrowed_by.empty() ? std::string() : " AND d." + Quoted(narrowed_by) + " = ?");
}

std::string Members_Sql() {
  const TTable_Def& members = Table_Def("KT_Categories_InUse");
  return Select_Of_D({"Contact"}) + From(members) + " WHERE " +
         Column_Sql(members, members.Known_Column("Category")) + " = ?";
}

std::string Keep_Alert_Sql(const TTable_Def& table) {
  return R"(INSERT INTO "KT_Alerts" ("Occurrence", "User", "Moment", "NextTime", "Due", "Dismissed")
      SELECT a."Key", a."User", )" +
         Alarm_Moment() + R"(, a."NextTime", )" + Alarm_Due() + ", " +
         Answer_Sql(Alarm_Due(), R"(a."Actioned")") + Alarms_With_Dates() + " WHERE " +
         Is_Written_Row(table) + R"(
      ON CONFLICT ("Occurrence") DO UPDATE SET "User" = excluded."User", "Moment" = excluded."Moment",
        "NextTime" = excluded."NextTime", "Due" = excluded."Due", "Dismissed" = excluded."Dismissed"
      WHERE "KT_Alerts"."User" <> excluded."User" OR "KT_Alerts"."Moment" <> excluded."Moment"
        OR "KT_Alerts"."NextTime" <> excluded."NextTime")";
}

std::string End_Delay_Sql(const TTable_Def& table) {
  return R"(UPDATE "KT_Alarms" SET "NextTime" = 0 WHERE row_id = (SELECT a.row_id)" + Alarms_With_Dates() +
         R"( JOIN "KT_Alerts" k ON k."Occurrence" = a."Key" WHERE )" + Is_Written_Row(table) +
         R"( AND a."NextTime" <> 0 AND a."NextTime" = k."NextTime" AND (k."Moment" <> )" + Alarm_Moment() +
         R"( AND (a."NextTime" <= ?2 OR )" + Alarm_Moment() + R"( > ?2)
      OR a."Actioned" OR a."NextTime" <= ?2 AND k."Dismissed")))";
}

std::string Settle_Alert_Sql() {
  return R"(UPDATE "KT_Alerts" SET "Dismissed" = )" +
         Answer_Sql(R"("Due")", R"((SELECT "Actioned" FROM "KT_Alarms" WHERE row_id = ?1))") +
         R"( WHERE "Occurrence" = (SELECT "Key" FROM "KT_Alarms" WHERE row_id = ?1) AND "Dismissed" <> )" +
         std::to_string(Alert_Answered);
}

std::string Wrong_Alerts_Sql() {
  return R"(SELECT a."Key", CASE WHEN k.row_id IS NULL THEN 0 WHEN k."User" <> a."User" THEN 1 ELSE 2 END)" +
         Alarms_With_Dates() +
         R"( LEFT JOIN "KT_Alerts" k ON k."Occurrence" = a."Key" WHERE k.row_id IS NULL
      OR k."User" <> a."User" OR k."Moment" <> )" +
         Alarm_Moment() + R"( OR k."NextTime" <> a."NextTime" OR k."Due" <> )" + Alarm_Due();
}

std::string Drop_Alert_Sql() {
  return R"(DELETE FROM "KT_Alerts" WHERE "Occurrence" =
      (SELECT "Key" FROM "KT_Alarms" WHERE row_id = ?1))";
}

std::string Keep_Private_Lines_Sql() {
  return R"(UPDATE "KT_Log" SET "PrivateTo" =
        (SELECT CASE WHEN "Private" THEN "User" ELSE '' END FROM "KT_Events" WHERE row_id = ?1)
      WHERE "Occurrence" IN (SELECT o."Key" FROM "KT_Events_Data" o JOIN "KT_Events" e ON e."Key" = o."Event"
        WHERE e.row_id = ?1))";
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
