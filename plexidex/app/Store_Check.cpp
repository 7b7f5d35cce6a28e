#include "Store_Check.h"

#include <map>

#include "Console_Text.h"
#include "Database.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

constexpr std::int64_t Named_Of_A_Kind = 50;

// Adds a finding for each row of a query, worded by `describe`.
template <class TDescribe>
void Add_Rows(std::vector<std::string>& findings, std::string_view sql, std::string_view kind,
              TDescribe describe) {
  const auto statement = Shared_Database().Engine().Prepare(sql);
  std::int64_t count = 0;
  while (statement->Step()) {
    if (++count <= Named_Of_A_Kind) findings.push_back(Printable(describe(*statement)));
  }
  if (count > Named_Of_A_Kind) {
    findings.push_back("And " + std::to_string(count - Named_Of_A_Kind) + " more " + std::string(kind) + ".");
  }
}

std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

void Check_Storage(std::vector<std::string>& findings) {
  std::map<std::string, int> times;
  for (const std::string& line : Shared_Database().Engine().Check_Storage()) ++times[line];
  for (const auto& [line, count] : times) {
    findings.push_back("In the file: " + Printable(line) +
                       (count > 1 ? " (" + std::to_string(count) + " times)." : "."));
  }
}

void Check_Events(std::vector<std::string>& findings) {
  Add_Rows(findings,
           "SELECT Event, count(*) FROM KT_Events_Data d WHERE NOT EXISTS "
           "(SELECT 1 FROM KT_Events e WHERE e.Key = d.Event) GROUP BY Event",
           "missing events", [](TStatement& row) {
             return Counted(row.Integer(1), "occurrence belongs", "occurrences belong") + " to the event " +
                    Quoted(row.Text(0)) + ", which is not there.";
           });
  Add_Rows(
      findings,
      "SELECT Key FROM KT_Alarms a WHERE NOT EXISTS (SELECT 1 FROM KT_Events_Data d WHERE d.Key = a.Key)",
      "alarms without an occurrence", [](TStatement& row) {
        return "There is an alarm for the occurrence " + Quoted(row.Text(0)) + ", which is not there.";
      });
  Add_Rows(findings,
           "SELECT Key, Title FROM KT_Events e WHERE NOT EXISTS (SELECT 1 FROM KT_Events_Data d WHERE "
           "d.Event = e.Key)",
           "events without an occurrence", [](TStatement& row) {
             return "The event " + Quoted(row.Text(0)) + " (" + std::string(row.Text(1)) +
                    ") has no occurrence.";
           });
}

}  // namespace

std::vector<std::string> Check_Store() {
  std::vector<std::string> findings;
  try {
    const TSnapshot snapshot;
    Check_Storage(findings);
    Check_Events(findings);
  } catch (const EEngine_Error& e) {
    findings.push_back(std::string("The database cannot be read through: ") + e.what() + ".");
  }
  return findings;
}

}  // namespace Plexidex
