#include "Calendar_Index.h"

#include <algorithm>
#include <string_view>

#include "File_Times.h"
#include "Kept_Text.h"
#include "Kt_util_01.h"
#include "Report.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// How deep components may lie in each other. Alarms lie three deep; libical calls itself for each level.
constexpr std::size_t Most_Open = 32;
// It lies in several tables.
constexpr std::size_t Most_Of_UID = 1000;

std::string At(std::size_t line) {
  return "line " + std::to_string(line);
}

// Whether the line is one of this property, with parameters or without.
bool Is_Property(std::string_view line, std::string_view property) {
  return line.size() > property.size() && Begins_With(line, property) &&
         (line[property.size()] == ':' || line[property.size()] == ';');
}

std::string In_Capitals(std::string_view line) {
  return Simple_UpperCase(Trimmed(line.substr(0, 100)));
}

// The value of a line of text, without escapes, control characters and blanks around it.
std::string Plain_Value(std::string_view line) {
  bool quoted = false;
  std::size_t at = 0;
  for (; at < line.size() && (quoted || line[at] != ':'); ++at) quoted ^= line[at] == '"';
  std::string value;
  for (++at; at < line.size(); ++at) {
    if (line[at] == '\\' && at + 1 < line.size()) {
      ++at;
      value += line[at] == 'n' || line[at] == 'N' ? ' ' : line[at];
    } else {
      value += static_cast<unsigned char>(line[at]) < ' ' ? ' ' : line[at];
    }
  }
  return Valid_UTF8(std::string(Trimmed(value)));
}

// Components that hold no place inside each other.
bool Stands_By_Itself(const std::string& component) {
  constexpr std::string_view kinds[] = {"VCALENDAR", "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE"};
  return std::find(std::begin(kinds), std::end(kinds), component) != std::end(kinds);
}

bool Is_Time(std::string_view line) {
  constexpr std::string_view times[] = {"DTSTART", "DTEND",         "DUE",     "RDATE",    "EXDATE",
                                        "RRULE",   "RECURRENCE-ID", "TRIGGER", "COMPLETED"};
  return std::any_of(std::begin(times), std::end(times), [&](auto time) { return Is_Property(line, time); });
}

TDigest Digest_Of(std::string_view text) {
  TDigest digest;
  digest.Add(text);
  return digest;
}

}  // namespace

void TCalendar_Index::Damage(const char* what, const std::string& where) const {
  throw EImport_Error(name + " is " + what + ": " + where + ".");
}

std::string TCalendar_Index::Innermost() const {
  return open.back().Name + " of " + At(open.back().Line);
}

void TCalendar_Index::Take(const TContent_Line& line) {
  if (const auto zero = line.Text.find('\0'); zero != std::string::npos)
    Damage("no calendar", At(line.Number) + " holds binary data");
  const bool is_blank = Trimmed(line.Text).empty();
  any_text = any_text || !is_blank;
  if (Begins_With(line.Text, "BEGIN:")) {
    Begin(line, In_Capitals(std::string_view(line.Text).substr(6)));
  } else if (Begins_With(line.Text, "END:")) {
    Note(line.Text);
    Close(line, In_Capitals(std::string_view(line.Text).substr(4)));
  } else if (open.empty() && !is_blank) {
    if (any_calendar) Damage("damaged", At(line.Number) + " follows the end of the calendar");
    Damage("no calendar", At(line.Number) + " does not begin a calendar");
  } else if (open.size() > 1) {
    Note(line.Text);
  } else if (Is_Property(line.Text, "METHOD") && In_Capitals(Plain_Value(line.Text)) == "CANCEL") {
    Cancels.back() = true;
  }
}

void TCalendar_Index::Begin(const TContent_Line& line, const std::string& frame) {
  if (open.empty() && frame != "VCALENDAR")
    Damage("no calendar", At(line.Number) + " begins a " + frame + " outside of one");
  // An end that was lost would otherwise hide what follows.
  if (!open.empty() && Stands_By_Itself(frame) && (open.size() > 1 || frame == "VCALENDAR"))
    Damage("damaged", At(line.Number) + " begins a " + frame + " inside the " + Innermost());
  if (open.size() == Most_Open)
    Damage("damaged", At(line.Number) + " begins a " + frame + " inside of " + std::to_string(Most_Open) +
                          " other components");
  if (open.size() == 1 &&
      static_cast<std::int64_t>(Components.size() + Zones.size()) >= budget.Most_Entries())
    throw EImport_Error(name + " holds more than " + std::to_string(budget.Most_Entries()) + " entries; " +
                        budget.How_To_Raise + ".");
  open.push_back({frame, line.Number});
  if (open.size() == 1) {
    any_calendar = true;
    Cancels.push_back(false);
  } else if (open.size() == 2) {
    current = {};
    current.Offset = line.Offset;
    current.Line = static_cast<std::uint32_t>(line.Number);
    current.Calendar = static_cast<std::uint32_t>(Cancels.size() - 1);
    uid.clear();
    zone_name.clear();
    zone_location.clear();
  } else {
    ++current.Begun;
  }
  Note(line.Text);
}

