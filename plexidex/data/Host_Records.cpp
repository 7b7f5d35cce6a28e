#include <algorithm>

#include "Database.h"
#include "Holidays.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

// Whose private entry it is; "" for none. What is noted of it is to stay private when it is gone.
std::string Private_To(std::string_view occurrence) {
  TTable occurrences(Events_Data, "Key", {"Event"}), events(Events_Table, "Key", {"Private", "User"});
  const bool is_private = !occurrence.empty() && occurrences.FindKey({occurrence}) &&
                          events.FindKey({occurrences.Text(occurrences.Field("Event"))}) &&
                          events.Boolean(events.Field("Private"));
  return is_private ? std::string(events.Text(events.Field("User"))) : "";
}

}  // namespace

void LogJournal(int type, std::string_view occurrence, std::string_view contact, std::string_view title,
                TDateTime date, std::string_view text, int minutes, TDateTime second_date) {
  TTable log(Log_Table);
  log.Insert();
  log.SetFields({contact, type, date, second_date, title, text, occurrence, minutes, Private_To(occurrence)});
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

namespace {

struct TNamed_Day {
  std::int64_t Day;
  std::string Name, Country;

  std::unique_ptr<TEventKey> As_Entry() const {
    auto key = std::make_unique<TEventKey>();
    key->FirstText = key->Description = TText(Country.empty() ? Name : Name + " (" + Country + ")");
    key->SecondText = TText(Country);
    key->EventType = TEntry_Type::Other;
    key->Timeless = true;
    key->EventDate = key->FirstDate = static_cast<TDateTime>(Day);
    return key;
  }
};

std::vector<TNamed_Day> Imported_Holidays(std::int64_t first, std::int64_t last) {
  std::vector<TNamed_Day> days;
  TTable holidays("KT_Holidays", "HolidayDate");
  const TField date = holidays.Field("HolidayDate"), name = holidays.Field("Name"),
               country = holidays.Field("Country");
  holidays.SetRange({static_cast<double>(first)}, {static_cast<double>(last)});
  for (holidays.First(); !holidays.Eof(); holidays.Next()) {
    days.push_back({Kt_util_01::Whole_Day(holidays.DateTime(date)), std::string(holidays.Text(name)),
                    std::string(holidays.Text(country))});
  }
  return days;
}

}  // namespace

void Build_Holidays_Data(TEventKey_List& list, TDateTime from, TDateTime to) {
  using namespace Plexidex;
  const TSnapshot snapshot;
  const std::int64_t first = Kt_util_01::Whole_Day(from), last = Kt_util_01::Whole_Day(to);
  std::vector<TNamed_Day> days = Imported_Holidays(first, last);
  const auto imported = static_cast<std::ptrdiff_t>(days.size());
  for (const std::string& code : Chosen_Countries()) {
    const TCountry& country = *Find_Country(code);
    // A file's country is what the user called it.
    const auto is_imported = [&](const THoliday& holiday) {
      return std::any_of(days.begin(), days.begin() + imported, [&](const TNamed_Day& other) {
        return other.Day == holiday.Day && Kt_util_01::CompareText(other.Name, holiday.Name) == 0 &&
               Find_Country(other.Country) == &country;
      });
    };
    for (const THoliday& holiday : Holidays_Between(code, first, last)) {
      if (!is_imported(holiday)) days.push_back({holiday.Day, holiday.Name, std::string(country.Name)});
    }
  }
  std::stable_sort(days.begin(), days.end(),
                   [](const TNamed_Day& a, const TNamed_Day& b) { return a.Day < b.Day; });
  for (const TNamed_Day& day : days) list.push_back(day.As_Entry());
}

}  // namespace Kt_data_01
