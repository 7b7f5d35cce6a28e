#include "Event_Rows.h"

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;

std::optional<TOccurrence_Rows> Find_Occurrence(std::string_view key) {
  std::optional<TOccurrence_Rows> rows(
      TOccurrence_Rows{TTable(Events_Data, "Key"), TTable(Events_Table, "Key"), TTable(Alarms_Table, "Key")});
  if (!rows->Occurrence.FindKey({key}) ||
      !rows->Event.FindKey({rows->Occurrence.Text(Occurrence_Columns().Event)})) {
    return std::nullopt;
  }
  rows->Has_Alarm = rows->Alarm.FindKey({key});
  return rows;
}

void Delete_Event(TOccurrence_Rows& rows) {
  if (rows.Has_Alarm) rows.Alarm.Delete();
  rows.Occurrence.Delete();
  TTable others(Events_Data, "Event", {"Event"});
  if (others.FindKey({rows.Event.Text(Event_Columns().Key)})) return;
  Forget_Import(rows.Event.Text(Event_Columns().Key));
  rows.Event.Delete();
}

void Delete_Occurrences(std::string_view event, std::string_view but) {
  TTable occurrences(Events_Data, "Event", {"Key"}), alarms(Alarms_Table, "Key", {"Key"});
  occurrences.SetRange({event}, {event});
  occurrences.First();
  while (!occurrences.Eof()) {
    const std::string_view occurrence = occurrences.Text(Occurrence_Columns().Key);
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

void Delete_Set(std::string_view event) {
  Delete_Occurrences(event);
  TTable events(Events_Table, "Key", {"Key"});
  if (!events.FindKey({event})) return;
  Forget_Import(event);
  events.Delete();
}

void Write_Alarm_Users(std::string_view event, std::string_view user) {
  TTable occurrences(Events_Data, "Event", {"Key"}), alarms(Alarms_Table, "Key");
  occurrences.SetRange({event}, {event});
  for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
    if (!alarms.FindKey({occurrences.Text(Occurrence_Columns().Key)})) continue;
    alarms.Edit();
    alarms.Set(Alarm_Columns().User, user);
    PostUpdate(alarms);
  }
}

TOccurrence_Writer::TOccurrence_Writer(std::string_view event, const TOwner& owner, std::string_view user)
    : event(event), user(user), owner(owner), occurrences(Events_Data), alarms(Alarms_Table) {}

std::string TOccurrence_Writer::Write(TDateTime date, bool actioned, const TAlarm& alarm) {
  std::string key = Kt_util_01::Get_GUID();
  occurrences.Insert();
  occurrences.SetFields({key, owner.Contact, owner.Book, event, actioned, date});
  PostUpdate(occurrences);
  if (alarm.On) {
    alarms.Insert();
    alarms.SetFields({key, user, alarm.Offset, alarm.WAVFile, alarm.NextTime, actioned});
    PostUpdate(alarms);
  }
  return key;
}

}  // namespace KTReminds
