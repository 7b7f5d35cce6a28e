#include "Entry_Rows.h"

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

bool Has_State(const TEventKey& entry) {
  return entry.EventType == TEntry_Type::Event || entry.Is_Task();
}

TEntry_State State_Of(const TEventKey& entry, TDateTime now) {
  if (!Has_State(entry)) return TEntry_State::None;
  if (entry.Done) return TEntry_State::Done;
  return CompareDates(entry.EventDate, now) < 0 ? TEntry_State::Overdue : TEntry_State::Outstanding;
}

int State_Image(const TEventKey& entry) {
  if (!Has_State(entry)) return -1;
  if (entry.Is_Task()) return entry.Done ? Image_Done_Task : Image_Open_Task;
  return entry.Done ? Image_Done_Event : Image_Open_Event;
}

std::string_view Row_Text(const TEventKey& entry) {
  return entry.Private ? Hidden_Text : entry.Description.View();
}

std::string Spoken_Row(const TEventKey& entry, TDateTime now) {
  std::string text(Row_Text(entry));
  if (!entry.Timeless) text += ", " + FormatDateTime("t", entry.EventDate);
  switch (State_Of(entry, now)) {
    case TEntry_State::None:
      return text;
    case TEntry_State::Outstanding:
      return text + ", outstanding";
    case TEntry_State::Overdue:
      return text + ", overdue";
    case TEntry_State::Done:
      return text + ", completed";
  }
  return text;
}

}  // namespace KTReminds
