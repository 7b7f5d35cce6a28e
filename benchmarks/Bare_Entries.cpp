#include "Bare_Entries.h"

#include <map>
#include <utility>

#include "Entry_Lists.h"
#include "Kt_util_01.h"

namespace Bench {

std::string Bare_Join(const char* alarm_key, const char* rest) {
  return std::string(
             "SELECT d.Key, e.Title, e.Location, d.Contact, c.DisplayName, e.User, d.EventDate, e.FirstDate, "
             "e.Priority, e.EventType, e.Percentage, e.Status, e.Private, e.AllDay, d.Actioned, a.Key IS NOT "
             "NULL FROM KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event JOIN KT_Contacts c ON c.Key = "
             "d.Contact LEFT JOIN KT_Alarms a ON a.Key = ") +
         alarm_key + " WHERE d.Book = 'book' AND c.Deleted = 0" + rest;
}

std::vector<TBare_Entry> Read_Bare(sqlite3_stmt* join) {
  const std::string& user = Kt_util_01::User_Key();
  const auto text = [join](int column) {
    return std::string(reinterpret_cast<const char*>(sqlite3_column_text(join, column)),
                       static_cast<std::size_t>(sqlite3_column_bytes(join, column)));
  };
  const auto number = [join](int column) { return sqlite3_column_int(join, column); };
  std::vector<TBare_Entry> entries;
  while (sqlite3_step(join) == SQLITE_ROW) {
    TBare_Entry& entry = entries.emplace_back();
    entry.Key = text(0);
    entry.Title = text(1);
    entry.Location = text(2);
    entry.Contact = text(3);
    entry.ContactName = text(4);
    entry.User = text(5);
    entry.EventDate = sqlite3_column_double(join, 6);
    entry.FirstDate = sqlite3_column_double(join, 7);
    entry.Priority = number(8);
    entry.EventType = number(9);
    entry.Percentage = number(10);
    if (entry.EventType == 3)
      entry.Status =
          KTReminds::Task_Status_Text(static_cast<KTReminds::TTask_Status>(number(11)), entry.Percentage);
    entry.Private = number(12) != 0 && entry.User != user;
    entry.AllDay = number(13) != 0;
    entry.Done = number(14) != 0;
    entry.Alarm = number(15) != 0 && !entry.Done && entry.User == user;
  }
  sqlite3_reset(join);
  return entries;
}

std::vector<TBare_Entry> Read_Bare_Window(const TSize& size, double first_day, int days,
                                          const char* alarm_key) {
  static std::map<std::pair<int, std::string>, sqlite3_stmt*> statements;
  sqlite3_stmt*& join = statements[{size.Occurrences, alarm_key}];
  if (!join)
    join = Prepare(Bare_Connection(Database_File(size)),
                   Bare_Join(alarm_key, " AND d.EventDate >= ? AND d.EventDate < ?"));
  sqlite3_bind_double(join, 1, first_day);
  sqlite3_bind_double(join, 2, first_day + days);
  return Read_Bare(join);
}

}  // namespace Bench
