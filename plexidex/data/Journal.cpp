#include "Database.h"
#include "Kt_data_01.h"

namespace Kt_data_01 {

void LogJournal(int type, std::string_view occurrence, std::string_view contact, std::string_view title,
                TDateTime date, std::string_view text, int minutes, TDateTime second_date) {
  TTable log(Log_Table);
  log.Insert();
  log.SetFields({contact, type, date, second_date, title, text, occurrence, minutes});
  PostUpdate(log);
}

void RemoveLog(std::string_view occurrence) {
  TTable log(Log_Table);
  log.Set_Index("Occurrence");
  while (log.FindKey({occurrence})) log.Delete();
}

void Build_Holidays_Data(TEventKey_List& list, TDateTime from, TDateTime to) {
  TSnapshot snapshot;
  TTable holidays("KT_Holidays");
  const TField date = holidays.Field("HolidayDate"), name = holidays.Field("Name"),
               country = holidays.Field("Country");
  holidays.Set_Index("HolidayDate");
  holidays.SetRange({static_cast<double>(Kt_util_01::Whole_Day(from))},
                    {static_cast<double>(Kt_util_01::Whole_Day(to))});
  for (holidays.First(); !holidays.Eof(); holidays.Next()) {
    auto key = std::make_unique<TEventKey>();
    std::string text(holidays.Text(name));
    if (!holidays.Text(country).empty()) text += " (" + std::string(holidays.Text(country)) + ")";
    key->FirstText = key->Description = TText(text);
    key->EventType = TEventKey::Type_Holiday;
    key->Timeless = true;
    key->EventDate = key->FirstDate = holidays.DateTime(date);
    list.push_back(std::move(key));
  }
}

}  // namespace Kt_data_01
