#include <cmath>
#include <string>

#include "Alarm_Texts.h"
#include "Alert_Watch.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr int Minutes_Of_A_Day = 24 * 60;

std::string Counted_Units(std::int64_t count, const char* unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

std::string Days_Text(std::int64_t days) {
  if (days == 0) return "today";
  if (days == 1) return "tomorrow";
  return days > 0 ? "in " + Counted_Units(days, "day") : Counted_Units(-days, "day") + " late";
}

}  // namespace

std::string When_Text(const TAlert_Entry& entry) {
  return FormatDateTime(entry.Timeless ? "ddddd" : "ddddd t", entry.EventDate);
}

std::string Lateness_Text(const TAlert_Entry& entry, TDateTime now) {
  if (entry.Timeless) return Days_Text(Whole_Day(entry.EventDate) - Whole_Day(now));
  // Nobody has to be told of a minute that has not passed.
  const auto minutes =
      static_cast<std::int64_t>(std::ceil(std::round((entry.EventDate - now) * Minutes_Of_A_Day * 60) / 60));
  if (minutes == 0) return "now";
  const std::int64_t size = std::abs(minutes);
  const std::string text = size < 120                    ? Counted_Units(size, "minute")
                           : size < 2 * Minutes_Of_A_Day ? Counted_Units(size / 60, "hour")
                                                         : Counted_Units(size / Minutes_Of_A_Day, "day");
  return minutes > 0 ? "in " + text : text + " late";
}

std::string Alert_Text(const TAlert_Entry& entry, TDateTime now) {
  std::string text = When_Text(entry) + "  " + entry.Title;
  if (!entry.Location.empty()) text += ", " + entry.Location;
  if (!entry.Owner_Name.empty()) text += " (" + entry.Owner_Name + ")";
  return text + " -- " + Lateness_Text(entry, now);
}

const std::vector<int>& Usual_Delays() {
  static const std::vector<int> delays = {
      5, 10, 15, 30, 60, 2 * 60, 4 * 60, Minutes_Of_A_Day, 2 * Minutes_Of_A_Day, 7 * Minutes_Of_A_Day};
  return delays;
}

std::string Delay_Text(int minutes) {
  if (minutes % Minutes_Of_A_Day == 0) return Counted_Units(minutes / Minutes_Of_A_Day, "day");
  return minutes % 60 == 0 ? Counted_Units(minutes / 60, "hour") : Counted_Units(minutes, "minute");
}

std::string Count_Text(int count) {
  return Counted_Units(count, "reminder");
}

std::optional<int> Delay_From_Text(const std::string& text) {
  constexpr int most = 3650 * Minutes_Of_A_Day;
  // As an offset is typed, and weeks.
  std::string trimmed(Kt_data_01::Trimmed(text));
  const std::size_t blank = trimmed.find(' ');
  const bool weeks = blank != std::string::npos && blank + 1 < trimmed.size() &&
                     (trimmed[blank + 1] == 'w' || trimmed[blank + 1] == 'W');
  if (weeks) trimmed[blank + 1] = 'd';
  const std::int64_t minutes = std::int64_t{KTReminds::Convert_Alarm_ItemText(trimmed)} * (weeks ? 7 : 1);
  if (minutes <= 0 || minutes > most) return {};
  return static_cast<int>(minutes);
}

}  // namespace Plexidex
