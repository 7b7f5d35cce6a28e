#include "Month_Rules.h"

#include <algorithm>

#include "Entry_Rows.h"
#include "Kt_util_01.h"
#include "View_Rules.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

constexpr std::int64_t First_Date = Day_From_Date(Min_Year, 1, 1),
                       Last_Date = Day_From_Date(Max_Year, 12, 31);
constexpr std::size_t Most_Told = 20, Most_Shown = 300;

std::int64_t Nearest_Date(TDateTime date) {
  return std::clamp(Whole_Day(date), First_Date, Last_Date);
}

std::int64_t Month_Begin(std::int64_t day) {
  return day - Date_From_Day(day).Day + 1;
}

std::string More(std::size_t count) {
  return "and " + std::to_string(count - Most_Told) + " more";
}

}  // namespace

TMonth_Grid::TMonth_Grid(TDateTime any_date) {
  const std::int64_t day = Nearest_Date(any_date), begin = Month_Begin(day);
  date = static_cast<double>(day);
  first = Week_Start(static_cast<double>(begin));
}

TDateTime TMonth_Grid::Day_In(TGrid_Cell cell) const {
  return first + (cell.Row - 1) * Columns + cell.Column;
}

std::optional<TGrid_Cell> TMonth_Grid::Cell_Of(TDateTime day) const {
  const double offset = static_cast<double>(Whole_Day(day)) - first;
  if (offset < 0 || offset >= Days) return {};
  const int index = static_cast<int>(offset);
  return TGrid_Cell{index % Columns, index / Columns + 1};
}

bool Has_Date(TDateTime day) {
  return Nearest_Date(day) == Whole_Day(day);
}

bool Is_Same_Month(TDateTime a, TDateTime b) {
  return Month_Begin(Whole_Day(a)) == Month_Begin(Whole_Day(b));
}

TDateTime Add_Months(TDateTime date, int months) {
  const std::int64_t day = Nearest_Date(date);
  const TDate_Parts parts = Date_From_Day(day);
  const int month = parts.Year * 12 + parts.Month - 1 + months, to_year = month / 12,
            to_month = month % 12 + 1;
  if (month < Min_Year * 12 || to_year > Max_Year) return static_cast<double>(day);
  return static_cast<double>(
      Day_From_Date(to_year, to_month, std::min(parts.Day, Days_In_Month(to_year, to_month))));
}

TAround Around(TDateTime date) {
  const std::int64_t day = Nearest_Date(date), begin = Month_Begin(day);
  const TDate_Parts parts = Date_From_Day(day);
  const TDateTime monday = Week_Start(static_cast<double>(day));
  return {monday, monday + 6, static_cast<double>(begin),
          static_cast<double>(begin + Days_In_Month(parts.Year, parts.Month) - 1)};
}

std::vector<std::string> Month_Titles(TDateTime date) {
  return {FormatDateTime(" mmmm yyyy", date), FormatDateTime(" mmm yyyy", date)};
}

std::vector<TDay_Lines> Lines_Of_Days(const Kt_data_01::TEventKey_List& entries, TDateTime first_day,
                                      int days) {
  std::vector<TDay_Lines> lines(static_cast<std::size_t>(days));
  for (const auto& entry : entries) {
    const std::int64_t day = Whole_Day(entry->EventDate) - Whole_Day(first_day);
    if (day < 0 || day >= days) continue;
    std::string text = entry->Timeless ? "00:00" : FormatDateTime("t", entry->EventDate);
    text += ' ';
    text += Row_Text(*entry);
    lines[static_cast<std::size_t>(day)].push_back({std::move(text), entry.get()});
  }
  for (TDay_Lines& day : lines)
    std::stable_sort(day.begin(), day.end(), [](auto& a, auto& b) { return a.Text < b.Text; });
  return lines;
}

std::string Day_Tip(const TDay_Lines& lines) {
  std::string tip;
  for (std::size_t i = 0; i < std::min(lines.size(), Most_Told); ++i)
    tip += (i ? "\n" : "") + std::string(Shown_Part(lines[i].Text));
  return lines.size() > Most_Told ? tip + '\n' + More(lines.size()) : tip;
}

std::string Spoken_Day(TDateTime day, const TDay_Lines& lines, TDateTime now) {
  const std::string count = std::to_string(lines.size());
  std::string text = FormatDateTime("dddddd", day) + (lines.empty()       ? ", no entries"
                                                      : lines.size() == 1 ? ", 1 entry"
                                                                          : ", " + count + " entries");
  for (std::size_t i = 0; i < std::min(lines.size(), Most_Told); ++i)
    text += "; " + Spoken_Row(*lines[i].Entry, now);
  return lines.size() > Most_Told ? text + "; " + More(lines.size()) : text;
}

std::string_view Shown_Part(std::string_view text) {
  std::size_t end = std::min(text.size(), Most_Shown);
  constexpr unsigned char continued = 0x80, lead_bits = 0xC0;
  while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & lead_bits) == continued)
    --end;
  return text.substr(0, end);
}

}  // namespace KTReminds
