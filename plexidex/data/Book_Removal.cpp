#include <vector>

#include "Books.h"
#include "Kt_data_01.h"
#include "Row_Sets.h"

namespace Kt_data_01 {

namespace {

std::vector<std::string> Masters_Of(std::string_view book) {
  std::vector<std::string> masters;
  TTable occurrences(Events_Data, "BookandDate", {"Event"});
  occurrences.SetRange({book}, {book});
  const TField event = occurrences.Field("Event");
  // Ordered by date, the occurrences of several sets mix: a master may be listed more than once.
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    if (masters.empty() || masters.back() != occurrences.Text(event))
      masters.emplace_back(occurrences.Text(event));
  }
  return masters;
}

}  // namespace

void Delete_Book(std::string_view book) {
  const std::vector<std::string> masters = Masters_Of(book);
  // A row is deleted before the row that it refers to.
  struct TStep {
    std::string_view Table, Column;
    std::string_view Owners = {};  // table whose keys the column holds; if empty, it holds the book's key
  };
  constexpr TStep occurrences_first[] = {
      {"KT_Alarms", "Key", "KT_Events_Data"},
      {"KT_Alerts", "Occurrence", "KT_Events_Data"},
      {"KT_Log", "Occurrence", "KT_Events_Data"},
      {"KT_Import_Events", "Book"},
      {"KT_Imports", "Book"},
      {"KT_Import_Texts", "Book"},
      {"KT_Import_Zones", "Book"},
      {"KT_Events_Data", "Book"},
  };
  constexpr TStep contacts_then[] = {
      {"KT_Log", "Contact", "KT_Contacts"},
      {"KT_Categories_InUse", "Contact", "KT_Contacts"},
      {"KT_Flags", "Contact", "KT_Contacts"},
      {"KT_Links", "Contact", "KT_Contacts"},
      {"KT_Cards", "Book"},
      {"KT_Rights", "Owner", "KT_Contacts"},
      {"KT_Contacts_Data", "Contact", "KT_Contacts"},
      {"KT_Contacts", "Book"},
      {"KT_Rights", "Owner"},
      {"KT_Filters", "BookKey"},
      {"KT_Templates", "Book"},
      {"KT_Categories", "Book"},
      {"KT_Fields", "Book"},
      {"KT_Books", "Key"},
  };
  const auto take = [book](const TStep& step) {
    if (step.Owners.empty()) {
      Delete_Rows(step.Table, step.Column, book);
    } else {
      Delete_Rows_Of(step.Table, step.Column, step.Owners, "Book", book);
    }
  };
  for (const TStep& step : occurrences_first) take(step);
  for (const std::string& master : masters) {
    Delete_Rows("KT_Open_Editors", "Event", master);
    Delete_Rows("KT_Events", "Key", master);
  }
  for (const TStep& step : contacts_then) take(step);
}

}  // namespace Kt_data_01
