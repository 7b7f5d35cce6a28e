#include "Table_Cache.h"
#include "Table_Writer.h"

namespace Kt_data_01 {

/// A view, put together from its range, reader, cache and writer.
class TTable::TImpl final : public TTable_Link {
 public:
  TImpl(TDatabase& database, const TTable_Def& def, bool is_cursor,
        std::initializer_list<std::string_view> columns)
      : Table(database, def), Reader(Table, Range, {def, columns}), is_cursor(is_cursor) {
    database.Attach(this);
  }
  ~TImpl() { Table.Database.Detach(this); }
  TImpl(const TImpl&) = delete;
  TImpl& operator=(const TImpl&) = delete;

  void After_Failure() noexcept override {
    Writer.Cancel();
    if (is_cursor) return;
    Range.Cancel();
    Reader.Range_Changed(TTable_Range::TChange::Shape);
  }

  void Set_Index(std::string_view index) {
    const auto change = Range.Set_Index(index);
    Writer.Cancel();
    Reader.Range_Changed(change);
    if (change == TTable_Range::TChange::Shape) Cache.Forget();
  }

  bool Find(TValues key) {
    Writer.Cancel();
    Range.Check_Key(key.size());
    if (Cache.May_Find()) {
      Reader.Leave_Store();  // which Find may free
      if (const auto found = Cache.Find(key.begin()->Text()))
        return Reader.Stand_On(found->Store, found->Row);
    }
    return Reader.Find(key);
  }

  TTable_Context Table;
  TTable_Range Range{Table};
  TTable_Reader Reader;
  TTable_Cache Cache{Table, Range, Reader.Columns()};
  TTable_Writer Writer{Table, Range, Reader};

 private:
  const bool is_cursor;
};

TTable::TTable(std::string_view name, std::string_view index)
    : impl(std::make_unique<TImpl>(Shared_Database(), Table_Def(name), false,
                                   std::initializer_list<std::string_view>{})) {
  Set_Index(index);
}
TTable::TTable(TTable& table, std::initializer_list<std::string_view> columns)
    : TTable(table, std::string_view(), columns) {}
TTable::TTable(TTable& table, std::string_view index, std::initializer_list<std::string_view> columns)
    : impl(std::make_unique<TImpl>(table.impl->Table.Database, table.impl->Table.Def, true, columns)) {
  Set_Index(index);
}
TTable::TTable(TTable&&) noexcept = default;
TTable::~TTable() = default;

const std::string& TTable::Name() const {
  return impl->Table.Name;
}
TField TTable::Field(std::string_view column) const {
  return {impl->Table.Def.Known_Column(column)};
}

void TTable::Set_Index(std::string_view index) {
  impl->Set_Index(index);
}
bool TTable::FindKey(TValues key) {
  return impl->Find(key);
}
void TTable::SetRange(TValues low, TValues high) {
  impl->Writer.Cancel();
  impl->Reader.Range_Changed(impl->Range.Set(low, high));
}
void TTable::CancelRange() {
  impl->Writer.Cancel();
  impl->Reader.Range_Changed(impl->Range.Cancel());
}
void TTable::Set_Filter(std::string_view expression) {
  impl->Writer.Cancel();
  impl->Reader.Range_Changed(impl->Range.Set_Filter(expression));
}
void TTable::Set_Text_Test(TField field, std::function<bool(std::string_view)> test) {
  impl->Writer.Cancel();
  impl->Reader.Set_Text_Test(field, std::move(test));
}
void TTable::Prefetch(TField via, TTable& looked_up) {
  TImpl& other = *looked_up.impl;
  if (!other.Range.Has_Text_Key())
    throw impl->Table.Error("prefetch", "the other table has no index to be found by");
  const TRange_Shape& shape = other.Range.Shape();
  TLinked_Rows& rows = impl->Reader.Prefetch(
      other.Table, {&other.Reader.Columns(), shape.Columns[0], via.Position, !shape.Unique});
  impl->Cache.Forget();  // its rows lack the column
  other.Cache.Serve_From(impl->Reader, rows, via);
}
void Set_Cache(TTable& table) {
  table.impl->Cache.On();
  table.impl->Reader.Read_Far_Ahead(true);
}
void Cache_Off(TTable& table) {
  table.impl->Reader.Copy_Row();
  table.impl->Cache.Off();
  table.impl->Reader.Read_Far_Ahead(false);
}

void TTable::First() {
  impl->Writer.Cancel();
  impl->Reader.To_End(true);
}
void TTable::Last() {
  impl->Writer.Cancel();
  impl->Reader.To_End(false);
}
void TTable::Next() {
  impl->Writer.Cancel();
  impl->Reader.Move(true);
}
void TTable::Prior() {
  impl->Writer.Cancel();
  impl->Reader.Move(false);
}
bool TTable::Eof() const {
  return impl->Reader.Eof();
}
bool TTable::Bof() const {
  return impl->Reader.Bof();
}
std::int64_t TTable::Record_Count() const {
  return impl->Reader.Count();
}

std::string_view TTable::Text(TField field) const {
  const TOwned_Value* pending = impl->Writer.Value(field);
  return pending ? std::string_view(pending->Text) : impl->Reader.Text(field);
}
TText TTable::Shared_Text(TField field) const {
  const TOwned_Value* pending = impl->Writer.Value(field);
  return pending ? TText(pending->Text) : impl->Reader.Shared_Text(field);
}
std::int64_t TTable::Integer(TField field) const {
  const TOwned_Value* pending = impl->Writer.Value(field);
  return pending ? pending->Value().Integer() : impl->Reader.Integer(field);
}
bool TTable::Boolean(TField field) const {
  return Integer(field) != 0;
}
TDateTime TTable::DateTime(TField field) const {
  const TOwned_Value* pending = impl->Writer.Value(field);
  return pending ? pending->Value().Real() : impl->Reader.Real(field);
}
std::string TTable::Blob(TField field) const {
  const TOwned_Value* pending = impl->Writer.Value(field);
  return pending ? pending->Text : impl->Reader.Blob(field);
}

void TTable::Insert() {
  impl->Writer.Insert();
}
void TTable::Edit() {
  impl->Writer.Edit();
}
void TTable::Cancel() {
  impl->Writer.Cancel();
}
void TTable::Set(TField field, const TValue& value) {
  impl->Writer.Set(field, value);
}
void TTable::Set_Blob(TField field, std::string_view bytes) {
  impl->Writer.Set(field, bytes);
}
void TTable::SetFields(TValues values) {
  impl->Writer.Set_Fields(values);
}
void PostUpdate(TTable& table) {
  table.impl->Writer.Post();
}
void TTable::Delete() {
  impl->Writer.Delete();
}

TTable Events_Table("KT_Events");
TTable Events_Data("KT_Events_Data");
TTable Alarms_Table("KT_Alarms");
TTable Contacts_Table("KT_Contacts");
TTable Contacts_Data("KT_Contacts_Data");
TTable Books_Table("KT_Books");
TTable Filters_Table("KT_Filters");
TTable Templates_Table("KT_Templates");
TTable Categories_Table("KT_Categories");
TTable Categories_InUse("KT_Categories_InUse");
TTable Fields_Table("KT_Fields");
TTable Flags_Table("KT_Flags");
TTable Links_Table("KT_Links");
TTable Log_Table("KT_Log");

}  // namespace Kt_data_01
