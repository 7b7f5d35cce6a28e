#include "Agenda.h"

#include <algorithm>

#include "Entry_Order.h"
#include "Entry_Walk.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

TAgenda_Entry Entry_Of(std::unique_ptr<TEventKey> data) {
  TAgenda_Entry entry;
  entry.Title = data->Private ? TText("Private") : data->Description;
  entry.Data = std::move(data);
  return entry;
}

}  // namespace

std::vector<TAgenda_Entry> Build_Agenda(const TAgenda_Range& range) {
  const KTReminds::TEvent_Columns& column = KTReminds::Event_Columns();
  std::vector<TAgenda_Entry> entries;
  const TSnapshot snapshot;
  TEventKey_List holidays;
  Build_Holidays_Data(holidays, range.From, range.To);
  for (auto& holiday : holidays) entries.push_back(Entry_Of(std::move(holiday)));
  for (const TBook& book : range.Books) {
    KTReminds::TEntry_Walk walk(KTReminds::Days_Of({book.Key, {}}, true, range.From, range.To),
                                KTReminds::TAlarm_Key::Occurrence, KTReminds::TReading::Window);
    while (auto data = walk.Next()) {
      TAgenda_Entry entry = Entry_Of(std::move(data));
      const TTable& master = walk.Master();
      entry.Event = master.Shared_Text(column.Key);
      if (!entry.Data->Private) entry.Location = master.Shared_Text(column.Location);
      entry.Freq = static_cast<KTReminds::TFrequency>(master.Integer(column.Freq));
      entry.Private = master.Boolean(column.Private);
      entries.push_back(std::move(entry));
    }
  }
  std::stable_sort(entries.begin(), entries.end(), [](const TAgenda_Entry& a, const TAgenda_Entry& b) {
    return KTReminds::Comes_Before(*a.Data, *b.Data);
  });
  return entries;
}

}  // namespace Plexidex
