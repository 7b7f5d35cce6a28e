#include "Object_Writer.h"

#include <algorithm>

#include "Event_Rows.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;
using namespace KTReminds;

TObject_Writer::TObject_Writer(const TBook& book, TDateTime until, TImport_Report& report)
    : book(book),
      until(until),
      report(report),
      events(Events_Table, "Key"),
      occurrences(Events_Data, "Event"),
      cards("KT_Cards", "Contact"),
      imports("KT_Imports", "BookandUID"),
      import_events("KT_Import_Events", "BookandUID"),
      texts("KT_Import_Texts", "BookandUID"),
      zones("KT_Import_Zones", "BookandDigest") {}

void TObject_Writer::Write(TPlanned_Object& object) {
  TReplaced replaced = Remove_Old(object.UID);
  if (!replaced.Events.empty()) ++report.Replaced;
  for (const auto& [moment, completed] : replaced.Done) object.Done.insert(moment);

  const bool known = imports.FindKey({book.Key, object.UID});
  if (object.Withdrawn && object.Events.empty()) {
    if (known) imports.Delete();
    return;
  }
  if (known) {
    imports.Edit();
  } else {
    imports.Insert();
  }
  imports.SetFields(
      {book.Key, object.UID, object.Digest, Time_Zone(), Whole_Day(Today()), Whole_Day(until), object.Cut});
  PostUpdate(imports);
  Keep_Text(object);

  for (const TPlanned_Event& event : object.Events) {
    if (event.Is_Set()) {
      Write_Set(object, event, replaced);
    } else {
      for (const TDateTime date : event.Dates) {
        if (event.Is_Task()) {
          Write_Task(object, event, date, replaced);
        } else {
          Write_Single(object, event, date, replaced);
        }
      }
    }
  }
}

// The text goes with the last event of the object, so without events there is none.
void TObject_Writer::Keep_Text(const TPlanned_Object& object) {
  if (texts.FindKey({book.Key, object.UID})) texts.Delete();
  if (object.Events.empty() || object.Text.empty()) return;
  texts.Insert();
  texts.SetFields({book.Key, object.UID});
  texts.Set_Blob(texts.Field("Content"), object.Text);
  PostUpdate(texts);
  for (const auto& [digest, text] : object.Zones) {
    if (!known_zones.insert(digest).second || zones.FindKey({book.Key, digest})) continue;
    zones.Insert();
    zones.SetFields({book.Key, digest});
    zones.Set_Blob(zones.Field("Content"), text);
    PostUpdate(zones);
  }
}

std::string TObject_Writer::Fault(const TPlanned_Object& object) {
  const bool withdrawn = object.Events.empty();
  const int level = withdrawn ? Access_Delete : Access_Update;
  const std::string may_not =
      std::string("is in the book already, and you may not ") + (withdrawn ? "delete" : "change") + " it";
  if (imports.FindKey({book.Key, object.UID}) && !Access_Allowed(book.Calendar, level)) return may_not;
  for (const TKnown& known : Known_Events(object.UID)) {
    const std::string& event = known.Event;
    if (events.FindKey({event}) && Is_Hidden(events))
      return "is in the book already, and private to another user";
    bool allowed = true;
    occurrences.SetRange({event}, {event});
    for (occurrences.First(); allowed && !occurrences.Eof(); occurrences.Next())
      allowed = Access_Allowed(occurrences.Text(Occurrence_Columns().Contact), level);
    occurrences.CancelRange();
    if (!allowed) return may_not;
  }
  return {};
}

std::vector<TObject_Writer::TKnown> TObject_Writer::Known_Events(const std::string& uid) {
  std::vector<TKnown> old;
  import_events.Set_Index("BookandUID");
  import_events.SetRange({book.Key, uid}, {book.Key, uid});
  const TField event = import_events.Field("Event"), part = import_events.Field("Part");
  for (import_events.First(); !import_events.Eof(); import_events.Next())
    old.push_back({std::string(import_events.Text(event)), static_cast<int>(import_events.Integer(part))});
  import_events.CancelRange();
  const bool is_among =
      std::any_of(old.begin(), old.end(), [&](const TKnown& each) { return each.Event == uid; });
  if (!is_among && Is_Event_Of_Book(uid)) old.push_back({uid});
  return old;
}

const TObject_Writer::TKnown* TObject_Writer::TReplaced::Event_Of(int part) const {
  const auto found =
      std::find_if(Events.begin(), Events.end(), [part](const TKnown& each) { return each.Part == part; });
  return found != Events.end() ? &*found : Events.empty() ? nullptr : &Events.front();
}

TObject_Writer::TReplaced TObject_Writer::Remove_Old(const std::string& uid) {
  TReplaced replaced;
  for (TKnown& known : Known_Events(uid)) Remove_Event(known, replaced);
  return replaced;
}

bool TObject_Writer::Is_Event_Of_Book(const std::string& event) {
  return occurrences.FindKey({event}) && occurrences.Text(Occurrence_Columns().Book) == book.Key;
}

