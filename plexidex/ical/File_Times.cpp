#include "File_Times.h"

#include <algorithm>

#include "Kt_util_01.h"
#include "Rule_Walk.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// libical follows the rules of a zone no further than 2035. Other years are looked up in one of the same
// calendar.
constexpr int Last_Zone_Year = 2034;

// Each takes room for all its changes of the clock.
constexpr int Most_Defined = 100;

int Year_Of_Same_Calendar(int year) {
  const auto first_day = [](int of) { return Day_Of_Week(Day_From_Date(of, 1, 1)); };
  for (int like = Last_Zone_Year; like > Last_Zone_Year - 28; --like) {
    if (Is_Leap_Year(like) == Is_Leap_Year(year) && first_day(like) == first_day(year)) return like;
  }
  return Last_Zone_Year;
}

std::string Property_Text(icalcomponent* component, icalproperty_kind kind, const char* name) {
  for (icalproperty* property = icalcomponent_get_first_property(component, kind); property;
       property = icalcomponent_get_next_property(component, kind)) {
    if (kind == ICAL_X_PROPERTY && Simple_UpperCase(icalproperty_get_x_name(property)) != name) continue;
    const char* const text = icalproperty_get_value_as_string(property);
    return text ? text : "";
  }
  return {};
}

bool Is_Known_Zone(const std::string& name) {
  TDateTime ignored = 0;
  return Zone_To_Local(name, static_cast<TDateTime>(Unix_Epoch_Day), ignored);
}

// Programs put their own prefix before the name: "/example.org/20240101_1/Europe/Berlin". No name has more
// than three parts or is long.
std::string System_Zone_In(const std::string& tzid) {
  constexpr std::size_t longest = 100;
  for (std::size_t start = tzid.size() - std::min(tzid.size(), longest); start < tzid.size();) {
    std::string name = tzid.substr(start);
    if (!name.starts_with('/') && Is_Known_Zone(name)) return name;
    const auto slash = tzid.find('/', start);
    if (slash == std::string::npos) break;
    start = slash + 1;
  }
  return {};
}

// libical follows the rules of a zone at once from their beginning. Those that never give a date, or many,
// would take all time and memory. A rule that is followed here changes the clock once a year or less often,
// but three times in the first ten years.
bool Is_Bounded(icalcomponent* definition) {
  constexpr int most_rules = 40;
  int rules = 0;
  for (icalcompiter i = icalcomponent_begin_component(definition, ICAL_ANY_COMPONENT); icalcompiter_deref(&i);
       icalcompiter_next(&i)) {
    const auto start = Read_Wall_Time(icalcomponent_get_dtstart(icalcompiter_deref(&i)));
    for (icalproperty* property =
             icalcomponent_get_first_property(icalcompiter_deref(&i), ICAL_RRULE_PROPERTY);
         property; property = icalcomponent_get_next_property(icalcompiter_deref(&i), ICAL_RRULE_PROPERTY)) {
      const icalrecurrencetype rule = icalproperty_get_rrule(property);
      if (rule.freq < ICAL_MONTHLY_RECURRENCE || rule.rscale || !start || ++rules > most_rules) return false;
      TRule_Walk walk(rule, *start, [] {});
      TDateTime last = 0;
      for (int count = 0; count < 3; ++count) {
        const auto date = walk.Next(Whole_Day(*start) + 3653);
        if (!date || (count > 0 && *date - last < 300)) return false;
        last = *date;
      }
    }
  }
  return true;
}

}  // namespace

TZone TZone::UTC() {
  TZone zone;
  zone.kind = TKind::UTC;
  return zone;
}

TZone TZone::Named(const std::string& name) {
  TZone zone;
  // Times in the user's own zone stay as they are, also in the hour that the clock skips.
  if (name == Time_Zone()) return zone;
  zone.kind = TKind::Named;
  zone.name = name;
  return zone;
}

