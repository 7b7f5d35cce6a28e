// The commands that look at what is stored, or mark it.

#include <algorithm>

#include "Agenda.h"
#include "Backup.h"
#include "Commands_Run.h"
#include "Console_Text.h"
#include "Contacts_Output.h"
#include "Database.h"
#include "Entry_Walk.h"
#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Marking.h"
#include "Rights.h"
#include "Row_Sets.h"
#include "Store_Check.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::int64_t Default_Days = 14;
constexpr std::int64_t Most_Days = 3'652'059;  // of the years 1 to 9999
constexpr std::size_t Shortest_Ending = 6;

std::int64_t Row_Count(const std::string& table) {
  TTable cursor(table);
  return cursor.Record_Count();
}

// The whole key of the occurrence that the user means.
std::string Find_Key(const std::string& typed) {
  TTable occurrences(Events_Data, "Key", {"Key"});
  if (occurrences.FindKey({typed})) return typed;
  if (typed.size() < Shortest_Ending) {
    throw ECommand_Error("There is no entry \"" + typed + "\"; the ending of a key needs at least " +
                         std::to_string(Shortest_Ending) + " characters.");
  }
  // Keys made at one time begin alike, so it is their ending that tells them apart.
  const std::vector<std::string> keys = Keys_Ending_In("KT_Events_Data", typed, 2);
  if (keys.empty()) throw ECommand_Error("There is no entry \"" + typed + "\".");
  if (keys.size() > 1) throw ECommand_Error("Several entries have a key that ends in \"" + typed + "\".");
  return keys.front();
}

}  // namespace

TBook Known_Book(const std::string& name) {
  if (auto book = Find_Visible_Book(name)) return *std::move(book);
  std::string known;
  for (const TBook& other : Visible_Books()) known += (known.empty() ? "" : ", ") + ('"' + other.Name + '"');
  throw ECommand_Error("There is no book \"" + name + "\"; " +
                       (known.empty() ? "there are no books yet." : "the books are " + known + "."));
}

TDateTime Day_From_Text(const std::string& option, const std::string& text) {
  const std::string word = UpperCase(text);
  if (word == "TODAY") return Today();
  if (word == "TOMORROW") return Today() + 1;
  if (word == "YESTERDAY") return Today() - 1;
  TDateTime day = 0;
  if (Str2Date(text, day)) return day;
  const std::string iso = FormatDateTime("yyyy-mm-dd", Today()), own = FormatDateTime("ddddd", Today());
  throw ECommand_Error(option + ": \"" + text + "\" is not a date such as " + iso +
                       (own == iso ? "" : ", " + own) + " or today.");
}

bool Is_Json(const std::string& format) {
  if (format.empty() || format == "text" || format == "json") return format == "json";
  throw ECommand_Error("--format: \"" + format + "\" is neither text nor json.");
}

int Run_Agenda(const TConsole& console, const TAgenda_Command& command) {
  const bool as_json = Is_Json(command.Format);
  TAgenda_Range range;
  range.From = command.From.empty() ? Today() : Day_From_Text("--from", command.From);
  if (command.To.empty()) {
    std::int64_t days = Default_Days;
    if (!command.Days.empty() && (!Str2Int(command.Days, days) || days < 1 || days > Most_Days)) {
      throw ECommand_Error("--days: \"" + command.Days + "\" is not a number of days from 1 to " +
                           std::to_string(Most_Days) + ".");
    }
    range.To = range.From + static_cast<double>(days - 1);
  } else {
    range.To = Day_From_Text("--to", command.To);
    if (range.To < range.From) {
      throw ECommand_Error("The agenda would end on " + FormatDateTime("ddddd", range.To) +
                           ", before it begins on " + FormatDateTime("ddddd", range.From) + ".");
    }
  }
  if (command.Book.empty()) {
    range.Books = Visible_Books();
  } else {
    range.Books = {Known_Book(command.Book)};
  }
  range.To = std::min(range.To, Encode_Date(Max_Year, 12, 31));
  const auto entries = Build_Agenda(range);
  if (console.Prompts.Failed()) return 1;
  if (as_json) {
    Write_Agenda_Json(console.Out, entries);
  } else {
    Write_Agenda_Text(console.Out, range, entries, command.Keys);
  }
  return 0;
}

