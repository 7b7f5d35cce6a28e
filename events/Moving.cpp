#include "Moving.h"

#include "Event_Record.h"
#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_data_01;

std::optional<TDateTime> Move_Occurrence(const std::string& key, TDateTime to_day) {
  constexpr auto tag = "Moving:Move_Occurrence [KT_Events_Data]";
  const TField date = Occurrence_Columns().EventDate;
  TTable occurrence(Events_Data, "Key");
  TDateTime to = to_day;
  const auto is_found = Read(tag, [&] {
    if (!occurrence.FindKey({key})) return false;
    to += Kt_util_01::From_Msecs(Kt_util_01::Msec_Of_Day(occurrence.DateTime(date)));
    return true;
  });
  const bool is_written = is_found.value_or(false) && Update(tag, [&] {
                            occurrence.Edit();
                            occurrence.Set(date, to);
                            PostUpdate(occurrence);
                          });
  return is_written ? std::optional(to) : std::nullopt;
}

}  // namespace KTReminds
