#include "Planned.h"

#include "Rule_Dates.h"

namespace Plexidex {

using namespace Kt_util_01;

std::vector<TPlanned_Occurrence> TPlanned_Event::Occurrences() const {
  std::vector<TPlanned_Occurrence> found;
  if (!Is_Set()) {
    for (std::size_t i = 0; i < Dates.size(); ++i) {
      for (int day = 0; day < Days; ++day)
        found.push_back({Dates[i] + day, Named[i], day == 0 ? Alarm : KTReminds::TAlarm(), -1});
    }
    return found;
  }
  const auto add = [&](TDateTime date) {
    const auto change = Changes.find(To_Msecs(date));
    if (change == Changes.end()) {
      found.push_back({date, date, Alarm, -1});
    } else if (!change->second.Deleted) {
      found.push_back({change->second.To, date, change->second.Alarm, change->second.Part});
    }
  };
  Walk_Pattern(Record.Pattern, Dates.front(), add);
  for (const TDateTime date : Extra) add(date);
  return found;
}

}  // namespace Plexidex
