#include "Agenda.h"

#include <algorithm>

#include "Entry_Order.h"
#include "Entry_Walk.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

TAgenda_Entry Agenda_Entry(std::unique_ptr<TEventKey> data, const TTable& master) {
  const KTReminds::TEvent_Columns& column = KTReminds::Event_Columns();
  TAgenda_Entry entry;
  entry.Title = data->Private ? TText("Private") : data->Description;
  entry.Data = std::move(data);
  if (entry.Is_Holiday()) return entry;
  entry.Event = master.Shared_Text(column.Key);
  if (!entry.Data->Private) entry.Location = master.Shared_Text(column.Location);
  entry.Freq = static_cast<KTReminds::TFrequency>(master.Integer(column.Freq));
  entry.Private = master.Boolean(column.Private);
  return entry;
}

void Sort_Agenda(std::vector<TAgenda_Entry>& entries) {
  std::stable_sort(entries.begin(), entries.end(), [](const TAgenda_Entry& a, const TAgenda_Entry& b) {
    return KTReminds::Comes_Before(*a.Data, *b.Data);
  });
}

std::vector<TAgenda_Entry> Build_Agenda(const TAgenda_Range& range) {
  std::vector<TAgenda_Entry> entries;
  const TSnapshot snapshot;
  TEventKey_List holidays;
  Build_Holidays_Data(holidays, range.From, range.To);
  for (auto& holiday : holidays) entries.push_back(Agenda_Entry(std::move(holiday), Events_Table));
  for (const TBook& book : range.Books) {
    KTReminds::TEntry_Walk walk(KTReminds::Days_Of({book.Key, {}}, true, range.From, range.To),
                                KTReminds::TAlarm_Key::Occurrence, KTReminds::TReading::Window);
    while (auto data = walk.Next()) entries.push_back(Agenda_Entry(std::move(data), walk.Master()));
  }
  Sort_Agenda(entries);
  return entries;
}

}  // namespace Plexidex
