#include "Sheet.h"

#include <algorithm>
#include <memory>

#include "Books.h"
#include "Contacts.h"
#include "Entry_Order.h"
#include "Entry_Rows.h"
#include "Entry_Walk.h"
#include "Kt_util_01.h"
#include "Month_Rules.h"
#include "View_Rules.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Thousands of pages: nobody means to print more.
constexpr std::int64_t Most_Entries = 200'000;

struct TDays {
  TDateTime First = 0, Last = 0;
};

std::string Name_Of(const TSheet_Request& request) {
  if (!request.By_Book) {
    const auto contact = Find_Contact(request.Owner.Contact);
    return contact ? contact->Name : std::string();
  }
  for (const TBook& book : List_Books()) {
    if (book.Key == request.Owner.Book) return book.Name;
  }
  return {};
}

// The views set their titles off by a blank. A day behind the year 9999 has none.
std::string Title_Of(const std::vector<std::string>& longest_first) {
  const std::string& title = longest_first.front();
  return title.empty() ? title : title.substr(1);
}

// The week that holds the year's first Thursday is its first.
int Week_Number(TDateTime monday) {
  const std::int64_t thursday = Whole_Day(monday) + 3;
  return static_cast<int>((thursday - Day_From_Date(Date_From_Day(thursday).Year, 1, 1)) / 7) + 1;
}

TDays Days_Shown(TSheet_Kind kind, TDateTime date) {
  const std::int64_t day = Whole_Day(date);
  if (kind == TSheet_Kind::Week) {
    const TDateTime monday = KTReminds::Week_Start(date);
    return {monday, monday + 6};
  }
  if (kind == TSheet_Kind::Month) {
    const auto [year, month, of_month] = Date_From_Day(day);
    const auto first = static_cast<TDateTime>(day - of_month + 1);
    return {first, first + Days_In_Month(year, month) - 1};
  }
  return {static_cast<TDateTime>(day), static_cast<TDateTime>(day)};
}

std::string Range_Text(const TDays& days, const char* format) {
  const std::string first = FormatDateTime(format, days.First), last = FormatDateTime(format, days.Last);
  return first == last ? first : first + " - " + last;
}

std::string Heading(TSheet_Kind kind, TDateTime date) {
  if (kind == TSheet_Kind::Month) return FormatDateTime("d", date);
  if (kind == TSheet_Kind::Week) return Title_Of(KTReminds::Week_Day_Titles(date));
  return FormatDateTime("dddddd", date);
}

// An entry as it is read; the entry itself does not carry a task's location.
struct TFound {
  std::unique_ptr<TEventKey> Entry;
  TText Location;
};

TSheet_Line Line_Of(const TFound& found) {
  const TEventKey& entry = *found.Entry;
  return {.Time = entry.Timeless ? std::string() : FormatDateTime("t", entry.EventDate),
          .Text = TText(KTReminds::Row_Text(entry)),
          .Location = found.Location,
          .Holiday = entry.Is_Holiday(),
          .All_Day = entry.Timeless,
          .Task = entry.Is_Task(),
          .Done = entry.Done};
}

KTReminds::TWalk_Range Range_Of(const TSheet_Request& request, const std::optional<TDateTime>& first,
                                const std::optional<TDateTime>& last) {
  KTReminds::TWalk_Range range = KTReminds::All_Of(request.Owner, request.By_Book);
  if (first) range.From = KTReminds::Day_Of(request.Owner, request.By_Book, *first).From;
  if (last) range.To = KTReminds::Day_Of(request.Owner, request.By_Book, *last).To;
  return range;
}

