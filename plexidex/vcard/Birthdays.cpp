#include "Birthdays.h"

#include "Event_Creation.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

struct TDay {
  int Year = 0;  // 0 where it is not known
  int Month, Day;
};

TDay Day_Of(const std::string& birthday) {
  const auto number = [&](std::size_t from, std::size_t length) {
    return std::stoi(birthday.substr(from, length));
  };
  const std::size_t month = birthday.size() - 4;
  return {birthday.starts_with('-') ? 0 : number(0, 4), number(month, 2), number(month + 2, 2)};
}

}  // namespace

std::string Create_Birthday(const KTReminds::TOwner& owner, const std::string& name,
                            const std::string& birthday, TDateTime until, const std::string& user,
                            bool is_private) {
  const TDay born = Day_Of(birthday);
  const int year = Decode_Date(Today()).Year;
  // A yearly set keeps its day; what has none in most years is moved there where there is one.
  const bool is_leap_day = born.Month == 2 && born.Day == 29;
  const auto moved = [&](TDateTime date) {
    const bool has_leap_day = is_leap_day && Days_In_Month(Decode_Date(date).Year, 2) == 29;
    return has_leap_day ? date + 1 : date;
  };
  const TDateTime first = Encode_Date(year, born.Month, is_leap_day ? 28 : born.Day);
  KTReminds::TNew_Event event;
  event.Owner = owner;
  event.Record.Title = "Birthday of " + name;
  if (born.Year > 0)
    event.Record.Notes = "Born on " + FormatDateTime("ddddd", Encode_Date(born.Year, born.Month, born.Day));
  event.Record.User = user;
  event.Record.Private = is_private;
  event.Record.AllDay = true;
  event.Record.FirstDate = first;
  event.Record.Pattern.Freq = KTReminds::TFrequency::Yearly;
  event.Record.Pattern.LastDate = until;
  event.MarkPastActioned = true;
  event.Adjust = [&](KTReminds::TNew_Occurrence& occurrence) {
    occurrence.Date = moved(occurrence.Date);
    return true;
  };
  std::string key;
  if (KTReminds::Create_Event(event, key).empty()) throw EAlready_Reported();
  return key;
}

std::string Current_Birthday(const std::string& event, const std::string& birthday) {
  TTable events(Events_Table, "Key");
  if (event.empty() || birthday.empty() || !events.FindKey({event}) || KTReminds::Is_Hidden(events))
    return birthday;
  const TDateTime first = KTReminds::Read_Event(events).FirstDate;
  const TDay was = Day_Of(birthday);
  const TDate_Parts is = Decode_Date(first);
  const int day = was.Month == 2 && was.Day == 29 ? 28 : was.Day;
  if (is.Month == was.Month && is.Day == day) return birthday;
  return birthday.substr(0, birthday.size() - 4) + FormatDateTime("mmdd", first);
}

}  // namespace Plexidex
