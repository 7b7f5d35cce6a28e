#include "Agenda.h"

#include <algorithm>
#include <tuple>

#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Looks up what belongs to an occurrence. Lives inside a snapshot.
class TLook_Up {
 public:
  TLook_Up() {
    for (TTable* table : {&occurrences, &events, &alarms}) {
      table->Set_Index("Key");
      Set_Cache(*table);
    }
  }

  void Complete(TAgenda_Entry& entry) {
    const TEventKey& data = *entry.Data;
    entry.Title = data.Private ? TText("Private") : data.Description;
    if (entry.Is_Holiday() || !occurrences.FindKey({data.Key})) return;
    entry.Event = occurrences.Shared_Text(event);
    if (!events.FindKey({entry.Event})) return;
    if (!data.Private) entry.Location = events.Shared_Text(location);
    entry.Freq = static_cast<int>(events.Integer(freq));
    entry.Private = events.Boolean(is_private);
    // The list's own flag looks under the key of the set.
    entry.Alarm = !data.Done && data.User == User_Key() && alarms.FindKey({data.Key});
  }

 private:
  TTable occurrences{Events_Data, {"Key", "Event"}};
  TTable events{Events_Table, {"Key", "Location", "Freq", "Private"}};
  TTable alarms{Alarms_Table, {"Key"}};
  const TField event = occurrences.Field("Event"), location = events.Field("Location"),
               freq = events.Field("Freq"), is_private = events.Field("Private");
};

// Where an entry stands within its day.
int Rank(const TAgenda_Entry& entry) {
  if (entry.Is_Holiday()) return 0;
  if (!entry.Data->Timeless) return 3;
  return entry.Data->EventType == TEventKey::Type_Task ? 2 : 1;
}

auto Position(const TAgenda_Entry& entry) {
  const TDateTime date = entry.Data->EventDate;
  return std::tuple(Whole_Day(date), Rank(entry), entry.Data->Timeless ? 0 : Msec_Of_Day(date));
}

}  // namespace

std::vector<TAgenda_Entry> Build_Agenda(const TAgenda_Range& range) {
  std::vector<TAgenda_Entry> entries;
  const auto take = [&entries](TEventKey_List& list) {
    for (auto& data : list) {
      entries.emplace_back();
      entries.back().Data = std::move(data);
    }
    list.clear();
  };
  TSnapshot snapshot;
  TEventKey_List list;
  Build_Holidays_Data(list, range.From, range.To);
  take(list);
  for (const TBook& book : range.Books) {
    KTReminds::Build_Events_Data("", book.Key, list, range.From, range.To, true);
    take(list);
  }
  TLook_Up look_up;
  for (TAgenda_Entry& entry : entries) look_up.Complete(entry);
  std::stable_sort(entries.begin(), entries.end(),
                   [](const TAgenda_Entry& a, const TAgenda_Entry& b) { return Position(a) < Position(b); });
  return entries;
}

}  // namespace Plexidex
