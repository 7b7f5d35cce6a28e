#include "Import_Write.h"

#include <algorithm>

#include "Event_Creation.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;
using KTReminds::TRecurrence_Pattern;

namespace {

constexpr int Status_Completed = 2;

}  // namespace

TEntry_Writer::TEntry_Writer(const TBook& into, TImport_Report& told)
    : book(into),
      report(told),
      events(Events_Table, "Key"),
      occurrences(Events_Data, "Event"),
      alarms(Alarms_Table, "Key"),
      imports("KT_Imports", "BookandUID"),
      import_events("KT_Import_Events", "BookandUID") {}

void TEntry_Writer::Write(TPlanned_Entry& entry) {
  TReplaced replaced = Remove_Old(entry.UID);
  if (replaced.Any) ++report.Replaced;
  for (const auto& [moment, completed] : replaced.Done) entry.Done.insert(moment);

  const bool known = imports.FindKey({book.Key, entry.UID});
  if (entry.Withdrawn && entry.Events.empty()) {
    if (known) imports.Delete();
    return;
  }
  if (known) {
    imports.Edit();
  } else {
    imports.Insert();
  }
  imports.SetFields({book.Key, entry.UID, entry.Digest});
  PostUpdate(imports);

  for (const TPlanned_Event& event : entry.Events) {
    if (event.Is_Set()) {
      Write_Set(entry, event);
    } else {
      for (const TDateTime date : event.Dates) Write_Single(entry, event, date, replaced);
    }
  }
}

TEntry_Writer::TReplaced TEntry_Writer::Remove_Old(const std::string& uid) {
  std::vector<std::string> old;
  import_events.Set_Index("BookandUID");
  import_events.SetRange({book.Key, uid}, {book.Key, uid});
  const TField event = import_events.Field("Event");
  for (import_events.First(); !import_events.Eof(); import_events.Next())
    old.emplace_back(import_events.Text(event));
  import_events.CancelRange();
  if (std::find(old.begin(), old.end(), uid) == old.end() && Is_Event_Of_Book(uid)) old.push_back(uid);

  TReplaced replaced;
  for (const std::string& key : old) Remove_Event(key, replaced);
  return replaced;
}

bool TEntry_Writer::Is_Event_Of_Book(const std::string& event) {
  occurrences.Set_Index("Event");
  return occurrences.FindKey({event}) && occurrences.Text(occurrences.Field("Book")) == book.Key;
}

void TEntry_Writer::Remove_Event(const std::string& event, TReplaced& replaced) {
  import_events.Set_Index("Event");
  while (import_events.FindKey({event})) import_events.Delete();
  // The user may have deleted it since.
  if (!events.FindKey({event})) return;
  replaced.Any = true;
  const std::int64_t completed = events.Integer(events.Field("Completed"));
  const TField key = occurrences.Field("Key"), actioned = occurrences.Field("Actioned"),
               date = occurrences.Field("EventDate");
  occurrences.SetRange({event}, {event});
  for (occurrences.First(); !occurrences.Eof();) {
    if (occurrences.Boolean(actioned)) replaced.Done[To_Msecs(occurrences.DateTime(date))] = completed;
    if (alarms.FindKey({occurrences.Text(key)})) alarms.Delete();
    occurrences.Delete();
  }
  occurrences.CancelRange();
  events.Delete();
}

void TEntry_Writer::Remember(const TPlanned_Entry& entry, const std::string& event) {
  import_events.Insert();
  import_events.SetFields({book.Key, entry.UID, event});
  PostUpdate(import_events);
}

std::string TEntry_Writer::Create(const TPlanned_Event& planned, TDateTime date,
                                  const TRecurrence_Pattern& pattern, bool alarm, std::string& key) {
  const TPlanned_Content& content = planned.Content;
  TMemory_Stream notes(content.Notes);
  KTReminds::TNew_Event event;
  event.Contact = book.Calendar;
  event.Book = book.Key;
  event.Title = content.Title;
  event.Location = content.Location;
  event.User = User_Key();
  event.Notes = content.Notes.empty() ? nullptr : &notes;
  event.WAVFile = content.Alarm.Sound;
  event.Offset = content.Alarm.Offset;
  event.Alarm = alarm;
  event.AllDay = content.AllDay;
  event.Private = content.Private;
  event.Priority = content.Priority;
  event.FirstDate = date;
  event.Pattern = pattern;
  event.EventType = planned.Is_Task ? KTReminds::Event_Type_Task : 0;
  std::string first = KTReminds::Create_Event(event, key);
  if (first.empty()) throw EAlready_Reported();
  if (content.Activity >= 0) {
    if (!events.FindKey({key}))
      throw EData_Error("find", events.Name(), "the event just written is not there");
    events.Edit();
    events.Set(events.Field("Type"), content.Activity);
    PostUpdate(events);
  }
  return first;
}

