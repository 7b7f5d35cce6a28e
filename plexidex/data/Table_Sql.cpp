#include "Table_View.h"

namespace Kt_data_01 {

std::string TTable::TImpl::Bare_Name(int column) const {
  return Quoted(def.Columns[static_cast<std::size_t>(column)].Name);
}

std::string TTable::TImpl::Order(std::size_t from, bool ascending) const {
  std::string order = " ORDER BY ";
  const char* direction = ascending ? "" : " DESC";
  for (std::size_t i = from; i < index_columns.size(); ++i)
    order += Column_Name(index_columns[i]) + direction + ", ";
  return order + "d.row_id" + direction;
}

std::string TTable::TImpl::Tuple_Condition(std::size_t from, std::size_t to, bool with_row_id,
                                           const char* comparison) const {
  std::string left, right;
  for (std::size_t i = from; i < to; ++i) {
    left += (left.empty() ? "" : ", ") + Column_Name(index_columns[i]);
    right += right.empty() ? "?" : ", ?";
  }
  if (with_row_id) {
    left += left.empty() ? "d.row_id" : ", d.row_id";
    right += right.empty() ? "?" : ", ?";
  }
  if (left.find(',') == std::string::npos) return left + comparison + right;
  return "(" + left + ")" + comparison + "(" + right + ")";
}

std::string TTable::TImpl::By_Row_Id_Sql() const {
  return "SELECT " + projection.Select_List("d") + From() + " WHERE d.row_id = ?";
}

std::string TTable::TImpl::Finder_Sql(std::size_t key_columns) const {
  std::string sql = "SELECT " + projection.Select_List("d") + From() + " WHERE ";
  for (std::size_t i = 0; i < key_columns; ++i)
    sql += (i ? " AND " : "") + Column_Name(index_columns[i]) + " = ?";
  if (filtered()) sql += " AND (" + filter + ")";
  if (index->Unique && key_columns == index_columns.size()) return sql;
  return sql + Order(key_columns, true) + " LIMIT 1";
}

std::string TTable::TImpl::Where(bool ascending, bool anchored) const {
  std::vector<std::string> conditions;
  for (std::size_t i = 0; i < eq_prefix; ++i) conditions.push_back(Column_Name(index_columns[i]) + " = ?");
  if (anchored) {
    conditions.push_back(Tuple_Condition(eq_prefix, index_columns.size(), true, ascending ? " > " : " < "));
  }
  if (low.size() > eq_prefix && !(anchored && ascending)) {
    conditions.push_back(Tuple_Condition(eq_prefix, low.size(), false, " >= "));
  }
  if (high.size() > eq_prefix && !(anchored && !ascending)) {
    conditions.push_back(Tuple_Condition(eq_prefix, high.size(), false, " <= "));
  }
  if (filtered()) conditions.push_back("(" + filter + ")");
  std::string where;
  for (const std::string& condition : conditions) where += (where.empty() ? " WHERE " : " AND ") + condition;
  return where;
}

std::string TTable::TImpl::Fetch_Sql(bool ascending, bool anchored) const {
  std::string columns = projection.Select_List("d"), joins;
  int number_of_link = 0;
  for (const auto& link : links) {
    const std::string alias = "l" + std::to_string(number_of_link++);
    columns += ", " + link->Target->projection.Select_List(alias);
    joins +=
        " LEFT JOIN " + Quoted(link->Target->name) + " " + alias + " ON " + alias + "." +
        Quoted(link->Target->def.Columns[static_cast<std::size_t>(link->Target->index_columns[0])].Name) +
        " = " + Column_Name(link->Via);
  }
  return "SELECT " + columns + From() + joins + Where(ascending, anchored) + Order(eq_prefix, ascending) +
         " LIMIT ?";
}

int TTable::TImpl::Bind_Range(TStatement& statement, bool ascending, bool anchored) const {
  int parameter = 0;
  for (std::size_t i = 0; i < eq_prefix; ++i) Bind(statement, parameter++, low[i].Value());
  if (anchored) {
    for (std::size_t i = eq_prefix; i < index_columns.size(); ++i)
      Bind_Cell(statement, parameter++, index_columns[i]);
    statement.Bind(parameter++, batch.Id(at));
  }
  if (!(anchored && ascending)) {
    for (std::size_t i = eq_prefix; i < low.size(); ++i) Bind(statement, parameter++, low[i].Value());
  }
  if (!(anchored && !ascending)) {
    for (std::size_t i = eq_prefix; i < high.size(); ++i) Bind(statement, parameter++, high[i].Value());
  }
  return parameter;
}

void TTable::TImpl::Bind_Cell(TStatement& statement, int parameter, int column) const {
  const int slot = projection.Slot[static_cast<std::size_t>(column)];
  switch (projection.Types[static_cast<std::size_t>(slot)]) {
    case TColumn_Type::Text:
      statement.Bind(parameter, batch.Text(at, slot));
      break;
    case TColumn_Type::DateTime:
      statement.Bind(parameter, batch.Real(at, slot));
      break;
    default:
      statement.Bind(parameter, batch.Integer(at, slot));
      break;
  }
}

}  // namespace Kt_data_01
