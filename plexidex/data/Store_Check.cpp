#include "Store_Check.h"

#include <map>

#include "Database.h"
#include "In_Quotes.h"
#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

constexpr std::int64_t Named_Of_A_Kind = 50;

// Adds a finding for each row of a query, worded by `describe`.
template <class TDescribe>
void Add_Rows(std::vector<std::string>& findings, const std::string& sql, std::string_view kind,
              TDescribe describe) {
  const auto statement = Shared_Database().Engine().Prepare(sql);
  std::int64_t count = 0;
  while (statement->Step()) {
    if (++count <= Named_Of_A_Kind) findings.push_back(describe(*statement));
  }
  if (count > Named_Of_A_Kind) {
    findings.push_back("And " + std::to_string(count - Named_Of_A_Kind) + " more " + std::string(kind) + ".");
  }
}

void Check_Storage(std::vector<std::string>& findings) {
  std::map<std::string, int> times;
  for (const std::string& line : Shared_Database().Engine().Check_Storage()) ++times[line];
  for (const auto& [line, count] : times) {
    findings.push_back("In the file: " + line +
                       (count > 1 ? " (" + std::to_string(count) + " times)." : "."));
  }
}

void Check_Events(std::vector<std::string>& findings) {
  const TTable_Def &events = Table_Def("KT_Events"), &occurrences = Table_Def("KT_Events_Data"),
                   &alarms = Table_Def("KT_Alarms");
  Add_Rows(findings, Unmatched_Count_Sql(occurrences, "Event", events, "Key"), "missing events",
           [](TStatement& row) {
             const std::int64_t count = row.Integer(1);
             return std::to_string(count) + (count == 1 ? " occurrence belongs" : " occurrences belong") +
                    " to the event " + In_Quotes(row.Text(0)) + ", which is not there.";
           });
  constexpr std::int64_t first = Kt_util_01::Day_From_Date(Kt_util_01::Min_Year, 1, 1),
                         last = Kt_util_01::Day_From_Date(Kt_util_01::Max_Year, 12, 31);
  Add_Rows(findings, Outside_Sql(occurrences, {"EventDate", "Key"}, first, last + 1),
           "occurrences without a date", [](TStatement& row) {
             return "The occurrence " + In_Quotes(row.Text(1)) + " has no date of the years 1 to 9999.";
           });
  Add_Rows(findings, Unmatched_Sql(alarms, {"Key"}, occurrences, "Key"), "alarms without an occurrence",
           [](TStatement& row) {
             return "There is an alarm for the occurrence " + In_Quotes(row.Text(0)) +
                    ", which is not there.";
           });
  Add_Rows(findings, Unmatched_Sql(events, {"Key", "Title"}, occurrences, "Event"),
           "events without an occurrence", [](TStatement& row) {
             return "The event " + In_Quotes(row.Text(0)) + " (" + std::string(row.Text(1)) +
                    ") has no occurrence.";
           });
}

void Check_Alerts(std::vector<std::string>& findings) {
  const TTable_Def &alarms = Table_Def("KT_Alarms"), &alerts = Table_Def("KT_Alerts");
  Add_Rows(findings, Wrong_Alerts_Sql(), "alarms that do not go off as they say", [](TStatement& row) {
    constexpr const char* faults[] = {"never goes off: nothing says when it is due.",
                                      "goes off for another user than its own.",
                                      "goes off at another time than its own."};
    return "The alarm of the occurrence " + In_Quotes(row.Text(0)) + " " + faults[row.Integer(1)];
  });
  Add_Rows(findings, Unmatched_Sql(alerts, {"Occurrence"}, alarms, "Key"), "alerts without an alarm",
           [](TStatement& row) {
             return "Something is due for the occurrence " + In_Quotes(row.Text(0)) + ", which has no alarm.";
           });
  Add_Rows(findings, Repeated_Sql(alerts, "Occurrence"), "alarms that go off more than once",
           [](TStatement& row) {
             return "The alarm of the occurrence " + In_Quotes(row.Text(0)) + " goes off " +
                    std::to_string(row.Integer(1)) + " times.";
           });
}

