#include "Event_Deletion.h"

#include "Event_Rows.h"
#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_data_01;

bool Locate_Event_Data(const std::string& OccurrenceKey, bool& AlarmFound) {
  AlarmFound = false;
  Events_Data.Set_Index("Key");
  if (!Events_Data.FindKey({OccurrenceKey})) return false;
  Events_Table.Set_Index("Key");
  Events_Table.FindKey({Events_Data.Text(Occurrence_Columns().Event)});
  Alarms_Table.Set_Index("Key");
  AlarmFound = Alarms_Table.FindKey({OccurrenceKey});
  return true;
}

std::optional<TDeletion_Question> Ask_About_Deletion(const std::string& OccurrenceKey) {
  const auto question = Read("fm_Delete_Reminder:FormShow [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]",
                             [&]() -> std::optional<TDeletion_Question> {
                               bool alarm_found = false;
                               if (!Locate_Event_Data(OccurrenceKey, alarm_found)) return std::nullopt;
                               return TDeletion_Question{Read_Entry_Type(Events_Table) == TEntry_Type::Task,
                                                         Events_Table.Integer(Event_Columns().Freq) > 0};
                             });
  return question.value_or(std::nullopt);
}

void Delete_Occurrence(const std::string& OccurrenceKey, bool WholeSet) {
  constexpr auto tag = "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]";
  // What is gone needs no update, which a database might refuse.
  if (!Read(tag, [&] { return Find_Occurrence(OccurrenceKey).has_value(); }).value_or(false)) return;
  Update(tag, [&] {
    auto rows = Find_Occurrence(OccurrenceKey);
    if (!rows) return;
    if (WholeSet && rows->Event.Integer(Event_Columns().Freq) != 0) {
      Delete_Set(rows->Event.Text(Event_Columns().Key));
    } else {
      Delete_Event(*rows);
    }
  });
}

}  // namespace KTReminds
