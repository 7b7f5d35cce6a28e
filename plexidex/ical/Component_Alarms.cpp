#include <algorithm>
#include <limits>

#include "Alarm_Sounds.h"
#include "Component.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr std::int64_t Msecs_Per_Minute = 60'000;
// Longer than any life, short enough for the column.
constexpr std::int64_t Most_Minutes = 100LL * 366 * 1440;

std::int64_t Milliseconds(const icaldurationtype& length) {
  const std::int64_t seconds = ((std::int64_t{length.weeks} * 7 + length.days) * 24 + length.hours) * 3600 +
                               std::int64_t{length.minutes} * 60 + length.seconds;
  return (length.is_neg ? -seconds : seconds) * 1000;
}

// When an alarm goes off for the first date, in milliseconds of local time; nothing when it does not say.
std::optional<std::int64_t> Alarm_Moment(const TComponent& component, icalcomponent* alarm, TZones& zones,
                                         std::vector<TImport_Remark>& remarks) {
  icalproperty* const trigger = icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY);
  const icalvalue* const value = trigger ? icalproperty_get_value(trigger) : nullptr;
  if (!value) return std::nullopt;
  icaldurationtype distance = icaldurationtype_null_duration();
  if (icalvalue_isa(value) == ICAL_DURATION_VALUE) {
    distance = icalvalue_get_duration(value);
  } else if (icalvalue_isa(value) == ICAL_TRIGGER_VALUE &&
             icaltime_is_null_time(icalvalue_get_trigger(value).time)) {
    distance = icalvalue_get_trigger(value).duration;
  } else {
    const auto time = Read_Time(trigger, zones, component.What, remarks);
    if (!time) return std::nullopt;
    if (!component.Rules.empty() || !component.Dates.empty()) {
      remarks.push_back(
          {component.What, "an alarm at a fixed moment was taken as that long before every date"});
    }
    return To_Msecs(time->Local());
  }
  if (icaldurationtype_is_bad_duration(distance)) return std::nullopt;
  icalparameter* const related = icalproperty_get_first_parameter(trigger, ICAL_RELATED_PARAMETER);
  const bool from_end = related && icalparameter_get_related(related) == ICAL_RELATED_END;
  return To_Msecs(from_end ? component.End : component.Start.Local()) + Milliseconds(distance);
}

}  // namespace

KTReminds::TAlarm Read_Alarms(const TComponent& component, TZones& zones,
                              std::vector<TImport_Remark>& remarks) {
  KTReminds::TAlarm earliest;
  if (!component.Has_Start && !component.Has_Due) return earliest;
  const auto remark = [&](const char* why) { remarks.push_back({component.What, why}); };

  // A task is due on a day, and may remind until that day is over.
  const std::int64_t due_midnight = Whole_Day(component.Due.Local()) * Msecs_Per_Day;
  const std::int64_t reference = component.Is_Task() ? due_midnight : To_Msecs(component.Start.Local());
  const std::int64_t latest = component.Is_Task() ? due_midnight + Msecs_Per_Day - 1 : reference;
  std::int64_t best = std::numeric_limits<std::int64_t>::max();
  int further = 0;
  for (icalcompiter i = icalcomponent_begin_component(component.Ical, ICAL_VALARM_COMPONENT);
       icalcompiter_deref(&i); icalcompiter_next(&i)) {
    icalcomponent* const alarm = icalcompiter_deref(&i);
    icalproperty* const action = icalcomponent_get_first_property(alarm, ICAL_ACTION_PROPERTY);
    if (action && Simple_UpperCase(Raw_Value(action)) == "NONE") continue;
    const auto found = Alarm_Moment(component, alarm, zones, remarks);
    if (!found) {
      remark("an alarm does not say when it goes off");
      continue;
    }
    const std::int64_t moment = *found;
    if (moment > latest) {
      remark(component.Is_Task() ? "an alarm after the due day was left out"
                                 : "an alarm after the start was left out");
      continue;
    }
    // A started minute counts: an alarm never comes later than it was wanted.
    const std::int64_t before = reference - moment;
    const std::int64_t minutes =
        before > 0 ? (before + Msecs_Per_Minute - 1) / Msecs_Per_Minute : before / Msecs_Per_Minute;
    if (minutes > Most_Minutes) {
      remark("an alarm more than a hundred years before the start was left out");
      continue;
    }
    if (icalcomponent_get_first_property(alarm, ICAL_REPEAT_PROPERTY))
      remark("an alarm's repetition was left out");
    if (earliest.On) ++further;
    if (moment >= best) continue;
    best = moment;
    earliest.On = true;
    earliest.Offset = static_cast<int>(minutes);
    icalproperty* const sound = Find_X_Property(alarm, "X-PLEXIDEX-SOUND");
    earliest.WAVFile = sound ? Text_Of(sound) : KTReminds::Default_Sound_Text;
  }
  // A file may name any other file of this machine.
  const std::string named = earliest.WAVFile;
  if (!named.empty() && named != KTReminds::Default_Sound_Text && named != KTReminds::Standard_Beep_Text) {
    earliest.WAVFile = KTReminds::Sound_Named_As(named);
    if (earliest.WAVFile.empty()) {
      earliest.WAVFile = KTReminds::Default_Sound_Text;
      remark("an alarm's sound is none of the program's; the default one takes its place");
    }
  }
  if (further > 0) {
    remark(further == 1 ? "one of two alarms was left out; the earliest counts"
                        : "several alarms were left out; the earliest counts");
  }
  return earliest;
}

}  // namespace Plexidex
