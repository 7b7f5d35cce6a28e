#include "Table_View.h"

namespace Kt_data_01 {

void TTable::TImpl::Insert() {
  Cancel();
  state = TState::Insert;
}

void TTable::TImpl::Edit() {
  Cancel();
  Row();
  if (rows != &batch) To_Batch();
  Guarded("edit", [&] {
    TUse use(database.Statement(By_Row_Id_Sql()));
    use->Bind(0, batch.Id(at));
    if (!use->Step() || use->Text(1) != batch.Text(at, 0))
      throw Error("edit", "the row has been deleted meanwhile");
    int column = 1;
    for (const TColumn_Type type : projection.Types) {
      const int slot = column - 1;
      switch (type) {
        case TColumn_Type::Text:
          if (use->Text(column) != batch.Text(at, slot)) batch.Set(at, slot, use->Text(column));
          break;
        case TColumn_Type::DateTime:
          batch.Set(at, slot, use->Real(column));
          break;
        default:
          batch.Set(at, slot, use->Integer(column));
          break;
      }
      ++column;
    }
  });
  state = TState::Edit;
}

void TTable::TImpl::Cancel() noexcept {
  if (state == TState::Browse) return;
  state = TState::Browse;
  set = 0;
}

void TTable::TImpl::Set(TField field, const TValue& value) {
  if (state == TState::Browse) throw Error("set", "the row is neither being inserted nor edited");
  TOwned_Value& slot = pending[static_cast<std::size_t>(field.Position)];
  slot.Assign(value);
  // What a column holds is decided by the table, not by the type that the caller happened to have.
  const TColumn_Type type = Column(field).Type;
  const bool is_text = type == TColumn_Type::Text || type == TColumn_Type::Blob;
  if (is_text != (slot.Kind == TValue::TKind::Text)) {
    throw Error("set", "column " + Bare_Name(field.Position) + " does not take such a value");
  }
  if (type == TColumn_Type::DateTime && slot.Kind == TValue::TKind::Integer) {
    slot.Real = static_cast<double>(slot.Integer);
    slot.Kind = TValue::TKind::Real;
  } else if (!is_text && type != TColumn_Type::DateTime && slot.Kind == TValue::TKind::Real) {
    slot.Integer = static_cast<std::int64_t>(slot.Real);
    slot.Kind = TValue::TKind::Integer;
  }
  set |= std::uint64_t{1} << field.Position;
}

void TTable::TImpl::SetFields(TValues values) {
  if (values.size() > def.Columns.size()) throw Error("set", "there are more values than columns");
  int position = 0;
  for (const TValue& value : values) Set({position++}, value);
}

void TTable::TImpl::Post() {
  if (state == TState::Browse) return;
  if (state == TState::Edit && set == 0) return Cancel();
  Guarded("write", [&] {
    if (database.Bracket_Depth() == 0) throw Error("write", "no update is open");
    Check_Opening();
    if (state == TState::Insert) {
      Write_Insert();
    } else {
      Write_Edit();
    }
  });
  state = TState::Browse;
  set = 0;
}

void TTable::TImpl::Delete() {
  Cancel();
  Row();
  if (rows != &batch) To_Batch();
  Guarded("delete", [&] {
    if (database.Bracket_Depth() == 0) throw Error("delete", "no update is open");
    Check_Opening();
    if (!deleter) deleter = &database.Statement(Delete_Sql(def));
    {
      TUse use(*deleter);
      use->Bind(0, batch.Id(at));
      use->Bind(1, batch.Text(at, 0));
      use->Step();
    }
    if (database.Engine().Rows_Changed() == 0) throw Error("delete", "the row has been deleted meanwhile");
    Own_Change();
  });
  Move(true);
}

const TOwned_Value* TTable::TImpl::Pending(TField field) const {
  if (state == TState::Browse || !(set >> field.Position & 1)) return nullptr;
  return &pending[static_cast<std::size_t>(field.Position)];
}

void TTable::TImpl::Write_Insert() {
  TStatement*& inserter = inserters[set];
  if (!inserter) inserter = &database.Statement(Insert_Sql(def, set));
  TUse use(*inserter);
  Bind_Pending(*use);
  use->Step();
  database.Table_Changed(number);
  place = TPlace::Row;
  bof = false;
  unloaded = database.Engine().Last_Row_Id();
}

int TTable::TImpl::Bind_Pending(TStatement& statement) {
  int parameter = 0;
  for (std::size_t i = 0; i < def.Columns.size(); ++i) {
    if (!(set >> i & 1)) continue;
    if (def.Columns[i].Type == TColumn_Type::Blob) {
      statement.Bind_Blob(parameter++, pending[i].Text);
    } else {
      Bind(statement, parameter++, pending[i].Value());
    }
  }
  return parameter;
}

void TTable::TImpl::Write_Edit() {
  TStatement*& updater = updaters[set];
  if (!updater) updater = &database.Statement(Update_Sql(def, set));
  {
    TUse use(*updater);
    const int parameter = Bind_Pending(*use);
    use->Bind(parameter, batch.Id(at));
    use->Bind(parameter + 1, batch.Text(at, 0));
    use->Step();
  }
  if (database.Engine().Rows_Changed() == 0) throw Error("write", "the row has been deleted meanwhile");
  bool moved = false;
  for (const int column : index_columns) moved = moved || (set >> column & 1);
  if (moved || filtered()) {
    database.Table_Changed(number);
    unloaded = batch.Id(at);
    return;
  }
  Own_Change();
  for (std::size_t i = 0; i < def.Columns.size(); ++i) {
    const int slot = projection.Slot[i];
    if (!(set >> i & 1) || slot < 0) continue;
    switch (def.Columns[i].Type) {
      case TColumn_Type::Text:
        batch.Set(at, slot, std::string_view(pending[i].Text));
        break;
      case TColumn_Type::DateTime:
        batch.Set(at, slot, pending[i].Real);
        break;
      default:
        batch.Set(at, slot, pending[i].Integer);
        break;
    }
  }
}

void TTable::TImpl::Own_Change() {
  const bool fresh = Fresh();
  database.Table_Changed(number);
  stamp = fresh ? database.Table_Serial(number) : 0;
}

}  // namespace Kt_data_01