void TEntry_Writer::Write_Single(const TPlanned_Entry& entry, const TPlanned_Event& event, TDateTime date,
                                 const TReplaced& replaced) {
  TRecurrence_Pattern pattern;
  pattern.LastDate = date;
  const bool several_days = event.Content.Days > 1;
  if (several_days) {
    pattern.Freq = 1;
    pattern.LastDate = static_cast<TDateTime>(Whole_Day(date) + event.Content.Days - 1);
  }
  std::string key;
  const bool alarm = event.Content.Alarm.On;
  const std::string first = Create(event, date, pattern, alarm && !several_days, key);
  // One reminder, at the beginning, will do.
  if (several_days && alarm) Set_Alarm(first, event.Content.Alarm, false);
  Remember(entry, key);
  report.Occurrences += event.Content.Days;
  if (event.Is_Task) {
    ++report.Tasks;
    Write_Progress(event, key, date, replaced);
  } else {
    ++(several_days ? report.Sets : report.Events);
    Apply_Changes(entry, event, key);
  }
}

void TEntry_Writer::Write_Progress(const TPlanned_Event& event, const std::string& key, TDateTime due,
                                   const TReplaced& replaced) {
  TPlanned_Progress progress = event.Progress;
  // What the user completed stays completed.
  if (const auto done = replaced.Done.find(To_Msecs(due));
      done != replaced.Done.end() && progress.Status != Status_Completed) {
    progress.Status = Status_Completed;
    progress.Percentage = 100;
    progress.Completed = done->second;
  }
  if (!events.FindKey({key})) throw EData_Error("find", events.Name(), "the task just written is not there");
  const auto set = [this](std::string_view column, const TValue& value) {
    events.Set(events.Field(column), value);
  };
  events.Edit();
  set("FirstDate", due - progress.Lead_Days);
  set("Started", progress.Started);
  set("Completed", progress.Completed);
  set("Percentage", progress.Percentage);
  set("Status", progress.Status);
  set("Budget", progress.Budget);
  set("Worked", progress.Worked);
  PostUpdate(events);
  if (progress.Status != Status_Completed) return;
  if (!occurrences.FindKey({key}))
    throw EData_Error("find", occurrences.Name(), "the task just written has no date");
  occurrences.Edit();
  occurrences.Set(occurrences.Field("Actioned"), true);
  PostUpdate(occurrences);
  if (!alarms.FindKey({occurrences.Text(occurrences.Field("Key"))})) return;
  alarms.Edit();
  alarms.Set(alarms.Field("Actioned"), true);
  PostUpdate(alarms);
}

void TEntry_Writer::Write_Set(const TPlanned_Entry& entry, const TPlanned_Event& event) {
  std::string key;
  Create(event, event.Dates.front(), event.Pattern, event.Content.Alarm.On, key);
  Remember(entry, key);
  const TPlanned_Content& content = event.Content;
  const std::string& user = User_Key();
  KTReminds::TOccurrence_Writer writer(
      {key, book.Calendar, book.Key, user, content.Alarm.Sound, content.Alarm.On, content.Alarm.Offset});
  for (const TDateTime date : event.Extra) writer.Write(date, false);
  Apply_Changes(entry, event, key);
  ++report.Sets;
  occurrences.SetRange({key}, {key});
  report.Occurrences += occurrences.Record_Count();
  occurrences.CancelRange();
}

void TEntry_Writer::Set_Alarm(const std::string& occurrence, const TPlanned_Alarm& alarm, bool actioned) {
  const bool there = alarms.FindKey({occurrence});
  if (!alarm.On) {
    if (there) alarms.Delete();
    return;
  }
  if (there) {
    alarms.Edit();
  } else {
    alarms.Insert();
  }
  constexpr TDateTime not_scheduled = 0;
  alarms.SetFields({occurrence, User_Key(), alarm.Offset, alarm.Sound, not_scheduled, actioned});
  PostUpdate(alarms);
}

// Deletes and moves what the file says otherwise than the rule, and marks what was done.
void TEntry_Writer::Apply_Changes(const TPlanned_Entry& entry, const TPlanned_Event& event,
                                  const std::string& key) {
  if (event.Changes.empty() && entry.Done.empty()) return;
  const TField key_field = occurrences.Field("Key"), actioned = occurrences.Field("Actioned"),
               date_field = occurrences.Field("EventDate");
  occurrences.Set_Index("Event");
  occurrences.SetRange({key}, {key});
  for (occurrences.First(); !occurrences.Eof();) {
    const std::string occurrence(occurrences.Text(key_field));
    TDateTime date = occurrences.DateTime(date_field);
    const auto change = event.Changes.find(To_Msecs(date));
    const bool changed = change != event.Changes.end();
    if (changed && change->second.Deleted) {
      Set_Alarm(occurrence, {}, false);
      occurrences.Delete();
      continue;
    }
    if (changed) date = change->second.To;
    const bool done = entry.Done.contains(To_Msecs(date));
    if (changed || done) {
      occurrences.Edit();
      occurrences.Set(date_field, date);
      occurrences.Set(actioned, done);
      PostUpdate(occurrences);
      if (changed) {
        Set_Alarm(occurrence, change->second.Alarm, done);
      } else if (alarms.FindKey({occurrence})) {
        alarms.Edit();
        alarms.Set(alarms.Field("Actioned"), done);
        PostUpdate(alarms);
      }
    }
    occurrences.Next();
  }
  occurrences.CancelRange();
}

}  // namespace Plexidex
