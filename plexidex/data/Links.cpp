#include "Links.h"

#include "Contact_Rows.h"
#include "Contacts.h"
#include "Journal.h"

namespace Kt_data_01 {

namespace {

struct TLink_Rows {
  TTable Table{Links_Table};
  TField Title = Table.Field("Title"), Target = Table.Field("FileOrUrl");

  TLink Link() const { return {std::string(Table.Text(Title)), std::string(Table.Text(Target))}; }
  bool Find(std::string_view contact, const TLink& link) {
    return Find_Row_Of(Table, contact, [&] { return Link() == link; });
  }
  void Write(std::string_view contact, const TLink& link) {
    Table.SetFields({contact, link.Title, link.Target, !link.Target.empty()});
    PostUpdate(Table);
  }
};

}  // namespace

std::vector<TLink> List_Links(std::string_view contact) {
  std::vector<TLink> links;
  TLink_Rows rows;
  Find_Row_Of(rows.Table, contact, [&] {
    links.push_back(rows.Link());
    return false;
  });
  return links;
}

void Add_Link(std::string_view contact, const TLink& link) {
  TLink_Rows rows;
  rows.Table.Insert();
  rows.Write(contact, link);
  Log_Contact(contact, TJournal_Type::Link_Added, link.Title, link.Target);
}

bool Change_Link(std::string_view contact, const TLink& before, const TLink& after) {
  TLink_Rows rows;
  if (!rows.Find(contact, before)) return false;
  if (after == before) return true;
  rows.Table.Edit();
  rows.Write(contact, after);
  Note_Change(contact, "Link changed: " + after.Title);
  return true;
}

bool Remove_Link(std::string_view contact, const TLink& link) {
  TLink_Rows rows;
  if (!rows.Find(contact, link)) return false;
  rows.Table.Delete();
  Log_Contact(contact, TJournal_Type::Link_Removed, link.Title, link.Target);
  return true;
}

void Log_Link_Opened(std::string_view contact, const TLink& link) {
  Log_Contact(contact, TJournal_Type::Link_Opened, link.Title, link.Target);
}

}  // namespace Kt_data_01