void TObject_Writer::Remove_Event(TKnown& known, TReplaced& replaced) {
  const std::string event = known.Event;
  import_events.Set_Index("Event");
  while (import_events.FindKey({event})) import_events.Delete();
  // The user may have deleted it since.
  if (!events.FindKey({event})) return;
  known.Contact = book.Calendar;
  known.User = events.Text(Event_Columns().User);
  known.Private = events.Boolean(Event_Columns().Private);
  const std::int64_t completed = events.Integer(Event_Columns().Completed);
  const TOccurrence_Columns& column = Occurrence_Columns();
  occurrences.SetRange({event}, {event});
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    known.Contact = occurrences.Text(column.Contact);
    if (const auto waiting = Find_Waiting_Alert(occurrences.Text(column.Key)))
      replaced.Waiting[To_Msecs(occurrences.DateTime(column.EventDate))] = *waiting;
    if (occurrences.Boolean(column.Actioned))
      replaced.Done[To_Msecs(occurrences.DateTime(column.EventDate))] = completed;
  }
  occurrences.CancelRange();
  replaced.Events.push_back(std::move(known));
  Delete_Set(event);
}

TNew_Event TObject_Writer::Begin(const TPlanned_Event& planned, TDateTime date,
                                 const TReplaced& replaced) const {
  TNew_Event event;
  event.Owner = {book.Key, book.Calendar};
  event.Record = planned.Record;
  event.Record.User = User_Key();
  if (const TKnown* known = replaced.Event_Of(planned.Part)) {
    event.Owner.Contact = known->Contact;
    event.Record.User = known->User;
    // A file may make it private, and not public what somebody has made private here.
    event.Record.Private = event.Record.Private || known->Private;
  }
  event.Record.FirstDate = date;
  event.Alarm = planned.Alarm;
  return event;
}

void TObject_Writer::Create(const TPlanned_Object& object, int part, const TNew_Event& event,
                            const TReplaced& replaced) {
  std::string key;
  if (Create_Event(event, key).empty()) throw EAlready_Reported();
  import_events.Insert();
  import_events.SetFields({book.Key, object.UID, key, part});
  PostUpdate(import_events);
  Keep_Waiting(key, replaced);
  // A contact's birthday is known by its key.
  if (replaced.Events.empty() || !cards.FindKey({event.Owner.Contact})) return;
  const std::string_view birthday = cards.Text(cards.Field("Birthday"));
  if (std::none_of(replaced.Events.begin(), replaced.Events.end(),
                   [&](const TKnown& known) { return known.Event == birthday; }))
    return;
  cards.Edit();
  cards.Set(cards.Field("Birthday"), key);
  PostUpdate(cards);
}

// A reminder that has gone off and has no answer yet, or was put off, is still to be answered.
void TObject_Writer::Keep_Waiting(const std::string& event, const TReplaced& replaced) {
  if (replaced.Waiting.empty()) return;
  const TOccurrence_Columns& column = Occurrence_Columns();
  occurrences.SetRange({event}, {event});
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    const auto waiting = replaced.Waiting.find(To_Msecs(occurrences.DateTime(column.EventDate)));
    if (waiting != replaced.Waiting.end()) Keep_Waiting_Alert(occurrences.Text(column.Key), waiting->second);
  }
  occurrences.CancelRange();
}

void TObject_Writer::Write_Single(const TPlanned_Object& object, const TPlanned_Event& planned,
                                  TDateTime date, const TReplaced& replaced) {
  TNew_Event event = Begin(planned, date, replaced);
  event.Record.Pattern.LastDate = date;
  const bool several_days = planned.Days > 1;
  if (several_days) {
    event.Record.Pattern.Freq = TFrequency::Daily;
    event.Record.Pattern.LastDate = static_cast<TDateTime>(Whole_Day(date) + planned.Days - 1);
  }
  event.Adjust = [&](TNew_Occurrence& day) {
    day.Actioned = object.Done.contains(To_Msecs(day.Date));
    // One reminder, at the beginning, will do.
    if (day.Date != date) day.Alarm.On = false;
    return true;
  };
  Create(object, planned.Part, event, replaced);
  report.Occurrences += planned.Days;
  ++(several_days ? report.Sets : report.Events);
}

void TObject_Writer::Write_Task(const TPlanned_Object& object, const TPlanned_Event& planned, TDateTime due,
                                const TReplaced& replaced) {
  TNew_Event event = Begin(planned, due - planned.Lead_Days, replaced);
  event.Date = event.Record.Pattern.LastDate = due;
  TTask_Progress& progress = event.Record.Progress;
  // What the user completed stays completed.
  if (const auto done = replaced.Done.find(To_Msecs(due));
      done != replaced.Done.end() && progress.Status != TTask_Status::Completed) {
    progress.Status = TTask_Status::Completed;
    progress.Percentage = 100;
    progress.Completed = done->second;
  }
  event.Adjust = [&progress](TNew_Occurrence& task) {
    task.Actioned = progress.Status == TTask_Status::Completed;
    return true;
  };
  Create(object, planned.Part, event, replaced);
  ++report.Occurrences;
  ++report.Tasks;
}

// Applies exception dates and overrides, and marks what was done.
void TObject_Writer::Write_Set(const TPlanned_Object& object, const TPlanned_Event& planned,
                               const TReplaced& replaced) {
  TNew_Event event = Begin(planned, planned.Dates.front(), replaced);
  event.Extra = planned.Extra;
  event.Adjust = [&](TNew_Occurrence& occurrence) {
    if (const auto change = planned.Changes.find(To_Msecs(occurrence.Date));
        change != planned.Changes.end()) {
      if (change->second.Deleted) return false;
      occurrence.Date = change->second.To;
      occurrence.Alarm = change->second.Alarm;
    }
    occurrence.Actioned = object.Done.contains(To_Msecs(occurrence.Date));
    ++report.Occurrences;
    return true;
  };
  Create(object, planned.Part, event, replaced);
  ++report.Sets;
}

}  // namespace Plexidex