int Run_Mark(const TConsole& console, const std::string& typed, bool done) {
  const std::string key = Find_Key(typed);
  const auto rows = KTReminds::Find_Occurrence(key);
  if (!rows) {
    throw ECommand_Error("The entry \"" + key +
                         "\" belongs to an event that is not there; see the command check.");
  }
  const KTReminds::TOccurrence occurrence = KTReminds::Read_Occurrence(rows->Occurrence);
  const KTReminds::TEvent_Record event = KTReminds::Read_Event(rows->Event);
  if (!Access_Allowed(occurrence.Owner.Contact, Access_See))
    throw ECommand_Error("There is no entry \"" + typed + "\".");
  if (KTReminds::Is_Hidden(rows->Event) || !Access_Allowed(occurrence.Owner.Contact, Access_Update))
    throw ECommand_Error("You may not change this entry.");

  using TEnd = KTReminds::TMarking::TEnd;
  const TEnd end = KTReminds::Mark_Occurrence(key, done).End;
  if (end == TEnd::Gone) throw ECommand_Error("The entry \"" + key + "\" has been deleted meanwhile.");
  if (end != TEnd::Marked) return 1;
  console.Out << (done ? "Done: " : "Not done: ") << Printable(event.Title) << ", "
              << FormatDateTime(event.AllDay ? "ddddd" : "ddddd t", occurrence.EventDate) << '\n';
  return 0;
}

void Add_Book(const std::string& name) {
  if (!Access_Allowed(Whole_Database, Access_Create))
    throw ECommand_Error("You may not make books in this database.");
  bool taken = false;
  Update("Commands:Add_Book [KT_Books/KT_Contacts]", [&] {
    taken = Find_Book(name).has_value();
    if (!taken) Create_Book(name);
  });
  if (taken) throw ECommand_Error("There is a book \"" + name + "\" already.");
}

// How many of a view's occurrences the user may see.
std::int64_t Visible_Count(TTable& occurrences) {
  if (!DB_Permissions) return occurrences.Record_Count();
  TTable contacts = KTReminds::Entry_Contacts();
  std::int64_t count = 0;
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next())
    count +=
        KTReminds::Is_Visible(contacts, occurrences.Text(KTReminds::Occurrence_Columns().Contact)) ? 1 : 0;
  return count;
}

int Run_Books(const TConsole& console, bool with_keys) {
  const TSnapshot snapshot;
  const std::vector<TBook> books = Visible_Books();
  TTable occurrences(Events_Data, "BookandDate", {"Contact"});
  std::vector<std::int64_t> counts;
  int width = 0;
  for (const TBook& book : books) {
    occurrences.SetRange({book.Key}, {book.Key});
    counts.push_back(Visible_Count(occurrences));
    width = std::max(width, Display_Width(Printable(book.Name)));
  }
  if (books.empty()) console.Out << "There are no books yet.\n";
  for (std::size_t i = 0; i < books.size(); ++i) {
    console.Out << Padded(Printable(books[i].Name), width) << "  ";
    if (with_keys) console.Out << books[i].Key << "  ";
    console.Out << Counted(counts[i], "entry", "entries") << '\n';
  }
  return 0;
}

int Run_Contacts(const TConsole& console, const TContacts_Command& command) {
  const bool as_json = Is_Json(command.Format);
  std::string words;
  for (const std::string& word : command.Words) words += (words.empty() ? "" : " ") + word;
  const auto contacts = Read_Listed_Contacts(
      command.Book.empty() ? Visible_Books() : std::vector<TBook>{Known_Book(command.Book)}, words);
  (as_json ? Write_Contacts_Json : Write_Contacts_Text)(console.Out, contacts);
  return 0;
}

int Run_Backup(const TConsole& console, const std::string& place) {
  const std::string& database = Shared_Database().Path();
  const std::string file = Back_Up(database, place.empty() ? Chosen_Backup_Folder(database) + "/" : place);
  console.Out << "Backup made: " << Printable(file) << '\n';
  return 0;
}

int Run_Restore(const TConsole& console, const std::string& file, const std::string& database,
                const TSqlite_Options& options) {
  if (Shared_Database().Is_Open()) {
    const std::string fault = Restore_Fault();
    if (!fault.empty()) throw ECommand_Error(fault);
    Close_Database();
  }
  const std::string kept = Restore(file, database, options);
  console.Out << "Restored: " << Printable(database) << '\n';
  if (!kept.empty()) console.Out << "What was there before is kept: " << Printable(kept) << '\n';
  return 0;
}

int Run_Check(const TConsole& console) {
  // The findings name what others may have hidden.
  if (!Administrator_Fault().empty()) throw ECommand_Error("Only an administrator may check the database.");
  const std::vector<std::string> findings = Check_Store();
  for (const std::string& finding : findings) console.Out << Printable(finding) << '\n';
  if (!findings.empty()) return 1;
  const std::int64_t events = Row_Count("KT_Events"), occurrences = Row_Count("KT_Events_Data"),
                     alarms = Row_Count("KT_Alarms");
  console.Out << "The database is sound: " << Counted(events, "event", "events") << ", "
              << Counted(occurrences, "occurrence", "occurrences") << ", "
              << Counted(alarms, "alarm", "alarms") << ".\n";
  return 0;
}

}  // namespace Plexidex
