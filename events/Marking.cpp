#include "Marking.h"

#include "Entry_Lists.h"
#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr auto Tag = "Reminder_Utils:Set_Event_As_Actioned [KT_Events/KT_Events_Data/KT_Alarms]";

void Mark_Task(TTable& events, bool done) {
  TTask_Progress progress = Read_Progress(events);
  progress.Status = done ? TTask_Status::Completed : TTask_Status::Not_Started;
  progress.Percentage = done ? 100 : 0;
  progress.Completed = done ? Whole_Day(Now()) : 0;
  Write_Progress(events, progress);
}

void Mark_Date(TOccurrence_Rows& rows, bool done) {
  rows.Occurrence.Edit();
  rows.Occurrence.Set(Occurrence_Columns().Actioned, done);
  PostUpdate(rows.Occurrence);
  if (!rows.Has_Alarm) return;
  rows.Alarm.Edit();
  rows.Alarm.Set(Alarm_Columns().Actioned, done);
  PostUpdate(rows.Alarm);
}

void Keep_Journal(const TOccurrence_Rows& rows, bool done, bool is_task) {
  const TOccurrence_Columns& column = Occurrence_Columns();
  const std::string_view key = rows.Occurrence.Text(column.Key);
  const auto activity = static_cast<int>(rows.Event.Integer(Event_Columns().Type));
  if (!done) return RemoveLog(key);
  if (activity <= No_Activity) return;
  const TDateTime now = Now();
  const std::string text = FormatDateTime(
      is_task ? "\"Task Marked Completed: \"ddddd,t" : "\"Event Marked Completed: \"ddddd,t", now);
  LogJournal(activity, key, rows.Occurrence.Text(column.Contact), rows.Event.Text(Event_Columns().Title), now,
             text, 0, is_task ? now : rows.Occurrence.DateTime(column.EventDate));
}

}  // namespace

TMarking Mark_Occurrence(const std::string& key, bool done) {
  TMarking marking;
  auto found = Read(Tag, [&] { return Find_Occurrence(key); });
  if (!found) return {TMarking::TEnd::Failed, false, {}};
  if (!*found) return marking;
  TOccurrence_Rows& rows = **found;
  marking.Is_Task = Read_Entry_Type(rows.Event) == TEntry_Type::Task;
  marking.Title = rows.Event.Text(Event_Columns().Title);
  const TUpdate_Result result = Update(Tag, [&] {
    if (marking.Is_Task) Mark_Task(rows.Event, done);
    Mark_Date(rows, done);
    Keep_Journal(rows, done, marking.Is_Task);
  });
  marking.End = result                                        ? TMarking::TEnd::Marked
                : result.End == TUpdate_Result::TEnd::Refused ? TMarking::TEnd::Refused
                                                              : TMarking::TEnd::Failed;
  return marking;
}

void Set_Event_as_Actioned(TList_Item& Item, bool Actioned, bool PlaySound, int DoneEventImage,
                           int OpenEventImage, int DoneTaskImage, int OpenTaskImage) {
  TEventKey& entry = *Item.Data;
  const TMarking marking = Mark_Occurrence(entry.Key.Str(), Actioned);
  if (marking.End == TMarking::TEnd::Gone || marking.End == TMarking::TEnd::Failed) return;
  if (marking.End == TMarking::TEnd::Marked && marking.Is_Task) {
    entry.Percentage = Actioned ? 100 : 0;
    entry.FirstText = TText(
        Task_Status_Text(Actioned ? TTask_Status::Completed : TTask_Status::Not_Started, entry.Percentage));
    entry.SecondText = TText(marking.Title);
  }
  entry.Done = Actioned;
  if (PlaySound) Sound(Actioned ? 3 : 1);
  if (entry.EventType == TEntry_Type::Event) {
    Item.Image = Actioned ? DoneEventImage : OpenEventImage;
  } else if (entry.Is_Task()) {
    Item.Image = Actioned ? DoneTaskImage : OpenTaskImage;
  }
  Item.Update();
}

}  // namespace KTReminds
