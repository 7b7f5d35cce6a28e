#include "Editor_Rules.h"

#include <algorithm>

#include "Entry_Rows.h"
#include "Event_Creation.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Leaves of another user's private entry what lists show of it.
void Cover(TEvent_Record& event) {
  event.Title = Hidden_Text;
  event.Location.clear();
  event.Notes.clear();
  const TTask_Progress progress = event.Progress;
  event.Progress = {};
  event.Progress.Status = progress.Status;
  event.Progress.Percentage = progress.Percentage;
}

constexpr std::string_view All_Tables = " [KT_Events/KT_Events_Data/KT_Alarms]";
constexpr std::string_view Clear_Tables = " [KT_Events_Data/KT_Alarms]";

constexpr auto Journal_Section = "Options";
constexpr auto Journal_Setting = "Reminder Journal";
constexpr auto Activity_Setting = "Reminder Type";
constexpr int Default_Activity = 18;

bool Has_Book(const std::string& book) {
  return TTable(Books_Table, "Key", {"Key"}).FindKey({book});
}

std::string Tag(std::string_view unit, std::string_view step, std::string_view tables) {
  return std::string(unit) + ":" + std::string(step) + std::string(tables);
}

}  // namespace

TEditor_Rules::TEditor_Rules(const TEditor_Words& words) : words(words) {}

TEditor_Rules::~TEditor_Rules() = default;

bool TEditor_Rules::Open(const std::string& key, const TOwner& of_owner, const std::string& subject,
                         bool without_contact) {
  occurrence_key = key;
  owner = of_owner;
  no_contact = without_contact;
  mode = key.empty() ? TEditor_Mode::New : TEditor_Mode::Plain;
  Subject = subject;
  // The task editor's locator reports under the same name.
  const auto opened = Read("fm_Reminder:Locate_Event_Data [KT_Alarms]", [this] {
    calendar_key = Calendar_Of_Book(owner.Book);
    if (owner.Contact.empty()) owner.Contact = calendar_key;
    users = Get_User_List();
    Journal = Read_Bool(Journal_Section, Journal_Setting, false);
    Activity = static_cast<int>(Read_Integer(Journal_Section, Activity_Setting, Default_Activity));
    Owner = User_Key();
    if (Is_New()) {
      Prepare_New(Now());
      if (!Create_Temporary()) return false;
    }
    return Find_Rows();
  });
  return opened.value_or(false);
}

bool TEditor_Rules::Create_Temporary() {
  TNew_Event event;
  event.Owner = owner;
  event.Record.User = User_Key();
  event.Record.FirstDate = event.Record.Pattern.LastDate = New_Date();
  event.Record.EventType = Event_Type();
  const TUpdate_Result result = Update("fm_Reminder:Locate_Event_Data [KT_Alarms]", [&] {
    occurrence_key = Create_Event(event, event_key);
    if (occurrence_key.empty()) throw EAlready_Reported();
    Note_Open_Editor(event_key);
  });
  if (!result) occurrence_key.clear();
  return static_cast<bool>(result);
}

bool TEditor_Rules::Find_Rows() {
  TSnapshot snapshot;
  const auto rows = Find_Occurrence(occurrence_key);
  if (!rows) return false;
  event_key = rows->Event.Text(Event_Columns().Key);
  if (!Is_New()) Load_Common(*rows);
  TTable contacts(Contacts_Table, "Key", {"DisplayName"});
  if (contacts.FindKey({owner.Contact})) contact_name = contacts.Text(contacts.Field("DisplayName"));
  return true;
}

void TEditor_Rules::Load_Common(const TOccurrence_Rows& rows) {
  TEvent_Record event = Read_Event(rows.Event);
  const bool hidden = Is_Hidden(rows.Event);
  if (hidden) Cover(event);
  const TOccurrence occurrence = Read_Occurrence(rows.Occurrence);
  owner = occurrence.Owner;
  Subject = event.Title;
  Location = event.Location;
  Notes = event.Notes;
  Priority = std::clamp(event.Priority, 1, 9);
  Private = event.Private;
  stored_owner = Owner = event.User;
  Journal = event.Activity > No_Activity;
  if (Journal) Activity = event.Activity;
  if (rows.Has_Alarm && !hidden) Alarm = Read_Alarm(rows.Alarm);
  stored_alarm = Alarm;
  read_only = no_contact || hidden || occurrence.Actioned || !Access_Allowed(owner.Contact, Access_Update);
  if (event.Pattern.Freq > TFrequency::None) mode = TEditor_Mode::Single_Occurrence;
  Load(event, occurrence);
}

bool TEditor_Rules::May_Change_Privacy() const {
  return mode != TEditor_Mode::Single_Occurrence && (Is_New() || stored_owner == User_Key());
}

