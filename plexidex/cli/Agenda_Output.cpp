#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "Agenda.h"
#include "Console_Text.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::size_t Shown_Key_Length = 8;

bool Is_Task(const TAgenda_Entry& entry) {
  return entry.Data->Is_Task();
}

std::string Time_Text(const TAgenda_Entry& entry) {
  if (entry.Is_Holiday()) return "holiday";
  if (!entry.Data->Timeless) return FormatDateTime("t", entry.Data->EventDate);
  return Is_Task(entry) ? "due" : "all day";
}

std::string What_Text(const TAgenda_Entry& entry) {
  std::string what = Printable(entry.Title);
  if (!entry.Location.Empty()) what += ", " + Printable(entry.Location);
  return what;
}

std::string Remarks_Text(const TAgenda_Entry& entry, bool with_owner) {
  static constexpr const char* frequencies[] = {"", "daily", "weekly", "monthly", "yearly"};
  std::string remarks;
  const auto add = [&remarks](const std::string& remark) {
    if (!remarks.empty() && !remark.empty()) remarks += ", ";
    remarks += remark;
  };
  if (entry.Is_Holiday()) return remarks;
  const std::string status = Is_Task(entry) && !entry.Data->Private ? Printable(entry.Data->FirstText) : "";
  add(status);
  if (entry.Data->Done && status != "Completed") add("done");
  if (const auto freq = static_cast<std::size_t>(entry.Freq); freq < std::size(frequencies))
    add(frequencies[freq]);
  if (entry.Data->Alarm) add("reminder");
  if (entry.Private && !entry.Data->Private) add("private");
  if (with_owner) add(Printable(entry.Data->ContactName));
  return remarks;
}

std::string Key_Ending(const TAgenda_Entry& entry) {
  const std::string_view key = entry.Data->Key.View();
  return std::string(key.substr(key.size() - std::min(key.size(), Shown_Key_Length)));
}

const char* Type_Name(const TAgenda_Entry& entry) {
  if (entry.Is_Holiday()) return "holiday";
  return Is_Task(entry) ? "task" : "event";
}

std::string Json_Text(const TText& text) {
  return Valid_UTF8(text.View());
}

}  // namespace

void Write_Agenda_Text(std::ostream& out, const TAgenda_Range& range,
                       const std::vector<TAgenda_Entry>& entries, bool with_keys) {
  constexpr int widest = 48;
  if (entries.empty()) {
    out << "No entries from " << FormatDateTime("ddddd", range.From) << " to "
        << FormatDateTime("ddddd", range.To) << ".\n";
    return;
  }
  int time_width = 0, what_width = 0;
  for (const TAgenda_Entry& entry : entries) {
    time_width = std::max(time_width, Display_Width(Time_Text(entry)));
    const int width = Display_Width(What_Text(entry));
    if (width <= widest) what_width = std::max(what_width, width);
  }
  std::int64_t day = std::numeric_limits<std::int64_t>::min();
  for (const TAgenda_Entry& entry : entries) {
    if (!out) return;
    const TDateTime date = entry.Data->EventDate;
    if (Whole_Day(date) != day) {
      if (&entry != &entries.front()) out << '\n';
      day = Whole_Day(date);
      out << FormatDateTime("dddddd", date) << '\n';
    }
    const std::string remarks = Remarks_Text(entry, range.Books.size() > 1);
    std::string line = "  " + Padded(Time_Text(entry), time_width) + "  ";
    if (with_keys) line += Padded(Key_Ending(entry), Shown_Key_Length) + "  ";
    line += remarks.empty() ? What_Text(entry) : Padded(What_Text(entry), what_width) + "  " + remarks;
    out << line << '\n';
  }
}

void Write_Agenda_Json(std::ostream& out, const std::vector<TAgenda_Entry>& entries) {
  // A terminal may obey what JSON lets stand in a text.
  constexpr bool ascii_only = true;
  out << '[';
  for (const TAgenda_Entry& entry : entries) {
    if (!out) return;
    const TEventKey& data = *entry.Data;
    const nlohmann::ordered_json object = {{"key", Json_Text(data.Key)},
                                           {"event", Json_Text(entry.Event)},
                                           {"date", ISO_DateTime(data.EventDate)},
                                           {"title", Json_Text(entry.Title)},
                                           {"location", Json_Text(entry.Location)},
                                           {"type", Type_Name(entry)},
                                           {"done", data.Done},
                                           {"alarm", entry.Data->Alarm},
                                           {"private", entry.Private},
                                           {"allday", data.Timeless},
                                           {"priority", data.Priority},
                                           {"freq", static_cast<int>(entry.Freq)}};
    out << (&entry == &entries.front() ? "\n" : ",\n") << object.dump(-1, ' ', ascii_only);
  }
  out << (entries.empty() ? "]\n" : "\n]\n");
}

}  // namespace Plexidex
