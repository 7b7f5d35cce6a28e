#include "Entry_Rules.h"

#include <algorithm>

#include "Event_Creation.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::string_view All_Tables = " [KT_Events/KT_Events_Data/KT_Alarms]";
constexpr std::string_view Clear_Tables = " [KT_Events_Data/KT_Alarms]";

constexpr auto Journal_Section = "Options";
constexpr auto Journal_Setting = "Reminder Journal";
constexpr auto Activity_Setting = "Reminder Type";
constexpr int Default_Activity = 18;

std::string Trimmed(const std::string& text) {
  const auto is_blank = [](unsigned char c) { return c <= ' '; };
  const auto first = std::find_if_not(text.begin(), text.end(), is_blank);
  const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), is_blank).base();
  return std::string(first, last);
}

// Deletes the occurrences of a set with their alarms, but for one of them.
void Delete_Occurrences(std::string_view event, std::string_view but) {
  TTable occurrences(Events_Data, {"Key"}), alarms(Alarms_Table, {"Key"});
  const TField key = occurrences.Field("Key");
  occurrences.Set_Index("Event");
  alarms.Set_Index("Key");
  occurrences.SetRange({event}, {event});
  occurrences.First();
  while (!occurrences.Eof()) {
    const std::string_view occurrence = occurrences.Text(key);
    if (occurrence == but) {
      occurrences.Next();
      continue;
    }
    // Within a range of one row, moving on from what is deleted reads nothing.
    alarms.SetRange({occurrence}, {occurrence});
    alarms.First();
    if (!alarms.Eof()) alarms.Delete();
    occurrences.Delete();
  }
}

void Delete_Event(std::string_view event) {
  Delete_Occurrences(event, {});
  TTable events(Events_Table);
  events.Set_Index("Key");
  if (events.FindKey({event})) events.Delete();
}

std::string Host_Calendar(const std::string& book) {
  TTable contacts(Contacts_Table, {"Key"});
  contacts.Set_Index("TypeBookandParent");
  return contacts.FindKey({Contact_Type_Calendar, book, ""})
             ? std::string(contacts.Text(contacts.Field("Key")))
             : std::string();
}

bool Has_Book(const std::string& book) {
  TTable books(Books_Table, {"Key"});
  books.Set_Index("Key");
  return books.FindKey({book});
}

std::string Tag(std::string_view unit, std::string_view step, std::string_view tables) {
  return std::string(unit) + ":" + std::string(step) + std::string(tables);
}

}  // namespace

TEntry_Rules::TRows::TRows() : Occurrence(Events_Data), Event(Events_Table), Alarm(Alarms_Table) {
  for (TTable* table : {&Occurrence, &Event, &Alarm}) table->Set_Index("Key");
}

bool TEntry_Rules::TRows::Find(std::string_view occurrence) {
  if (!Occurrence.FindKey({occurrence}) || !Event.FindKey({Occurrence.Text(Occurrence.Field("Event"))}))
    return false;
  Has_Alarm = Alarm.FindKey({occurrence});
  return true;
}

TEntry_Rules::TEntry_Rules(const TEntry_Words& entry_words) : words(entry_words) {}

TEntry_Rules::~TEntry_Rules() = default;

bool TEntry_Rules::Open(const std::string& key, const std::string& host, const std::string& book,
                        const std::string& subject, bool without_contact) {
  occurrence_key = key;
  host_key = host;
  book_key = book;
  no_contact = without_contact;
  mode = key.empty() ? TEntry_Mode::New : TEntry_Mode::Plain;
  Subject = subject;
  try {
    calendar_key = Host_Calendar(book_key);
    if (host_key.empty()) host_key = calendar_key;
    users = Get_User_List();
    Journal = Read_Bool(Journal_Section, Journal_Setting, false);
    Activity = static_cast<int>(Read_Integer(Journal_Section, Activity_Setting, Default_Activity));
    Owner = User_Key();
    if (Is_New()) {
      Prepare_New(Now());
      if (!Create_Temporary()) return false;
    }
    return Find_Rows();
  } catch (...) {
    // The task editor's locator reports under the same name.
    FailRead("fm_Reminder:Locate_Event_Data [KT_Alarms]");
    return false;
  }
}