TRefusal TEditor_Rules::Check_Right() const {
  if (!Is_New()) return {};
  const int right = owner.Contact == calendar_key ? Access_Create : Access_Update;
  if (Access_Allowed(owner.Contact, right)) return {};
  return {"Access Denied",
          "Request denied as you do not have the required permission for \"" + contact_name + "\"",
          {}};
}

void TEditor_Rules::Clear_Alarm() {
  const TAlarm off;
  Alarm.Offset = off.Offset;
  Alarm.WAVFile = off.WAVFile;
}

TRefusal TEditor_Rules::Validate_Subject() const {
  if (!Trimmed(Subject).empty()) return {};
  return {"Validation Failed", std::string(words.Subject_Missing), "Edit1"};
}

TRefusal TEditor_Rules::Validate_Access() const {
  if (Owner.empty()) {
    return {"User's Name Required", "A User's Name must be specified before continuing", "UserBox"};
  }
  // What the user needs for an entry of one's own has been asked for already.
  if (Owner == User_Key() || Access_Allowed(owner.Contact, Access_Update, Owner)) return {};
  const std::string noun(words.Noun);
  return {"Access Permission Error",
          "In order to assign an " + noun +
              " to another User, that User must have at least \"Update\" permission to the host object (i.e, "
              "the Contact or "
              "Calendar).\r\n\r\nAs the selected User does not have this level of access, the " +
              noun + " cannot be assigned\r\n\r\nPlease select another User",
          "UserBox"};
}

bool TEditor_Rules::Process_Update() {
  std::string tag = Tag(words.Unit, "Clear_Out:1", Clear_Tables);
  const TUpdate_Result result = Update(tag, [&] {
    // In a bracket of its own the engine would keep a copy of everything that is removed.
    if (Rewrites()) Delete_Occurrences(event_key, occurrence_key);
    tag = Tag(words.Update_Unit, "Process_Update:1", All_Tables);
    auto rows = Find_Occurrence(occurrence_key);
    if (!rows) throw EData_Error("edit", Events_Data.Name(), "the entry has been deleted meanwhile");
    if (!Has_Book(owner.Book))
      throw EData_Error("edit", Books_Table.Name(), "the book has been removed meanwhile");
    Write_Rows(*rows);
    if (Rewrites()) {
      TOccurrence_Writer writer(event_key, owner, Owner);
      Write_Later_Dates(writer);
    } else if (Owner != stored_owner) {
      Write_Alarm_Users(event_key, Owner);
    }
    Finish_Update(owner.Contact);
    if (Is_New()) Forget_Open_Editor(event_key);
  });
  if (!result) return false;
  Write_Bool(Journal_Section, Journal_Setting, Journal);
  Write_Integer(Journal_Section, Activity_Setting, Activity);
  saved = true;
  stored_owner = Owner;
  stored_alarm = Alarm;
  Update_Done();
  return true;
}

void TEditor_Rules::Write_Rows(TOccurrence_Rows& rows) {
  TOccurrence occurrence = Read_Occurrence(rows.Occurrence);
  occurrence.Owner = owner;
  occurrence.Actioned = Is_Done(occurrence.Actioned);
  if (!Keeps_Date()) occurrence.EventDate = Entry_Date();
  Write_Occurrence(rows.Occurrence, occurrence);
  TAlarm alarm = Alarm;
  // It may have been put off while the editor was open, and another date ends that.
  if (rows.Has_Alarm && Alarm.NextTime == stored_alarm.NextTime && rows.Alarm.FindKey({occurrence.Key}))
    alarm.NextTime = Read_Alarm(rows.Alarm).NextTime;
  Write_Alarm(rows.Alarm, rows.Has_Alarm, occurrence, Owner, alarm);

  TEvent_Record event = Read_Event(rows.Event);
  Define(event);
  event.Title = Subject;
  event.Location = Location;
  event.Activity = Journal ? Activity : No_Activity;
  event.Notes = Notes;
  event.Priority = Priority;
  event.User = Owner;
  event.AllDay = All_Day();
  event.Private = Private;
  Write_Event(rows.Event, event);
}

void TEditor_Rules::Discard() {
  if (!Is_New() || saved || occurrence_key.empty()) return;
  Update(Tag(words.Unit, "Clear_Out:2", Clear_Tables), [this] {
    Delete_Set(event_key);
    Forget_Open_Editor(event_key);
  });
  occurrence_key.clear();
}

void Remove_Abandoned_Events() {
  constexpr auto tag = "Editor_Rules:Remove_Abandoned_Events [KT_Events/KT_Events_Data/KT_Alarms]";
  const auto abandoned = Read(tag, Noted_Editors);
  if (!abandoned || abandoned->empty()) return;
  Update(tag, [&] {
    TTable events(Events_Table, "Key", {"Title"});
    for (const std::string& event : *abandoned) {
      if (events.FindKey({event}) && events.Text(Event_Columns().Title).empty()) Delete_Set(event);
      Forget_Open_Editor(event);
    }
  });
}

}  // namespace KTReminds