std::vector<TFound> Read_Entries(const KTReminds::TWalk_Range& range, KTReminds::TReading reading,
                                 TProgress_Bar* progress) {
  constexpr std::int64_t progress_step = 1000;
  KTReminds::TEntry_Walk walk(range, KTReminds::TAlarm_Key::Occurrence, reading);
  const std::int64_t count = walk.Count();
  if (count > Most_Entries) {
    throw ESheet_Error("There are " + std::to_string(count) + " entries to print, and at most " +
                       std::to_string(Most_Entries) + " can be printed at once.");
  }
  if (progress) progress->Set_Max(count);
  const auto location = KTReminds::Event_Columns().Location;
  std::vector<TFound> found;
  while (auto entry = walk.Next()) {
    TText where = entry->Private ? TText() : walk.Master().Shared_Text(location);
    found.push_back({std::move(entry), std::move(where)});
    if (progress && found.size() % progress_step == 0) progress->Set_Position(walk.Passed());
  }
  if (progress) progress->Set_Position(count);
  return found;
}

void Add_Holidays(std::vector<TFound>& found, const TDays& days) {
  TEventKey_List holidays;
  Build_Holidays_Data(holidays, days.First, days.Last);
  for (auto& holiday : holidays) found.push_back({std::move(holiday), {}});
}

// Puts each line on its day; a list makes the days that have entries.
void Place_Lines(TSheet& sheet, const std::vector<TFound>& found) {
  std::size_t at = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const std::int64_t day = Whole_Day(found[i].Entry->EventDate);
    if (sheet.Kind == TSheet_Kind::List) {
      if (sheet.Days.empty() || Whole_Day(sheet.Days.back().Date) != day) {
        const auto date = static_cast<TDateTime>(day);
        sheet.Days.push_back({date, Heading(sheet.Kind, date), {}});
      }
      at = sheet.Days.size() - 1;
    } else {
      while (at + 1 < sheet.Days.size() && Whole_Day(sheet.Days[at].Date) < day) ++at;
    }
    sheet.Days[at].Lines.push_back(Line_Of(found[i]));
  }
}

void Name_Sheet(TSheet& sheet, const TSheet_Request& request, const TDays& days) {
  switch (sheet.Kind) {
    case TSheet_Kind::Day:
      sheet.Title = Title_Of(KTReminds::Day_Titles(days.First));
      break;
    case TSheet_Kind::Week:
      sheet.Title = Title_Of(KTReminds::Week_Titles(days.First));
      sheet.Range = "Week " + std::to_string(Week_Number(days.First));
      break;
    case TSheet_Kind::Month:
      sheet.Title = Title_Of(KTReminds::Month_Titles(days.First));
      break;
    case TSheet_Kind::List:
      sheet.Title = request.From || request.To ? "Events" : "All Events";
      if (!sheet.Days.empty() || (request.From && request.To)) sheet.Range = Range_Text(days, "dd mmmm yyyy");
      break;
  }
}

}  // namespace

TSheet Build_Sheet(const TSheet_Request& request, TProgress_Bar* progress) {
  TSheet sheet;
  sheet.Kind = request.Kind;
  sheet.Printed = FormatDateTime("dddddd", Today());
  const bool list = request.Kind == TSheet_Kind::List;
  const TSnapshot snapshot;
  sheet.Whose = Name_Of(request);
  std::optional<TDateTime> first = request.From, last = request.To;
  if (!list) {
    const TDays days = Days_Shown(request.Kind, request.Date);
    first = days.First;
    last = days.Last;
    for (std::int64_t day = Whole_Day(days.First); day <= Whole_Day(days.Last); ++day) {
      const auto date = static_cast<TDateTime>(day);
      sheet.Days.push_back({date, Heading(request.Kind, date), {}});
    }
  }
  std::vector<TFound> found =
      Read_Entries(Range_Of(request, first, last),
                   list ? KTReminds::TReading::Whole : KTReminds::TReading::Window, progress);
  if (!first && !found.empty()) first = found.front().Entry->EventDate;
  if (!last && !found.empty()) last = found.back().Entry->EventDate;
  const TDays days = {first.value_or(0), last.value_or(0)};
  if (!list && request.Kind != TSheet_Kind::Month) Add_Holidays(found, days);
  std::stable_sort(found.begin(), found.end(), [](const TFound& a, const TFound& b) {
    return KTReminds::Comes_Before(*a.Entry, *b.Entry);
  });
  Place_Lines(sheet, found);
  Name_Sheet(sheet, request, days);
  return sheet;
}

}  // namespace Plexidex