bool TEntry_Rules::Create_Temporary() {
  TNew_Event event;
  event.Contact = host_key;
  event.Book = book_key;
  event.User = User_Key();
  event.FirstDate = New_Date();
  event.Pattern.LastDate = event.FirstDate;
  event.EventType = Event_Type();
  if (!Start_Update()) return false;
  try {
    occurrence_key = Create_Event(event, event_key);
    if (occurrence_key.empty()) throw EAlready_Reported();
    Note_Open_Editor(event_key);
    EndUpdate();
    return true;
  } catch (...) {
    FailUpdate("fm_Reminder:Locate_Event_Data [KT_Alarms]");
    occurrence_key.clear();
    return false;
  }
}

bool TEntry_Rules::Find_Rows() {
  TSnapshot snapshot;
  TRows rows;
  if (!rows.Find(occurrence_key)) return false;
  event_key = rows.Event.Text(rows.Event.Field("Key"));
  if (!Is_New()) Load_Common(rows);
  TTable contacts(Contacts_Table, {"Key", "DisplayName"});
  contacts.Set_Index("Key");
  if (contacts.FindKey({host_key})) contact_name = contacts.Text(contacts.Field("DisplayName"));
  return true;
}

void TEntry_Rules::Load_Common(TRows& rows) {
  TTable& event = rows.Event;
  host_key = rows.Occurrence.Text(rows.Occurrence.Field("Contact"));
  book_key = rows.Occurrence.Text(rows.Occurrence.Field("Book"));
  Subject = event.Text(event.Field("Title"));
  Location = event.Text(event.Field("Location"));
  Notes = TBlob_Stream(event, event.Field("Notes"), TBlob_Stream::TMode::Read).Data();
  Priority = std::clamp(static_cast<int>(event.Integer(event.Field("Priority"))), 1, 9);
  Private = event.Boolean(event.Field("Private"));
  stored_owner = Owner = event.Text(event.Field("User"));
  const auto activity = static_cast<int>(event.Integer(event.Field("Type")));
  Journal = activity > -1;
  if (Journal) Activity = activity;
  if (rows.Has_Alarm) {
    TTable& alarm = rows.Alarm;
    Alarm = {true, static_cast<int>(alarm.Integer(alarm.Field("Offset"))),
             std::string(alarm.Text(alarm.Field("WAVFile"))), alarm.DateTime(alarm.Field("NextTime"))};
  }
  stored_alarm = Alarm;
  read_only = no_contact || rows.Occurrence.Boolean(rows.Occurrence.Field("Actioned")) ||
              !Access_Allowed(host_key, Access_Update);
  if (event.Integer(event.Field("Freq")) > 0) mode = TEntry_Mode::Single_Occurrence;
  Load(rows);
}

bool TEntry_Rules::May_Change_Privacy() const {
  return mode != TEntry_Mode::Single_Occurrence && (Is_New() || stored_owner == User_Key());
}

TRefusal TEntry_Rules::Check_Right() const {
  if (!Is_New()) return {};
  const int right = host_key == calendar_key ? Access_Create : Access_Update;
  if (Access_Allowed(host_key, right)) return {};
  return {"Access Denied",
          "Request denied as you do not have the required permission for \"" + contact_name + "\"",
          {}};
}

TRefusal TEntry_Rules::Validate_Subject() const {
  if (!Trimmed(Subject).empty()) return {};
  return {"Validation Failed", std::string(words.Subject_Missing), "Edit1"};
}

TRefusal TEntry_Rules::Validate_Access() const {
  if (Owner.empty()) {
    return {"User's Name Required", "A User's Name must be specified before continuing", "UserBox"};
  }
  if (Access_Allowed(host_key, Access_Update, Owner)) return {};
  const std::string noun(words.Noun);
  return {"Access Permission Error",
          "In order to assign an " + noun +
              " to another User, that User must have at least \"Update\" permission to the host object (i.e, "
              "the Contact or "
              "Calendar).\r\n\r\nAs the selected User does not have this level of access, the " +
              noun + " cannot be assigned\r\n\r\nPlease select another User",
          "UserBox"};
}

