#include "Calendar_Export.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>

#include "Books.h"
#include "Component_Writer.h"
#include "File_Times.h"
#include "Kt_util_01.h"
#include "Object_Export.h"
#include "Output_File.h"
#include "Transfer_Books.h"

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
    if (!events.FindKey({key}) || KTReminds::Is_Hidden(events)) return std::nullopt;
    TStored_Event event{UID_Of(key), KTReminds::Read_Event(events), {}};
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
    siblings.First();
    siblings.Next();  // counting them all would take long for each of very many
    const bool alone = siblings.Eof();
    siblings.CancelRange();
    return alone && of_book == book.Key ? uid : event;
  }

  const TBook& book;
  TExport_Report& report;
  TTable events, occurrences, alarms, contacts, imported, siblings;
};

// The user's zone is another one while this lives.
class TOther_Zone {
 public:
  explicit TOther_Zone(const std::string& zone) : own(Time_Zone()) { Install_Time_Zone(zone); }
  ~TOther_Zone() { Install_Time_Zone(own); }
  TOther_Zone(const TOther_Zone&) = delete;
  TOther_Zone& operator=(const TOther_Zone&) = delete;

 private:
  const std::string own;
};

// Writes calendar objects as they were imported, with what was changed here since.
class TKept_Writer {
 public:
  TKept_Writer(const TBook& book, TEvent_Reader& reader, std::ostream& stream, TExport_Report& report)
      : book(book),
        reader(reader),
        stream(stream),
        report(report),
        imports("KT_Imports", "BookandUID"),
        events("KT_Import_Events", "Event"),
        siblings("KT_Import_Events", "BookandUID"),
        texts("KT_Import_Texts", "BookandUID"),
        zones("KT_Import_Zones", "BookandDigest") {}

  // The object that an event belongs to; its events are noted as written. False when there is none of which
  // the text was kept.
  bool Write(const std::string& event, std::unordered_set<std::string>& written) {
    if (!events.FindKey({event}) || events.Text(events.Field("Book")) != book.Key) return false;
    TKept_Object object;
    object.UID = events.Text(events.Field("UID"));
    if (!imports.FindKey({book.Key, object.UID}) || !texts.FindKey({book.Key, object.UID})) return false;
    const std::string content = texts.Blob(texts.Field("Content"));
    std::string_view text = content;
    const std::vector<std::string> digests = Take_Zone_References(text);
    object.Parts = Split_Components(text);
    object.Events.resize(object.Parts.size());
    object.Until = static_cast<TDateTime>(imports.Integer(imports.Field("Until")));
    object.Imported = static_cast<TDateTime>(imports.Integer(imports.Field("Imported")));
    object.Cut = imports.Boolean(imports.Field("Cut"));
    const std::int64_t left_out = report.Left_Out;
    const std::vector<std::string> keys = Read_Events(object);

    // Its times mean what they meant when they became local.
    const TOther_Zone then(std::string(imports.Text(imports.Field("Zone"))));
    TKept_Zones* const known = Find_Zones(digests);
    const auto exported =
        known && Can_Define(*known) ? Export_Object(object, known->Zones, report) : std::nullopt;
    if (!exported) {
      report.Left_Out = left_out;
      return false;
    }
    for (const TRead_Component& definition : known->Definitions) {
      if (defined.try_emplace(Zone_Name(definition.Component), definition.Text).second)
        stream << definition.Text;
    }
    stream << *exported;
    written.insert(keys.begin(), keys.end());
    return true;
  }

 private:
  std::vector<std::string> Read_Events(TKept_Object& object) {
    struct TRow {
      std::string Event;
      std::size_t Part;
    };
    std::vector<TRow> rows;
    const TField event = siblings.Field("Event"), part = siblings.Field("Part");
    siblings.SetRange({book.Key, object.UID}, {book.Key, object.UID});
    for (siblings.First(); !siblings.Eof(); siblings.Next())
      rows.push_back({std::string(siblings.Text(event)), static_cast<std::size_t>(siblings.Integer(part))});
    siblings.CancelRange();
    std::vector<std::string> keys;
    for (const TRow& row : rows) {
      keys.push_back(row.Event);
      auto stored = row.Part < object.Events.size() ? reader.Read(row.Event) : std::nullopt;
      if (!stored) continue;
      stored->UID = object.UID;
      object.Events[row.Part].push_back(*std::move(stored));
    }
    return keys;
  }

  struct TKept_Zones {
    explicit TKept_Zones(std::vector<TRead_Component> read)
        : Definitions(std::move(read)), Zones(Definitions) {}
    const std::vector<TRead_Component> Definitions;
    TZones Zones;
  };

  // Null when one of them is not there.
  TKept_Zones* Find_Zones(const std::vector<std::string>& digests) {
    std::string name = Time_Zone();
    for (const std::string& digest : digests) name += ' ' + digest;
    if (const auto found = known_zones.find(name); found != known_zones.end()) return &found->second;
    std::vector<TRead_Component> definitions;
    for (const std::string& digest : digests) {
      if (!zones.FindKey({book.Key, digest})) return nullptr;
      const TKept_Component zone(zones.Blob(zones.Field("Content")));
      auto read = Read_Component_Text(zone.Text(), false, zone.Begun());
      if (!read) return nullptr;
      definitions.push_back(*std::move(read));
    }
    return &known_zones.try_emplace(name, std::move(definitions)).first->second;
  }

  // False when a zone of the same name has been written that means something else.
  bool Can_Define(const TKept_Zones& kept) const {
    for (const TRead_Component& definition : kept.Definitions) {
      const std::string name = Zone_Name(definition.Component);
      const auto known = defined.find(name);
      if (known != defined.end() && known->second != definition.Text && !Is_System_Zone(name)) return false;
    }
    return true;
  }

  const TBook& book;
  TEvent_Reader& reader;
  std::ostream& stream;
  TExport_Report& report;
  TTable imports, events, siblings, texts, zones;
  std::map<std::string, TKept_Zones> known_zones;  // by the user's zone and their digests
  std::map<std::string, std::string> defined;      // zones in the file, by name
};

void Write_Book(const TBook& book, std::ostream& stream, TExport_Report& report, TProgress_Bar* progress) {
  TLine_Writer lines(stream);
  lines.Begin("VCALENDAR");
  lines.Raw("VERSION", "2.0");
  lines.Raw("PRODID", "-//Plexidex//KTReminds//EN");
  lines.Text("X-WR-CALNAME", book.Name);

  const TSnapshot snapshot;
  TEvent_Reader reader(book, report);
  TKept_Writer kept(book, reader, stream, report);
  TTable walk(Events_Data, "BookandDate", {"Event"});
  walk.SetRange({book.Key}, {book.Key});
  if (progress) progress->Set_Max(walk.Record_Count());
  const TField event_field = walk.Field("Event");
  std::unordered_set<std::string> written;
  std::int64_t passed = 0;
  for (walk.First(); !walk.Eof(); walk.Next()) {
    if (progress) progress->Set_Position(++passed);
    const std::string event(walk.Text(event_field));
    if (!written.insert(event).second || kept.Write(event, written)) continue;
    if (const auto stored = reader.Read(event)) Write_Components(*stored, lines, report);
    if (!stream) return;
  }
  lines.End("VCALENDAR");
}

}  // namespace

TExport_Report Export_Calendar(const std::string& file, const std::string& book_name,
                               TProgress_Bar* progress) {
  TExport_Report report;
  try {
    const TBook book = Export_Book(book_name);
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
