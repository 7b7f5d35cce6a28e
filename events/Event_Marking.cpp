#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

struct TMarking {
  TTable occurrences{Events_Data}, events{Events_Table}, alarms{Alarms_Table};

  bool Find(std::string_view occurrence) {
    for (TTable* table : {&occurrences, &events, &alarms}) table->Set_Index("Key");
    return occurrences.FindKey({occurrence}) &&
           events.FindKey({occurrences.Text(occurrences.Field("Event"))});
  }

  void Mark_Task(bool done) {
    events.Edit();
    events.Set(events.Field("Status"), done ? 2 : 0);
    events.Set(events.Field("Percentage"), done ? 100 : 0);
    events.Set(events.Field("Completed"), done ? Whole_Day(Now()) : 0);
    PostUpdate(events);
  }

  void Mark_Occurrence(bool done) {
    occurrences.Edit();
    occurrences.Set(occurrences.Field("Actioned"), done);
    PostUpdate(occurrences);
    if (!alarms.FindKey({occurrences.Text(occurrences.Field("Key"))})) return;
    alarms.Edit();
    alarms.Set(alarms.Field("Actioned"), done);
    PostUpdate(alarms);
  }

  void Keep_Journal(bool done, bool is_task) {
    const std::string_view key = occurrences.Text(occurrences.Field("Key"));
    const auto activity = static_cast<int>(events.Integer(events.Field("Type")));
    if (!done) return RemoveLog(key);
    if (activity <= -1) return;
    const TDateTime now = Now();
    const std::string text = FormatDateTime(
        is_task ? "\"Task Marked Completed: \"ddddd,t" : "\"Event Marked Completed: \"ddddd,t", now);
    LogJournal(activity, key, occurrences.Text(occurrences.Field("Contact")),
               events.Text(events.Field("Title")), now, text, 0,
               is_task ? now : occurrences.DateTime(occurrences.Field("EventDate")));
  }

  bool Is_Task() { return events.Integer(events.Field("EventType")) == Event_Type_Task; }
};

}  // namespace

void Set_Event_as_Actioned(TList_Item& Item, bool Actioned, bool PlaySound, int DoneEventImage,
                           int OpenEventImage, int DoneTaskImage, int OpenTaskImage) {
  TEventKey& entry = *Item.Data;
  try {
    TMarking marking;
    if (!marking.Find(entry.Key)) return;
    if (Start_Update()) {
      try {
        const bool is_task = marking.Is_Task();
        if (is_task) marking.Mark_Task(Actioned);
        marking.Mark_Occurrence(Actioned);
        marking.Keep_Journal(Actioned, is_task);
        EndUpdate();
        if (is_task) {
          entry.Percentage = Actioned ? 100 : 0;
          entry.FirstText = TText(Task_Status_Text(Actioned ? 2 : 0, entry.Percentage));
          entry.SecondText = TText(marking.events.Text(marking.events.Field("Title")));
        }
      } catch (...) {
        FailUpdate("Reminder_Utils:Set_Event_As_Actioned [KT_Events/KT_Events_Data/KT_Alarms]");
        return;
      }
    }
  } catch (...) {
    FailRead("Reminder_Utils:Set_Event_As_Actioned [KT_Events/KT_Events_Data/KT_Alarms]");
    return;
  }

  entry.Done = Actioned;
  if (PlaySound) Sound(Actioned ? 3 : 1);
  if (entry.EventType == TEventKey::Type_Event) {
    Item.Image = Actioned ? DoneEventImage : OpenEventImage;
  } else if (entry.EventType == Event_Type_Task) {
    Item.Image = Actioned ? DoneTaskImage : OpenTaskImage;
  }
  Item.Update();
}

}  // namespace KTReminds
