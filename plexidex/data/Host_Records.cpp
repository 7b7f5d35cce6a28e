#include "Database.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

void LogJournal(int type, std::string_view occurrence, std::string_view contact, std::string_view title,
                TDateTime date, std::string_view text, int minutes, TDateTime second_date) {
  TTable log(Log_Table);
  log.Insert();
  log.SetFields({contact, type, date, second_date, title, text, occurrence, minutes});
  PostUpdate(log);
}

void RemoveLog(std::string_view occurrence) {
  TTable log(Log_Table, "Occurrence");
  while (log.FindKey({occurrence})) log.Delete();
}

void Note_Open_Editor(std::string_view event) {
  TTable editors("KT_Open_Editors");
  editors.Insert();
  editors.SetFields({Kt_util_01::User_Key(), event});
  PostUpdate(editors);
}

void Forget_Open_Editor(std::string_view event) {
  TTable editors("KT_Open_Editors", "UserandEvent");
  if (editors.FindKey({Kt_util_01::User_Key(), event})) editors.Delete();
}

std::vector<std::string> Noted_Editors() {
  std::vector<std::string> events;
  TTable editors("KT_Open_Editors", "UserandEvent");
  editors.SetRange({Kt_util_01::User_Key()}, {Kt_util_01::User_Key()});
  const TField event = editors.Field("Event");
  for (editors.First(); !editors.Eof(); editors.Next()) events.emplace_back(editors.Text(event));
  return events;
}

void Forget_Import(std::string_view event) {
  TTable events("KT_Import_Events", "Event");
  if (!events.FindKey({event})) return;
  const std::string book(events.Text(events.Field("Book"))), uid(events.Text(events.Field("UID")));
  events.Delete();
  events.Set_Index("BookandUID");
  if (events.FindKey({book, uid})) return;
  TTable texts("KT_Import_Texts", "BookandUID");
  if (texts.FindKey({book, uid})) texts.Delete();
}

void Build_Holidays_Data(TEventKey_List& list, TDateTime from, TDateTime to) {
  TSnapshot snapshot;
  TTable holidays("KT_Holidays", "HolidayDate");
  const TField date = holidays.Field("HolidayDate"), name = holidays.Field("Name"),
               country = holidays.Field("Country");
  holidays.SetRange({static_cast<double>(Kt_util_01::Whole_Day(from))},
                    {static_cast<double>(Kt_util_01::Whole_Day(to))});
  for (holidays.First(); !holidays.Eof(); holidays.Next()) {
    auto key = std::make_unique<TEventKey>();
    std::string text(holidays.Text(name));
    if (!holidays.Text(country).empty()) text += " (" + std::string(holidays.Text(country)) + ")";
    key->FirstText = key->Description = TText(text);
    key->EventType = TEntry_Type::Other;
    key->Timeless = true;
    key->EventDate = key->FirstDate = holidays.DateTime(date);
    list.push_back(std::move(key));
  }
}

}  // namespace Kt_data_01
