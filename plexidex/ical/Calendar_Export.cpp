#include "Calendar_Export.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "Books.h"
#include "Component_Writer.h"
#include "File_Times.h"
#include "Kt_util_01.h"
#include "Output_File.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Reads the events of a book, each when its first occurrence comes along.
class TEvent_Reader {
 public:
  TEvent_Reader(const TBook& book, TExport_Report& report)
      : book(book),
        report(report),
        events(Events_Table, "Key"),
        occurrences(Events_Data, "Event"),
        alarms(Alarms_Table, "Key"),
        contacts(Contacts_Table, "Key", {"Deleted"}),
        imported("KT_Import_Events", "Event"),
        siblings("KT_Import_Events", "BookandUID") {
    Set_Cache(contacts);
  }

  // Nothing when there is nothing of it that the user may see.
  std::optional<TStored_Event> Read(const std::string& key) {
    if (!events.FindKey({key})) return std::nullopt;
    TStored_Event event{UID_Of(key), KTReminds::Read_Event(events), {}};
    if (event.Record.Private && event.Record.User != User_Key()) return std::nullopt;
    event.Record.FirstDate = Written(event.Record.FirstDate, event.Record.AllDay);
    Read_Occurrences(event);
    if (event.Occurrences.empty()) return std::nullopt;
    if (!In_Date_Range(event.Record.FirstDate)) event.Record.FirstDate = event.Occurrences.front().EventDate;
    return event;
  }

 private:
  // Files hold whole seconds, and whole days for what has no time.
  static TDateTime Written(TDateTime date, bool is_day) {
    if (is_day) return static_cast<TDateTime>(Whole_Day(date));
    constexpr std::int64_t second = 1000;
    const std::int64_t msecs = To_Msecs(date);
    return From_Msecs(msecs - (msecs % second + second) % second);
  }

  bool May_See(const std::string& contact) {
    return contacts.FindKey({contact}) && !contacts.Boolean(contacts.Field("Deleted")) &&
           Access_Allowed(contact, Access_See);
  }

  void Read_Occurrences(TStored_Event& event) {
    occurrences.SetRange({event.Record.Key}, {event.Record.Key});
    for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
      TStored_Occurrence read{KTReminds::Read_Occurrence(occurrences), {}};
      if (read.Owner.Book != book.Key || !May_See(read.Owner.Contact)) continue;
      if (!In_Date_Range(read.EventDate)) {
        ++report.Left_Out;
        continue;
      }
      read.EventDate = Written(read.EventDate, event.Record.AllDay);
      if (alarms.FindKey({read.Key})) read.Alarm = KTReminds::Read_Alarm(alarms);
      event.Occurrences.push_back(std::move(read));
    }
    occurrences.CancelRange();
    std::stable_sort(event.Occurrences.begin(), event.Occurrences.end(),
                     [](const auto& a, const auto& b) { return a.EventDate < b.EventDate; });
  }

  // The UID it was imported under, when that brought nothing else: then its import replaces it, and adds no
  // copy.
  std::string UID_Of(const std::string& event) {
    if (!imported.FindKey({event})) return event;
    const std::string uid(imported.Text(imported.Field("UID"))),
        of_book(imported.Text(imported.Field("Book")));
    siblings.SetRange({of_book, uid}, {of_book, uid});
    const bool alone = siblings.Record_Count() == 1;
    siblings.CancelRange();
    return alone && of_book == book.Key ? uid : event;
  }

  const TBook& book;
  TExport_Report& report;
  TTable events, occurrences, alarms, contacts, imported, siblings;
};

void Write_Book(const TBook& book, std::ostream& stream, TExport_Report& report, TProgress_Bar* progress) {
  TLine_Writer lines(stream);
  lines.Begin("VCALENDAR");
  lines.Raw("VERSION", "2.0");
  lines.Raw("PRODID", "-//Plexidex//KTReminds//EN");
  lines.Text("X-WR-CALNAME", book.Name);

  const TSnapshot snapshot;
  TEvent_Reader reader(book, report);
  TTable walk(Events_Data, "BookandDate", {"Event"});
  walk.SetRange({book.Key}, {book.Key});
  if (progress) progress->Set_Max(walk.Record_Count());
  const TField event_field = walk.Field("Event");
  std::unordered_set<std::string> written;
  std::int64_t passed = 0;
  for (walk.First(); !walk.Eof(); walk.Next()) {
    if (progress) progress->Set_Position(++passed);
    const std::string event(walk.Text(event_field));
    if (!written.insert(event).second) continue;
    if (const auto stored = reader.Read(event)) Write_Components(*stored, lines, report);
    if (!stream) return;
  }
  lines.End("VCALENDAR");
}

TBook Choose_Book(const std::string& name) {
  if (!name.empty()) {
    if (auto book = Find_Book(name)) return *std::move(book);
    throw EExport_Error("There is no book \"" + name + "\" to export.");
  }
  const std::vector<TBook> books = List_Books();
  if (books.empty()) throw EExport_Error("There is no book to export.");
  return books.front();
}

}  // namespace

TExport_Report Export_Calendar(const std::string& file, const std::string& book_name,
                               TProgress_Bar* progress) {
  TExport_Report report;
  try {
    const TBook book = Choose_Book(book_name);
    TOutput_File output(file);
    Write_Book(book, output.Stream(), report, progress);
    output.Keep();
  } catch (const EOutput_Error& e) {
    throw EExport_Error(e.what());
  } catch (const EData_Error& e) {
    throw EExport_Error("\"" + file + "\" cannot be written: the data could not be read (" + e.Reason + ").");
  }
  return report;
}

}  // namespace Plexidex
