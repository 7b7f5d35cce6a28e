#include "Moving.h"

#include "Event_Record.h"
#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_data_01;

bool Move_Occurrence(const std::string& key, TDateTime to) {
  constexpr auto tag = "Moving:Move_Occurrence [KT_Events_Data]";
  TTable occurrence(Events_Data, "Key");
  if (!Read(tag, [&] { return occurrence.FindKey({key}); }).value_or(false)) return false;
  return bool(Update(tag, [&] {
    occurrence.Edit();
    occurrence.Set(Occurrence_Columns().EventDate, to);
    PostUpdate(occurrence);
  }));
}

}  // namespace KTReminds
