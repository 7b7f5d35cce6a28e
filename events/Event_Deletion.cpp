#include "Event_Deletion.h"

#include "Kt_data_01.h"
#include "Reminder_Utils.h"

namespace KTReminds {

using namespace Kt_data_01;

namespace {

void Delete_Set(const std::string& event) {
  const TField key = Events_Data.Field("Key");
  Events_Data.Set_Index("Event");
  Alarms_Table.Set_Index("Key");
  Events_Data.SetRange({event}, {event});
  for (Events_Data.First(); !Events_Data.Eof(); Events_Data.Delete()) {
    if (Alarms_Table.FindKey({Events_Data.Text(key)})) Alarms_Table.Delete();
  }
  Events_Data.CancelRange();
  Events_Table.Delete();
}

void Delete_One(const std::string& event, bool alarm_found) {
  if (alarm_found) Alarms_Table.Delete();
  Events_Data.Delete();
  Events_Data.Set_Index("Event");
  if (!Events_Data.FindKey({event})) Events_Table.Delete();
}

}  // namespace

bool Locate_Event_Data(const std::string& OccurrenceKey, bool& AlarmFound) {
  AlarmFound = false;
  Events_Data.Set_Index("Key");
  if (!Events_Data.FindKey({OccurrenceKey})) return false;
  Events_Table.Set_Index("Key");
  Events_Table.FindKey({Events_Data.Text(Events_Data.Field("Event"))});
  Alarms_Table.Set_Index("Key");
  AlarmFound = Alarms_Table.FindKey({OccurrenceKey});
  return true;
}

bool Ask_About_Deletion(const std::string& OccurrenceKey, TDeletion_Question& Question) {
  try {
    bool alarm_found = false;
    if (!Locate_Event_Data(OccurrenceKey, alarm_found)) return false;
    Question.Is_Task = Events_Table.Integer(Events_Table.Field("EventType")) == Event_Type_Task;
    Question.Is_Recurring = Events_Table.Integer(Events_Table.Field("Freq")) > 0;
    return true;
  } catch (...) {
    FailRead("fm_Delete_Reminder:FormShow [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]");
    return false;
  }
}

void Delete_Occurrence(const std::string& OccurrenceKey, bool WholeSet) {
  constexpr auto tag = "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]";
  if (!Start_Update()) return;
  try {
    bool alarm_found = false;
    if (Locate_Event_Data(OccurrenceKey, alarm_found)) {
      const std::string event(Events_Table.Text(Events_Table.Field("Key")));
      if (WholeSet && Events_Table.Integer(Events_Table.Field("Freq")) != 0) {
        Delete_Set(event);
      } else {
        Delete_One(event, alarm_found);
      }
    }
    EndUpdate();
  } catch (...) {
    FailUpdate(tag);
  }
}

}  // namespace KTReminds
