#include "Contacts.h"

#include <algorithm>

#include "Journal.h"
#include "Kt_util_01.h"
#include "Templates.h"

namespace Kt_data_01 {

namespace {

std::string Other_Column(std::size_t number) {
  return "Other_" + std::to_string(number + 1);
}

// Sets one value of a contact and says who changed it, when. False if there is no such contact.
bool Change_Contact(std::string_view contact, std::string_view column, const TValue& value) {
  TTable contacts(Contacts_Table, "Key");
  if (!contacts.FindKey({contact})) return false;
  contacts.Edit();
  contacts.Set(contacts.Field(column), value);
  contacts.Set(contacts.Field("ModifiedBy"), Kt_util_01::User_Key());
  contacts.Set(contacts.Field("ModifiedAt"), Kt_util_01::Now());
  PostUpdate(contacts);
  return true;
}

constexpr int Last_Field = static_cast<int>(Contact_Fields);

// Of details; they hold for every cursor.
struct TColumns {
  TField Contact, Template, Notes;
  std::array<TField, Contact_Fields> Fields;
  std::array<TField, Other_Fields> Other;
};
const TColumns& Columns() {
  static const TColumns columns = [] {
    const TTable table(Contacts_Data);
    TColumns made{table.Field("Contact"), table.Field("Template"), table.Field("Notes"), {}, {}};
    for (std::size_t i = 0; i < Contact_Fields; ++i)
      made.Fields[i] = table.Field("Field" + std::to_string(i + 1));
    for (std::size_t i = 0; i < Other_Fields; ++i) made.Other[i] = table.Field(Other_Column(i));
    return made;
  }();
  return columns;
}

void Set_Texts(TTable& details, const TContact_Fields& fields, const TContact_Details& written) {
  const TColumns& column = Columns();
  for (int code = 1; code <= Last_Field; ++code)
    details.Set(column.Fields[static_cast<std::size_t>(code - 1)], fields[code]);
  for (std::size_t i = 0; i < Other_Fields; ++i) details.Set(column.Other[i], written.Other[i]);
  details.Set_Blob(column.Notes, written.Notes);
}

TAddress_Style Style_Of(std::string_view contact_template) {
  const auto found = Find_Template(contact_template);
  return found ? found->Address_Style : TAddress_Style::International;
}

std::string Insert_Contact(std::string_view book, std::string_view display_name, std::string_view parent,
                           int type) {
  std::string key = Kt_util_01::Get_GUID();
  TTable cursor(Contacts_Table);
  cursor.Insert();
  cursor.SetFields({key, display_name, type, book, parent, "", Kt_util_01::User_Key(), false,
                    Kt_util_01::User_Key(), Kt_util_01::Now()});
  PostUpdate(cursor);
  return key;
}

void Insert_Details(std::string_view contact, std::string_view book, const TContact_Details& written = {}) {
  TTable details(Contacts_Data);
  details.Insert();
  details.Set(Columns().Contact, contact);
  if (written.Template.empty()) {
    const auto templates = List_Templates(book);
    details.Set(Columns().Template, templates.empty() ? std::string_view() : templates.front().Key);
  } else {
    details.Set(Columns().Template, written.Template);
  }
  Set_Texts(details, written.Fields, written);
  PostUpdate(details);
}

}  // namespace

std::vector<TContact> List_Contacts(std::string_view book, bool deleted) {
  std::vector<std::pair<std::string, TContact>> sorted;
  TSnapshot snapshot;
  TTable contacts(Contacts_Table, "TypeBookandParent", {"Key", "DisplayName", "Deleted"});
  const TField key = contacts.Field("Key"), name = contacts.Field("DisplayName"),
               gone = contacts.Field("Deleted"), folder = contacts.Field("Parent");
  contacts.SetRange({Contact_Type_Contact, book}, {Contact_Type_Contact, book});
  for (contacts.First(); !contacts.Eof(); contacts.Next()) {
    if (contacts.Boolean(gone) != deleted || !Access_Allowed(contacts.Text(key), Access_See)) continue;
    TContact contact{std::string(contacts.Text(key)), std::string(contacts.Text(name)), std::string(book),
                     deleted, std::string(contacts.Text(folder))};
    sorted.emplace_back(Kt_util_01::Sort_Key(contact.Name), std::move(contact));
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<TContact> list;
  list.reserve(sorted.size());
  for (auto& [order, contact] : sorted) list.push_back(std::move(contact));
  return list;
}

std::optional<TContact> Find_Contact(std::string_view key) {
  TTable contacts(Contacts_Table, "Key", {"DisplayName", "Type", "Book", "Parent", "Deleted"});
  if (!contacts.FindKey({key}) || contacts.Integer(contacts.Field("Type")) != Contact_Type_Contact) return {};
  return TContact{std::string(key), std::string(contacts.Text(contacts.Field("DisplayName"))),
                  std::string(contacts.Text(contacts.Field("Book"))),
                  contacts.Boolean(contacts.Field("Deleted")),
                  std::string(contacts.Text(contacts.Field("Parent")))};
}

std::string Create_Contact(std::string_view book, std::string_view display_name, std::string_view parent,
                           int type) {
  if (type == Contact_Type_Contact) return Create_Contact(book, display_name, TContact_Details(), parent);
  return Insert_Contact(book, display_name, parent, type);
}

std::string Create_Contact(std::string_view book, std::string_view display_name,
                           const TContact_Details& details, std::string_view parent) {
  std::string key = Insert_Contact(book, display_name, parent, Contact_Type_Contact);
  Insert_Details(key, book, details);
  Log_Contact(key, TJournal_Type::Created, display_name);
  return key;
}

bool Rename_Contact(std::string_view contact, std::string_view name) {
  return Change_Contact(contact, "DisplayName", name);
}

bool Set_Contact_Deleted(std::string_view contact, bool deleted) {
  const auto found = Find_Contact(contact);
  if (!found || found->Deleted == deleted) return found.has_value();
  Change_Contact(contact, "Deleted", deleted);
  Log_Contact(contact, deleted ? TJournal_Type::Deleted : TJournal_Type::Restored, found->Name);
  return true;
}

bool Set_Contact_Owner(std::string_view contact, std::string_view user) {
  const auto found = Find_Contact(contact);
  if (!found) return false;
  TTable contacts(Contacts_Table, "Key", {"User"});
  contacts.FindKey({contact});
  const std::string before(contacts.Text(contacts.Field("User")));
  if (before == user) return true;
  const std::string name_before = Get_UserName(before);
  Change_Contact(contact, "User", user);
  Log_Contact(contact, TJournal_Type::Owner_Changed, found->Name,
              (name_before.empty() ? "To " : "From " + name_before + " to ") + Get_UserName(user));
  return true;
}

void Note_Change(std::string_view contact, std::string_view what) {
  const auto found = Find_Contact(contact);
  if (!found) return;
  Change_Contact(contact, "DisplayName", found->Name);
  Log_Contact(contact, TJournal_Type::Updated, found->Name, what);
}

TContact_Details Read_Contact_Details(std::string_view contact) {
  TContact_Details read;
  TTable details(Contacts_Data, "Contact");
  if (!details.FindKey({contact})) return read;
  const TColumns& column = Columns();
  for (std::size_t i = 0; i < Other_Fields; ++i) read.Other[i] = details.Text(column.Other[i]);
  for (int code = 1; code <= Last_Field; ++code)
    read.Fields[code] = details.Text(column.Fields[static_cast<std::size_t>(code - 1)]);
  read.Template = details.Text(column.Template);
  read.Notes = details.Blob(column.Notes);
  read.Fields = With_Address_In(read.Fields, Style_Of(read.Template));
  return read;
}

bool Write_Contact_Details(std::string_view contact, const TContact_Details& written) {
  const auto owner = Find_Contact(contact);
  if (!owner) return false;
  TTable details(Contacts_Data, "Contact");
  // A damaged database may lack them.
  if (!details.FindKey({contact})) Insert_Details(contact, owner->Book);
  if (!details.FindKey({contact})) return false;
  details.Edit();
  if (!written.Template.empty()) details.Set(details.Field("Template"), written.Template);
  const TContact_Fields fields =
      With_Address_In(written.Fields, Style_Of(details.Text(details.Field("Template"))));
  Set_Texts(details, fields, written);
  PostUpdate(details);
  return true;
}

bool Write_Contact(std::string_view contact, std::string_view name, const TContact_Details& details) {
  const auto before = Find_Contact(contact);
  if (!before) return false;
  const TContact_Details details_before = Read_Contact_Details(contact);
  Write_Contact_Details(contact, details);
  const bool renamed = before->Name != name;
  if (!renamed && Read_Contact_Details(contact) == details_before) return true;
  Change_Contact(contact, "DisplayName", name);
  Log_Contact(contact, TJournal_Type::Updated, name, renamed ? "Renamed from " + before->Name : "");
  return true;
}

TOther_Texts Other_Labels(std::string_view book) {
  TOther_Texts labels;
  for (std::size_t i = 0; i < Other_Fields; ++i) labels[i] = "Other " + std::to_string(i + 1);
  TTable fields(Fields_Table, "Book");
  if (!fields.FindKey({book})) return labels;
  for (std::size_t i = 0; i < Other_Fields; ++i) {
    if (const auto own = fields.Text(fields.Field(Other_Column(i))); !own.empty()) labels[i] = own;
  }
  return labels;
}

void Set_Other_Labels(std::string_view book, const TOther_Texts& labels) {
  TTable fields(Fields_Table, "Book");
  if (fields.FindKey({book})) {
    fields.Edit();
  } else {
    fields.Insert();
    fields.Set(fields.Field("Book"), book);
  }
  for (std::size_t i = 0; i < Other_Fields; ++i) fields.Set(fields.Field(Other_Column(i)), labels[i]);
  PostUpdate(fields);
}

}  // namespace Kt_data_01
