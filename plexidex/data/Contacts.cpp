#include "Contacts.h"

#include <algorithm>

#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

std::string Other_Column(std::size_t number) {
  return "Other_" + std::to_string(number + 1);
}

// The host's own details belong to no template.
constexpr std::string_view No_Template = {};

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

bool Find_Details(TTable& details, std::string_view contact) {
  return details.FindKey({contact, No_Template});
}

}  // namespace

std::vector<TContact> List_Contacts(std::string_view book, bool deleted) {
  std::vector<std::pair<std::string, TContact>> sorted;
  TSnapshot snapshot;
  TTable contacts(Contacts_Table, "TypeBookandParent", {"Key", "DisplayName", "Deleted"});
  const TField key = contacts.Field("Key"), name = contacts.Field("DisplayName"),
               gone = contacts.Field("Deleted");
  contacts.SetRange({Contact_Type_Contact, book}, {Contact_Type_Contact, book});
  for (contacts.First(); !contacts.Eof(); contacts.Next()) {
    if (contacts.Boolean(gone) != deleted || !Access_Allowed(contacts.Text(key), Access_See)) continue;
    TContact contact{std::string(contacts.Text(key)), std::string(contacts.Text(name)), std::string(book),
                     deleted};
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
  TTable contacts(Contacts_Table, "Key", {"DisplayName", "Type", "Book", "Deleted"});
  if (!contacts.FindKey({key}) || contacts.Integer(contacts.Field("Type")) != Contact_Type_Contact) return {};
  return TContact{std::string(key), std::string(contacts.Text(contacts.Field("DisplayName"))),
                  std::string(contacts.Text(contacts.Field("Book"))),
                  contacts.Boolean(contacts.Field("Deleted"))};
}

std::string Create_Contact(std::string_view book, std::string_view display_name, std::string_view parent,
                           int type) {
  std::string key = Kt_util_01::Get_GUID();
  TTable cursor(Contacts_Table);
  cursor.Insert();
  cursor.SetFields({key, display_name, type, book, parent, "", Kt_util_01::User_Key(), false,
                    Kt_util_01::User_Key(), Kt_util_01::Now()});
  PostUpdate(cursor);
  return key;
}

bool Rename_Contact(std::string_view contact, std::string_view name) {
  return Change_Contact(contact, "DisplayName", name);
}

bool Set_Contact_Deleted(std::string_view contact, bool deleted) {
  return Change_Contact(contact, "Deleted", deleted);
}

TContact_Details Read_Contact_Details(std::string_view contact) {
  TContact_Details read;
  TTable details(Contacts_Data, "ContactandTemplate");
  if (!Find_Details(details, contact)) return read;
  for (std::size_t i = 0; i < Other_Fields; ++i) read.Other[i] = details.Text(details.Field(Other_Column(i)));
  read.Notes = details.Blob(details.Field("Notes"));
  return read;
}

bool Write_Contact(std::string_view contact, std::string_view name, const TContact_Details& written) {
  if (!Rename_Contact(contact, name)) return false;
  TTable details(Contacts_Data, "ContactandTemplate");
  if (Find_Details(details, contact)) {
    details.Edit();
  } else {
    details.Insert();
    details.Set(details.Field("Contact"), contact);
    details.Set(details.Field("Template"), No_Template);
  }
  for (std::size_t i = 0; i < Other_Fields; ++i)
    details.Set(details.Field(Other_Column(i)), written.Other[i]);
  details.Set_Blob(details.Field("Notes"), written.Notes);
  PostUpdate(details);
  return true;
}

TOther_Texts New_Book_Labels() {
  TOther_Texts labels = Other_Labels({});
  labels[0] = "Phone";
  labels[1] = "E-mail";
  return labels;
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