std::optional<TZone> TZone::Defined(icalcomponent* definition) {
  if (!Is_Bounded(definition)) return std::nullopt;
  icaltimezone* const made = icaltimezone_new();
  icalcomponent* const copy = icalcomponent_new_clone(definition);
  // The zone takes its component over, and frees it.
  if (!icaltimezone_set_component(made, copy)) {
    icalcomponent_free(copy);
    icaltimezone_free(made, 1);
    return std::nullopt;
  }
  TZone zone;
  zone.kind = TKind::Defined;
  zone.defined = std::shared_ptr<icaltimezone>(made, TFree());
  return zone;
}

TDateTime TZone::To_Local(TDateTime wall) const {
  switch (kind) {
    case TKind::Local:
      break;
    case TKind::UTC:
      return UTC_To_Local(wall);
    case TKind::Named: {
      TDateTime local = wall;
      Zone_To_Local(name, wall, local);
      return local;
    }
    case TKind::Defined: {
      icaltimetype time = Floating_Time(wall, false);
      if (time.year > Last_Zone_Year) time.year = Year_Of_Same_Calendar(time.year);
      const int offset = icaltimezone_get_utc_offset(defined.get(), &time, nullptr);
      return UTC_To_Local(SubtractSecs(wall, offset));
    }
  }
  return wall;
}

TZones::TZones(const std::vector<TRead_Component>& components) {
  for (const TRead_Component& read : components) {
    const std::string tzid = Zone_Name(read.Component);
    if (!tzid.empty()) definitions.emplace(tzid, read.Component);
  }
}

const TZone* TZones::Find(const std::string& tzid) {
  auto place = found.find(tzid);
  if (place == found.end()) {
    const auto definition = definitions.find(tzid);
    // The system's rules come first: those in a file are often shortened to the years that its writer looked
    // at.
    std::string system = System_Zone_In(tzid);
    if (system.empty() && definition != definitions.end()) {
      system = System_Zone_In(Property_Text(definition->second, ICAL_X_PROPERTY, "X-LIC-LOCATION"));
    }
    std::optional<TZone> zone;
    if (!system.empty()) {
      zone = TZone::Named(system);
    } else if (definition != definitions.end() && ++defined <= Most_Defined) {
      zone = TZone::Defined(definition->second);
    }
    place = found.emplace(tzid, std::move(zone)).first;
  }
  return place->second ? &*place->second : nullptr;
}

bool Is_System_Zone(const std::string& tzid) {
  return !System_Zone_In(tzid).empty();
}

std::string Zone_Name(icalcomponent* definition) {
  return Property_Text(definition, ICAL_TZID_PROPERTY, nullptr);
}

std::optional<TDateTime> Read_Wall_Time(const icaltimetype& time) {
  if (time.year < Min_Year || time.year > Max_Year || time.month < 1 || time.month > 12) return std::nullopt;
  if (time.day < 1 || time.day > Days_In_Month(time.year, time.month)) return std::nullopt;
  std::int64_t seconds = 0;
  if (!time.is_date) {
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || time.second < 0 ||
        time.second > 60) {
      return std::nullopt;
    }
    seconds = time.hour * 3600 + time.minute * 60 + std::min(time.second, 59);  // 60 is a leap second
  }
  return From_Msecs(Day_From_Date(time.year, time.month, time.day) * Msecs_Per_Day + seconds * 1000);
}

icaltimetype Floating_Time(TDateTime wall, bool is_date) {
  icaltimetype time = icaltime_null_time();
  const TDate_Parts date = Decode_Date(wall);
  time.year = date.Year;
  time.month = date.Month;
  time.day = date.Day;
  time.is_date = is_date ? 1 : 0;
  if (!is_date) {
    const TTime_Parts clock = Decode_Time(wall);
    time.hour = clock.Hour;
    time.minute = clock.Minute;
    time.second = clock.Second;
  }
  return time;
}

bool In_Date_Range(TDateTime value) {
  const std::int64_t day = Whole_Day(value);
  return day >= Day_From_Date(Min_Year, 1, 1) && day <= Day_From_Date(Max_Year, 12, 31);
}

}  // namespace Plexidex
