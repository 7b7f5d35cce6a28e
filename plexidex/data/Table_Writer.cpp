#include "Table_Writer.h"

namespace Kt_data_01 {

void TTable_Writer::Insert() {
  Cancel();
  state = TState::Insert;
}

void TTable_Writer::Edit() {
  Cancel();
  reader.Read_Again();
  state = TState::Edit;
}

void TTable_Writer::Set(TField field, const TValue& value) {
  if (state == TState::Browse) throw table.Error("set", "the row is neither being inserted nor edited");
  const TColumn_Def& column = table.Column(field);
  const bool is_text = column.Type == TColumn_Type::Text || column.Type == TColumn_Type::Blob;
  if (is_text != (value.Kind() == TValue::TKind::Text))
    throw table.Error("set", "column " + Quoted(column.Name) + " does not take such a value");
  // The column decides the type of the number, not the caller.
  TOwned_Value& pending = values[static_cast<std::size_t>(field.Position)];
  if (is_text) {
    pending.Assign(value);
  } else if (column.Type == TColumn_Type::DateTime) {
    pending.Assign(value.Real());
  } else {
    pending.Assign(value.Integer());
  }
  set |= TColumn_Set{1} << field.Position;
}

void TTable_Writer::Set_Fields(TValues from_first) {
  if (from_first.size() > values.size()) throw table.Error("set", "there are more values than columns");
  int position = 0;
  for (const TValue& value : from_first) Set({position++}, value);
}

void TTable_Writer::Post() {
  if (state == TState::Browse) return;
  if (state == TState::Edit && set == 0) return Cancel();
  table.Guarded("write", [&] {
    table.Check_Bracket("write");
    if (state == TState::Insert) {
      Write_Insert();
    } else {
      Write_Edit();
    }
  });
  Cancel();
}

void TTable_Writer::Delete() {
  Cancel();
  reader.Own_Row();
  table.Guarded("delete", [&] {
    table.Check_Bracket("delete");
    alerts.Before_Delete(reader.Own_Row_Id());
    {
      TUse use(deleter.Get(table.Database, [&] { return Delete_Sql(table.Def); }));
      reader.Bind_Row(*use, 0);
      use->Step();
    }
    if (table.Database.Engine().Rows_Changed() == 0)
      throw table.Error("delete", "the row has been deleted meanwhile");
    reader.Own_Change();
  });
  reader.Move(true);
}

const TOwned_Value* TTable_Writer::Pending(TField field) {
  const TColumn_Def& column = table.Column(field);
  const auto position = static_cast<std::size_t>(field.Position);
  TOwned_Value& value = values[position];
  if (Is_Set(position)) return &value;
  if (state == TState::Edit) return nullptr;
  value.Assign(column.Default);
  value.Text.clear();
  return &value;
}

int TTable_Writer::Bind_Pending(TStatement& statement) const {
  int parameter = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!Is_Set(i)) continue;
    if (table.Def.Columns[i].Type == TColumn_Type::Blob) {
      statement.Bind_Blob(parameter++, values[i].Text);
    } else {
      Bind(statement, parameter++, values[i].Value());
    }
  }
  return parameter;
}

void TTable_Writer::Write_Insert() {
  TUse use(inserters[set].Get(table.Database, [&] { return Insert_Sql(table.Def, set); }));
  Bind_Pending(*use);
  use->Step();
  table.Changed();
  const std::int64_t row = table.Database.Engine().Last_Row_Id();
  alerts.Written(row, set, true);
  reader.Stand_On_Written(row);
}

void TTable_Writer::Write_Edit() {
  {
    TUse use(updaters[set].Get(table.Database, [&] { return Update_Sql(table.Def, set); }));
    reader.Bind_Row(*use, Bind_Pending(*use));
    use->Step();
  }
  if (table.Database.Engine().Rows_Changed() == 0)
    throw table.Error("write", "the row has been deleted meanwhile");
  alerts.Written(reader.Own_Row_Id(), set, false);
  private_lines.Written(reader.Own_Row_Id(), set);
  bool may_lie_elsewhere = !range.Shape().Filter.empty();
  for (const int column : range.Shape().Columns)
    may_lie_elsewhere = may_lie_elsewhere || Is_Set(static_cast<std::size_t>(column));
  if (may_lie_elsewhere) {
    table.Changed();
    reader.Stand_On_Written();
    return;
  }
  reader.Own_Change();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (Is_Set(i)) reader.Set(static_cast<int>(i), values[i].Value());
  }
}

}  // namespace Kt_data_01
