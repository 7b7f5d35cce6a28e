#include "Journal.h"

#include <algorithm>

#include "Contact_Rows.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

const char* Activity_Name(int type) {
  for (const Kt_util_01::TActivity& activity : Kt_util_01::Populate_Activities()) {
    if (activity.Code == type) return activity.Name.c_str();
  }
  return nullptr;
}

// Of a table on which no row need be current.
struct TLog {
  TTable Table{Log_Table};
  TField Contact = Table.Field("Contact"), Type = Table.Field("Type"), Date = Table.Field("LogDate"),
         Second_Date = Table.Field("SecondDate"), Title = Table.Field("Title"),
         Text = Table.Field("Description"), Occurrence = Table.Field("Occurrence"),
         Minutes = Table.Field("Minutes"), Private_To = Table.Field("PrivateTo");

  TJournal_Entry Entry() const {
    return {static_cast<int>(Table.Integer(Type)),
            Table.DateTime(Date),
            Table.DateTime(Second_Date),
            std::string(Table.Text(Title)),
            std::string(Table.Text(Text)),
            std::string(Table.Text(Occurrence)),
            static_cast<int>(Table.Integer(Minutes)),
            std::string(Table.Text(Private_To))};
  }
  bool Find(std::string_view contact, const TJournal_Entry& entry) {
    return Is_By_Hand(entry) && Find_Row_Of(Table, contact, [&] { return Entry() == entry; });
  }
};

}  // namespace

std::string Journal_Type_Name(int type) {
  switch (static_cast<TJournal_Type>(type)) {
    case TJournal_Type::Imported:
      return "Contact Imported";
    case TJournal_Type::Created:
      return "Contact Created";
    case TJournal_Type::Updated:
      return "Contact Updated";
    case TJournal_Type::Deleted:
      return "Contact Deleted";
    case TJournal_Type::Restored:
      return "Contact Restored";
    case TJournal_Type::Owner_Changed:
      return "Owner Changed";
    case TJournal_Type::Link_Added:
      return "Link Added";
    case TJournal_Type::Link_Opened:
      return "Link Opened";
    case TJournal_Type::Link_Removed:
      return "Link Removed";
  }
  const char* activity = Activity_Name(type);
  return activity ? activity : "Journal Entry " + std::to_string(type);
}

std::vector<TJournal_Entry> List_Journal(std::string_view contact) {
  std::vector<TJournal_Entry> entries;
  TLog log;
  Find_Row_Of(log.Table, contact, [&] {
    entries.push_back(log.Entry());
    TJournal_Entry& entry = entries.back();
    if (entry.Private_To.empty() || entry.Private_To == Kt_util_01::User_Key()) return false;
    // No more than that it is private.
    entry.Title = "Private";
    entry.Text.clear();
    return false;
  });
  std::reverse(entries.begin(), entries.end());
  std::stable_sort(entries.begin(), entries.end(),
                   [](const TJournal_Entry& a, const TJournal_Entry& b) { return a.Date > b.Date; });
  return entries;
}

bool Is_By_Hand(const TJournal_Entry& entry) {
  return entry.Occurrence.empty() && Activity_Name(entry.Type);
}

void Add_Journal_Entry(std::string_view contact, const TJournal_Entry& entry) {
  LogJournal(entry.Type, entry.Occurrence, contact, entry.Title, entry.Date, entry.Text, entry.Minutes,
             entry.Second_Date);
}

bool Change_Journal_Entry(std::string_view contact, const TJournal_Entry& before,
                          const TJournal_Entry& after) {
  TLog log;
  if (!log.Find(contact, before)) return false;
  log.Table.Edit();
  log.Table.SetFields({contact, after.Type, after.Date, after.Second_Date, after.Title, after.Text,
                       after.Occurrence, after.Minutes});
  PostUpdate(log.Table);
  return true;
}

bool Remove_Journal_Entry(std::string_view contact, const TJournal_Entry& entry) {
  TLog log;
  if (!log.Find(contact, entry)) return false;
  log.Table.Delete();
  return true;
}

void Log_Contact(std::string_view contact, TJournal_Type type, std::string_view title,
                 std::string_view text) {
  const TDateTime now = Kt_util_01::Now();
  LogJournal(static_cast<int>(type), {}, contact, title, now, text, 0, now);
}

}  // namespace Kt_data_01
