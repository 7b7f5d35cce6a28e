#include "Alarm_Texts.h"

#include <limits>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

constexpr int Minutes_Per_Hour = 60;
constexpr int Minutes_Per_Day = 1440;

std::string Unit_Text(std::int64_t count, const std::string& unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s") + " before";
}

}  // namespace

const std::vector<std::string>& Alarm_Offset_Items() {
  static const std::vector<std::string> items = [] {
    std::vector<std::string> made;
    for (const int minutes : {0, 5, 10, 15, 30, 45}) made.push_back(Convert_Offset_to_ItemText(minutes));
    for (int hours = 1; hours <= 12; ++hours)
      made.push_back(Convert_Offset_to_ItemText(hours * Minutes_Per_Hour));
    for (int days = 1; days <= 3; ++days) made.push_back(Convert_Offset_to_ItemText(days * Minutes_Per_Day));
    return made;
  }();
  return items;
}

std::string Convert_Offset_to_ItemText(int Minutes) {
  if (Minutes < Minutes_Per_Hour) return Unit_Text(Minutes, "minute");
  if (Minutes >= Minutes_Per_Day) return Unit_Text(Minutes / Minutes_Per_Day, "day");
  const std::string hours = Unit_Text(Minutes / Minutes_Per_Hour, "hour");
  const int rest = Minutes % Minutes_Per_Hour;
  return rest == 0 ? hours : hours + " " + Unit_Text(rest, "minute");
}

int Convert_Alarm_ItemText(std::string& Text) {
  const std::size_t blank = Text.find(' ');
  std::int64_t number = 0;
  if (!Str2Int(Text.substr(0, blank), number)) return -1;

  std::int64_t factor = 1;
  std::string unit = "minute";
  bool known = true;
  if (blank != std::string::npos) {
    const char letter = blank + 1 < Text.size() ? Text[blank + 1] : '\0';
    switch (letter) {
      case 'D':
      case 'd':
        factor = Minutes_Per_Day;
        unit = "day";
        break;
      case 'H':
      case 'h':
        factor = Minutes_Per_Hour;
        unit = "hour";
        break;
      case 'M':
      case 'm':
        break;
      default:
        known = false;
        unit.clear();
    }
  }
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  if (number > most / factor || number < -most / factor) return -1;
  if (number >= 0) Text = Unit_Text(number, unit);
  return known ? static_cast<int>(number * factor) : -1;
}

std::string Canonical_Offset(const std::string& text) {
  std::string rewritten = text;
  return Convert_Alarm_ItemText(rewritten) >= 0 ? rewritten : text;
}

std::string Get_Alarm_TimeStr(TDateTime EventDate, TDateTime NextTime, int Offset) {
  if (NextTime == 0)
    return FormatDateTime("\"at\" t \"on\" dddd, dd mmmm yyyy", SubtractMins(EventDate, Offset));
  return FormatDateTime("\"until\" t \"on\" dddd, dd mmmm yyyy", NextTime);
}

}  // namespace KTReminds
