#include "Table_Range.h"

#include "Filter.h"

namespace Kt_data_01 {

namespace {

void Assign(std::vector<TOwned_Value>& target, TValues values) {
  target.resize(values.size());
  std::size_t i = 0;
  for (const TValue& value : values) target[i++].Assign(value);
}

}  // namespace

TTable_Range::TChange TTable_Range::Set_Index(std::string_view name) {
  const TIndex_Def* found = nullptr;
  if (!name.empty()) {
    found = table.Def.Index(name);
    if (!found) throw table.Error("index", "there is no index \"" + std::string(name) + "\"");
  }
  if (found == index && low.empty() && high.empty()) return TChange::Rows;
  index = found;
  shape.Columns.clear();
  if (index) {
    for (const std::string_view column : index->Columns) shape.Columns.push_back(table.Def.Column(column));
  }
  shape.Unique = index && index->Unique;
  has_text_key = shape.Columns.size() == 1 &&
                 table.Def.Columns[static_cast<std::size_t>(shape.Columns[0])].Type == TColumn_Type::Text;
  Cancel();
  return TChange::Shape;
}

TTable_Range::TChange TTable_Range::Set(TValues from, TValues to) {
  if (from.size() > shape.Columns.size() || to.size() > shape.Columns.size())
    throw table.Error("range", "the key does not fit the index");
  Assign(low, from);
  Assign(high, to);
  std::size_t equal = 0;
  while (equal < low.size() && equal < high.size() && low[equal] == high[equal]) ++equal;
  const bool same = shape.Low == low.size() && shape.High == high.size() && shape.Equal == equal;
  shape.Low = low.size();
  shape.High = high.size();
  shape.Equal = equal;
  return same ? TChange::Rows : TChange::Shape;
}

TTable_Range::TChange TTable_Range::Cancel() noexcept {
  if (low.empty() && high.empty()) return TChange::None;
  low.clear();
  high.clear();
  shape.Low = shape.High = shape.Equal = 0;
  return TChange::Shape;
}

TTable_Range::TChange TTable_Range::Set_Filter(std::string_view expression) {
  std::string condition = expression.empty() ? std::string() : Filter_Condition(table.Def, expression);
  if (condition == shape.Filter) return TChange::None;
  shape.Filter = std::move(condition);
  return TChange::Shape;
}

void TTable_Range::Check_Key(std::size_t columns) const {
  if (columns == 0 || columns > shape.Columns.size())
    throw table.Error("find", "the key does not fit the index");
}

int TTable_Range::Bind_Step(TStatement& statement, TStep step, const TRow_Store& rows, std::size_t row,
                            std::optional<std::int64_t> joined_row) const {
  int parameter = 0;
  for (std::size_t i = 0; i < shape.Equal; ++i) Bind(statement, parameter++, low[i].Value());
  if (step.From_Row) {
    for (std::size_t i = shape.Equal; i < shape.Columns.size(); ++i)
      rows.Bind(row, shape.Columns[i], statement, parameter++);
    statement.Bind(parameter++, rows.Id(row));
    if (joined_row) statement.Bind(parameter++, *joined_row);
  }
  if (Needs_Low(shape, step)) {
    for (std::size_t i = shape.Equal; i < low.size(); ++i) Bind(statement, parameter++, low[i].Value());
  }
  if (Needs_High(shape, step)) {
    for (std::size_t i = shape.Equal; i < high.size(); ++i) Bind(statement, parameter++, high[i].Value());
  }
  return parameter;
}

}  // namespace Kt_data_01
