#include "Table_View.h"

namespace Kt_data_01 {

TTable::TTable(std::string_view name, std::string_view index)
    : impl(std::make_unique<TImpl>(Shared_Database(), Table_Def(name), false,
                                   std::initializer_list<std::string_view>{})) {
  Set_Index(index);
}
TTable::TTable(TTable& table, std::initializer_list<std::string_view> columns)
    : TTable(table, std::string_view(), columns) {}
TTable::TTable(TTable& table, std::string_view index, std::initializer_list<std::string_view> columns)
    : impl(std::make_unique<TImpl>(table.impl->Database(), table.impl->Def(), true, columns)) {
  Set_Index(index);
}
TTable::TTable(TTable&&) noexcept = default;
TTable::~TTable() = default;

const std::string& TTable::Name() const {
  return impl->Name();
}

TField TTable::Field(std::string_view column) const {
  return {impl->Def().Known_Column(column)};
}

void TTable::Set_Index(std::string_view index) {
  impl->Set_Index(index);
}
bool TTable::FindKey(TValues key) {
  return impl->FindKey(key);
}
void TTable::SetRange(TValues low, TValues high) {
  impl->SetRange(low, high);
}
void TTable::CancelRange() {
  impl->CancelRange();
}
void TTable::Set_Filter(std::string_view expression) {
  impl->Set_Filter(expression);
}
void TTable::First() {
  impl->Go_To_End(true);
}
void TTable::Last() {
  impl->Go_To_End(false);
}
void TTable::Next() {
  impl->Move(true);
}
void TTable::Prior() {
  impl->Move(false);
}
bool TTable::Eof() const {
  return impl->Eof();
}
bool TTable::Bof() const {
  return impl->Bof();
}
std::int64_t TTable::Record_Count() const {
  return impl->Record_Count();
}
std::string_view TTable::Text(TField field) const {
  return impl->Text(field);
}
TText TTable::Shared_Text(TField field) const {
  return impl->Shared_Text(field);
}
std::int64_t TTable::Integer(TField field) const {
  return impl->Integer(field);
}
bool TTable::Boolean(TField field) const {
  return impl->Integer(field) != 0;
}
TDateTime TTable::DateTime(TField field) const {
  return impl->Real(field);
}
std::string TTable::Blob(TField field) const {
  return impl->Blob(field);
}
void TTable::Insert() {
  impl->Insert();
}
void TTable::Edit() {
  impl->Edit();
}
void TTable::Cancel() {
  impl->Cancel();
}
void TTable::Set(TField field, const TValue& value) {
  impl->Set(field, value);
}
void TTable::Set_Blob(TField field, std::string_view bytes) {
  impl->Set(field, TValue(bytes));
}
void TTable::SetFields(TValues values) {
  impl->SetFields(values);
}
void TTable::Delete() {
  impl->Delete();
}
void TTable::Prefetch(TField via, TTable& looked_up) {
  impl->Prefetch(*looked_up.impl, via);
}

void PostUpdate(TTable& table) {
  table.impl->Post();
}
void Set_Cache(TTable& table) {
  table.impl->Cache_On();
}
void Cache_Off(TTable& table) {
  table.impl->Cache_Off();
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
