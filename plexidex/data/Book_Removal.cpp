#include <vector>

#include "Contacts.h"
#include "Database.h"

namespace Kt_data_01 {

namespace {

constexpr std::string_view Of_Occurrences = R"( IN (SELECT "Key" FROM "KT_Events_Data" WHERE "Book" = ?))";
constexpr std::string_view Of_Contacts = R"( IN (SELECT "Key" FROM "KT_Contacts" WHERE "Book" = ?))";
constexpr std::string_view Of_Book = " = ?";

void Delete_Where(std::string_view table, std::string_view column, std::string_view condition,
                  std::string_view value) {
  TDatabase& database = Shared_Database();
  try {
    TUse use(database.Statement("DELETE FROM \"" + std::string(table) + "\" WHERE \"" + std::string(column) +
                                '"' + std::string(condition)));
    use->Bind(0, value);
    use->Step();
  } catch (const EEngine_Error& e) {
    database.Operation_Failed(e.what());
    throw EData_Error("delete", std::string(table), e.what());
  }
  database.Table_Changed(static_cast<std::size_t>(&Table_Def(table) - Schema().data()));
}

std::vector<std::string> Masters_Of(std::string_view book) {
  std::vector<std::string> masters;
  TTable occurrences(Events_Data, "BookandDate", {"Event"});
  occurrences.SetRange({book}, {book});
  const TField event = occurrences.Field("Event");
  // A set's occurrences mostly follow one another only by date, so a master may come more than once.
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    if (masters.empty() || masters.back() != occurrences.Text(event))
      masters.emplace_back(occurrences.Text(event));
  }
  return masters;
}

}  // namespace

void Delete_Book(std::string_view book) {
  const std::vector<std::string> masters = Masters_Of(book);
  // What refers to something goes before it.
  struct TStep {
    std::string_view Table, Column, Condition;
  };
  constexpr TStep occurrences_first[] = {
      {"KT_Alarms", "Key", Of_Occurrences},     {"KT_Alerts", "Occurrence", Of_Occurrences},
      {"KT_Log", "Occurrence", Of_Occurrences}, {"KT_Import_Events", "Book", Of_Book},
      {"KT_Imports", "Book", Of_Book},          {"KT_Events_Data", "Book", Of_Book},
  };
  constexpr TStep contacts_then[] = {
      {"KT_Log", "Contact", Of_Contacts},   {"KT_Categories_InUse", "Contact", Of_Contacts},
      {"KT_Flags", "Contact", Of_Contacts}, {"KT_Links", "Contact", Of_Contacts},
      {"KT_Rights", "Owner", Of_Contacts},  {"KT_Contacts_Data", "Contact", Of_Contacts},
      {"KT_Contacts", "Book", Of_Book},     {"KT_Rights", "Owner", Of_Book},
      {"KT_Filters", "BookKey", Of_Book},   {"KT_Templates", "Book", Of_Book},
      {"KT_Categories", "Book", Of_Book},   {"KT_Fields", "Book", Of_Book},
      {"KT_Books", "Key", Of_Book},
  };
  for (const TStep& step : occurrences_first) Delete_Where(step.Table, step.Column, step.Condition, book);
  for (const std::string& master : masters) {
    Delete_Where("KT_Open_Editors", "Event", Of_Book, master);
    Delete_Where("KT_Events", "Key", Of_Book, master);
  }
  for (const TStep& step : contacts_then) Delete_Where(step.Table, step.Column, step.Condition, book);
}

}  // namespace Kt_data_01