void TCalendar_Index::Close(const TContent_Line& line, std::string frame) {
  if (open.empty()) Damage("damaged", At(line.Number) + " ends a " + frame + " that never began");
  if (open.back().Name != frame) {
    const bool cut = open.back().Name.starts_with(frame) && !line.Is_Ended;
    if (frame.empty()) frame = "component without a name";
    Damage(cut ? "cut short" : "damaged",
           At(line.Number) + " ends a " + frame + " where the " + Innermost() + " is open");
  }
  open.pop_back();
  if (open.size() != 1) return;
  current.Length = static_cast<std::uint32_t>(line.End - current.Offset);
  current.Is_Used = frame == "VEVENT" || frame == "VTODO";
  if (uid.size() > Most_Of_UID) {
    uid = "uid-" + Digest_Of(uid).Text();
  }
  current.Name = names.size();
  current.Name_Length = static_cast<std::uint32_t>(uid.size());
  names += uid;
  if (current.Is_Used && !uid.empty()) {
    current.Object.Add(uid);
  } else {
    current.Object = current.Content;
    // Alike or not, what is not used is named one by one.
    if (!current.Is_Used) current.Object.Add(At(current.Line));
  }
  std::sort(current.Zones.begin(), current.Zones.end());
  current.Zones.erase(std::unique(current.Zones.begin(), current.Zones.end()), current.Zones.end());
  const bool is_zone = frame == "VTIMEZONE";
  if (is_zone && !Is_System_Zone(zone_name) && !Is_System_Zone(zone_location))
    defined.try_emplace(Digest_Of(zone_name), current.Content);
  (is_zone ? Zones : Components).push_back(current);
}

void TCalendar_Index::Note(const std::string& line) {
  if (Is_Property(line, "DTSTAMP")) return;
  current.Content.Add(line);
  current.Content.Add("\n");
  if (open.size() == 2 && uid.empty() && Is_Property(line, "UID")) uid = Plain_Value(line);
  if (Is_Property(line, "RRULE")) {
    const std::string rule = Simple_UpperCase(line);
    if (rule.find("COUNT=") == std::string::npos && rule.find("UNTIL=") == std::string::npos)
      current.Is_Endless = true;
  }
  if (open.size() == 2 && Is_Property(line, "TZID")) zone_name = Plain_Value(line);
  if (open.size() == 2 && Is_Property(line, "X-LIC-LOCATION")) zone_location = Plain_Value(line);
  if (Is_Time(line)) Note_Zone(line);
}

void TCalendar_Index::Note_Zone(const std::string& line) {
  const std::string upper = Simple_UpperCase(std::string_view(line).substr(0, 1000));
  const bool is_named = upper.find("TZID=") != std::string::npos;
  if (is_named || upper.find('Z') != std::string::npos) current.Depends_On_Zone = true;
  if (!is_named) return;
  for (const std::string& zone : TKept_Component(line).Zones()) current.Zones.push_back(Digest_Of(zone));
}

std::string TCalendar_Index::Meaning_Of(const TIndexed_Component& component) const {
  std::string meaning = component.Content.Text();
  if (Cancels[component.Calendar]) meaning += " cancelled";
  for (const TDigest& zone : component.Zones) {
    if (const auto found = defined.find(zone); found != defined.end()) meaning += found->second.Text();
  }
  return meaning;
}

std::string TCalendar_Index::UID_Of(const TIndexed_Component& component) const {
  if (component.Name_Length == 0) return "content-" + component.Content.Text();
  return names.substr(component.Name, component.Name_Length);
}

void TCalendar_Index::End() {
  if (!any_text) throw EImport_Error(name + " is empty.");
  if (!open.empty()) Damage("cut short", "the " + Innermost() + " has no end");
}

}  // namespace Plexidex