bool TEntry_Rules::Process_Update() {
  if (!Start_Update()) return false;
  bool clearing = Rewrites();
  try {
    // In a bracket of its own the engine would keep a copy of everything that is removed.
    if (clearing) Delete_Occurrences(event_key, occurrence_key);
    clearing = false;
    TRows rows;
    if (!rows.Find(occurrence_key))
      throw EData_Error("edit", Events_Data.Name(), "the entry has been deleted meanwhile");
    if (!Has_Book(book_key))
      throw EData_Error("edit", Books_Table.Name(), "the book has been removed meanwhile");
    Write_Occurrence(rows);
    Write_Alarm(rows);
    rows.Event.Edit();
    Write_Definition(rows);
    Write_Common(rows);
    PostUpdate(rows.Event);
    if (Rewrites()) {
      Write_Later_Dates(event_key);
    } else if (Owner != stored_owner) {
      Update_Alarm_Users();
    }
    Finish_Update(rows);
    if (Is_New()) Forget_Open_Editor(event_key);
    EndUpdate();
  } catch (...) {
    FailUpdate(clearing ? Tag(words.Unit, "Clear_Out:1", Clear_Tables)
                        : Tag(words.Update_Unit, "Process_Update:1", All_Tables));
    return false;
  }
  Write_Bool(Journal_Section, Journal_Setting, Journal);
  Write_Integer(Journal_Section, Activity_Setting, Activity);
  saved = true;
  stored_owner = Owner;
  stored_alarm = Alarm;
  Update_Done();
  return true;
}

void TEntry_Rules::Write_Occurrence(TRows& rows) {
  TTable& occurrence = rows.Occurrence;
  occurrence.Edit();
  occurrence.Set(occurrence.Field("Book"), book_key);
  occurrence.Set(occurrence.Field("Actioned"), Is_Done());
  if (!Keeps_Date()) occurrence.Set(occurrence.Field("EventDate"), Entry_Date());
  occurrence.Set(occurrence.Field("Contact"), host_key);
  PostUpdate(occurrence);
}

void TEntry_Rules::Write_Alarm(TRows& rows) {
  TTable& alarm = rows.Alarm;
  if (!Alarm.On) {
    if (rows.Has_Alarm) alarm.Delete();
    return;
  }
  if (rows.Has_Alarm) {
    alarm.Edit();
  } else {
    alarm.Insert();
    alarm.Set(alarm.Field("Key"), occurrence_key);
  }
  alarm.Set(alarm.Field("User"), Owner);
  alarm.Set(alarm.Field("Offset"), Alarm.Offset);
  alarm.Set(alarm.Field("WAVFile"), Alarm.WAVFile);
  alarm.Set(alarm.Field("NextTime"), Alarm.NextTime);
  alarm.Set(alarm.Field("Actioned"), Is_Done());
  PostUpdate(alarm);
}

void TEntry_Rules::Write_Common(TRows& rows) {
  TTable& event = rows.Event;
  event.Set(event.Field("Title"), Subject);
  event.Set(event.Field("Location"), Location);
  event.Set(event.Field("Type"), Journal ? Activity : -1);
  {
    TBlob_Stream notes(event, event.Field("Notes"), TBlob_Stream::TMode::Write);
    notes.Write(Notes);
  }
  event.Set(event.Field("Priority"), Priority);
  event.Set(event.Field("User"), Owner);
  event.Set(event.Field("AllDay"), All_Day());
  event.Set(event.Field("Private"), Private);
}

void TEntry_Rules::Update_Alarm_Users() {
  TTable occurrences(Events_Data, {"Key"}), alarms(Alarms_Table);
  const TField key = occurrences.Field("Key"), user = alarms.Field("User");
  occurrences.Set_Index("Event");
  alarms.Set_Index("Key");
  occurrences.SetRange({event_key}, {event_key});
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    if (!alarms.FindKey({occurrences.Text(key)})) continue;
    alarms.Edit();
    alarms.Set(user, Owner);
    PostUpdate(alarms);
  }
}

void TEntry_Rules::Clear_Out() {
  if (!Start_Update()) return;
  try {
    Delete_Event(event_key);
    Forget_Open_Editor(event_key);
    EndUpdate();
  } catch (...) {
    FailUpdate(Tag(words.Unit, "Clear_Out:2", Clear_Tables));
  }
}

void TEntry_Rules::Discard() {
  if (!Is_New() || saved || occurrence_key.empty()) return;
  Clear_Out();
  occurrence_key.clear();
}

void Remove_Abandoned_Entries() {
  try {
    const std::vector<std::string> abandoned = Noted_Editors();
    if (abandoned.empty() || !Start_Update()) return;
    TTable events(Events_Table, {"Key", "Title"});
    events.Set_Index("Key");
    for (const std::string& event : abandoned) {
      if (events.FindKey({event}) && events.Text(events.Field("Title")).empty()) Delete_Event(event);
      Forget_Open_Editor(event);
    }
    EndUpdate();
  } catch (...) {
    FailUpdate("Entry_Rules:Remove_Abandoned_Entries [KT_Events/KT_Events_Data/KT_Alarms]");
  }
}

}  // namespace KTReminds