void Check_Contacts(std::vector<std::string>& findings) {
  const TTable_Def &contacts = Table_Def("KT_Contacts"), &details = Table_Def("KT_Contacts_Data"),
                   &templates = Table_Def("KT_Templates"), &books = Table_Def("KT_Books");
  Add_Rows(findings, Unmatched_Sql(templates, {"Book", "Name"}, books, "Key"), "templates without a book",
           [](TStatement& row) {
             return "The template " + In_Quotes(row.Text(1)) + " belongs to the book " +
                    In_Quotes(row.Text(0)) + ", which is not there.";
           });
  Add_Rows(findings, Unmatched_Sql(details, {"Template", "Contact"}, templates, "Key"),
           "contacts without a template", [](TStatement& row) {
             return "The contact " + In_Quotes(row.Text(1)) + " has the template " + In_Quotes(row.Text(0)) +
                    ", which is not there.";
           });
  Add_Rows(findings, Unmatched_Sql(Table_Def("KT_Cards"), {"Contact", "UID"}, contacts, "Key"),
           "cards without a contact", [](TStatement& row) {
             return "The card " + In_Quotes(row.Text(1)) + " belongs to the contact " +
                    In_Quotes(row.Text(0)) + ", which is not there.";
           });
  const std::string of_a_contact = " AND " + Column_Sql(contacts, contacts.Known_Column("Type")) + " = " +
                                   std::to_string(Contact_Type_Contact);
  Add_Rows(findings, Unmatched_Sql(contacts, {"Key", "DisplayName"}, details, "Contact") + of_a_contact,
           "contacts without details", [](TStatement& row) {
             return "The contact " + In_Quotes(row.Text(0)) + " (" + std::string(row.Text(1)) +
                    ") has no details.";
           });
}

void Check_What_Contacts_Have(std::vector<std::string>& findings) {
  const TTable_Def &contacts = Table_Def("KT_Contacts"), &categories = Table_Def("KT_Categories"),
                   &members = Table_Def("KT_Categories_InUse");
  Add_Rows(findings, Unmatched_Sql(categories, {"Book", "Name"}, Table_Def("KT_Books"), "Key"),
           "categories without a book", [](TStatement& row) {
             return "The category " + In_Quotes(row.Text(1)) + " belongs to the book " +
                    In_Quotes(row.Text(0)) + ", which is not there.";
           });
  Add_Rows(findings, Unmatched_Sql(members, {"Category", "Contact"}, categories, "Key"),
           "members of missing categories", [](TStatement& row) {
             return "The contact " + In_Quotes(row.Text(1)) + " belongs to the category " +
                    In_Quotes(row.Text(0)) + ", which is not there.";
           });
  for (const auto& [table, what] : {std::pair(&members, "membership of a category"),
                                    {&Table_Def("KT_Links"), "link"},
                                    {&Table_Def("KT_Log"), "journal entry"},
                                    {&Table_Def("KT_Flags"), "tag"}}) {
    const std::string kind(what);
    Add_Rows(findings, Unmatched_Sql(*table, {"Contact"}, contacts, "Key"), "of a missing contact: " + kind,
             [&](TStatement& row) {
               return "There is a " + kind + " of the contact " + In_Quotes(row.Text(0)) +
                      ", which is not there.";
             });
  }
}

void Check_Folders(std::vector<std::string>& findings) {
  const TTable_Def& contacts = Table_Def("KT_Contacts");
  const auto of = [&](const char* column) { return Column_Sql(contacts, contacts.Known_Column(column)); };
  Add_Rows(findings,
           Unmatched_Sql(contacts, {"Parent", "Key", "DisplayName"}, contacts, "Key") + " AND " +
               of("Parent") + " <> ''",
           "contacts in missing folders", [](TStatement& row) {
             return In_Quotes(row.Text(1)) + " (" + std::string(row.Text(2)) + ") lies in the folder " +
                    In_Quotes(row.Text(0)) + ", which is not there.";
           });
  std::map<std::string, std::string> parents;
  TTable table(Contacts_Table, {"Key", "Type", "Parent"});
  table.Set_Filter("Type = " + std::to_string(Contact_Type_Folder));
  for (table.First(); !table.Eof(); table.Next())
    parents.emplace(table.Text(table.Field("Key")), table.Text(table.Field("Parent")));
  for (const auto& [key, parent] : parents) {
    std::string at = parent;
    for (std::size_t steps = 0; steps < parents.size() && at != key && parents.contains(at); ++steps)
      at = parents[at];
    if (at == key) findings.push_back("The folder " + In_Quotes(key) + " lies in itself.");
  }
}

}  // namespace

std::vector<std::string> Check_Store() {
  std::vector<std::string> findings;
  try {
    const TSnapshot snapshot;
    Check_Storage(findings);
    Check_Events(findings);
    Check_Alerts(findings);
    Check_Contacts(findings);
    Check_What_Contacts_Have(findings);
    Check_Folders(findings);
  } catch (const EEngine_Error& e) {
    findings.push_back(std::string("The database cannot be read through: ") + e.what() + ".");
  }
  return findings;
}

}  // namespace Kt_data_01
