#include "Component.h"

#include <algorithm>
#include <cctype>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::TTask_Status;

namespace {

constexpr int Default_Priority = 5;
// The most that an entry holds, in bytes.
constexpr std::size_t Most_Of_Line = 64U << 10, Most_Of_Notes = 1U << 20, Most_Of_Name = 200;

template <class TBody>
void For_Each_Property(icalcomponent* component, icalproperty_kind kind, TBody body) {
  for (icalproperty* property = icalcomponent_get_first_property(component, kind); property;
       property = icalcomponent_get_next_property(component, kind)) {
    body(property);
  }
}

icalproperty* First(icalcomponent* component, icalproperty_kind kind) {
  return icalcomponent_get_first_property(component, kind);
}

std::string First_Text(icalcomponent* component, icalproperty_kind kind) {
  icalproperty* const property = First(component, kind);
  return property ? Text_Of(property) : std::string();
}

std::string One_Line(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
  while (text.ends_with(' ')) text.pop_back();
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

// Of control characters, which the format does not allow, only those that part lines and words.
std::string Without_Controls(std::string text) {
  std::erase_if(text, [](unsigned char c) { return c < ' ' && c != '\n' && c != '\t'; });
  return text;
}

std::int64_t X_Number(icalcomponent* component, const char* name, std::int64_t fallback) {
  icalproperty* const property = Find_X_Property(component, name);
  std::int64_t value = 0;
  return property && Str2Int(Raw_Value(property), value) ? value : fallback;
}

// Moments such as 20240131T235959 and days such as 20240131, whatever stands between them.
std::vector<TDateTime> Read_Moments(const std::string& text) {
  std::vector<TDateTime> moments;
  for (std::size_t i = 0; i < text.size();) {
    if (!std::isdigit(static_cast<unsigned char>(text[i]))) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == 'T'))
      ++end;
    const std::string one = text.substr(i, end - i);
    if (one.size() == 8 || one.size() == 15) {
      if (const auto moment = Read_Wall_Time(icaltime_from_string(one.c_str()))) moments.push_back(*moment);
    }
    i = end;
  }
  return moments;
}

std::string Calendar_Method(icalcomponent* component) {
  icalcomponent* const calendar = icalcomponent_get_parent(component);
  icalproperty* const method = calendar ? First(calendar, ICAL_METHOD_PROPERTY) : nullptr;
  return method ? Simple_UpperCase(Raw_Value(method)) : std::string();
}

std::string Status_Word(icalcomponent* component) {
  icalproperty* const status = First(component, ICAL_STATUS_PROPERTY);
  return status ? Simple_UpperCase(Raw_Value(status)) : std::string();
}

void Read_Content(TComponent& read, std::vector<TImport_Remark>& remarks) {
  const auto bounded = [&](const std::string& text, std::size_t most, const char* name) {
    if (text.size() > most) {
      remarks.push_back({read.What, std::string("its ") + name + " was cut to " + std::to_string(most >> 10) +
                                        " KB, the most that an entry holds"});
    }
    return Beginning_Of(text, most);
  };
  KTReminds::TEvent_Record& content = read.Content.Record;
  content.Title = bounded(One_Line(First_Text(read.Ical, ICAL_SUMMARY_PROPERTY)), Most_Of_Line, "title");
  if (content.Title.empty()) content.Title = "(no title)";
  content.Location =
      bounded(One_Line(First_Text(read.Ical, ICAL_LOCATION_PROPERTY)), Most_Of_Line, "location");
  content.Notes = bounded(Without_Controls(First_Text(read.Ical, ICAL_DESCRIPTION_PROPERTY)), Most_Of_Notes,
                          "description");
  if (icalproperty* const priority = First(read.Ical, ICAL_PRIORITY_PROPERTY)) {
    const int value = icalproperty_get_priority(priority);
    content.Priority = value >= 1 && value <= 9 ? value : Default_Priority;
  }
  if (icalproperty* const access = First(read.Ical, ICAL_CLASS_PROPERTY)) {
    const std::string word = Simple_UpperCase(Raw_Value(access));
    content.Private = word == "PRIVATE" || word == "CONFIDENTIAL";
  }
  content.Activity =
      static_cast<int>(std::clamp<std::int64_t>(X_Number(read.Ical, "X-PLEXIDEX-ACTIVITY", -1), -1, 9999));
  content.AllDay = read.Is_Task() || (read.Has_Start && read.Start.Is_Date);
}

void Read_Progress(TComponent& read, TZones& zones, std::vector<TImport_Remark>& remarks) {
  KTReminds::TTask_Progress& progress = read.Content.Record.Progress;
  int percent = 0;
  if (icalproperty* const property = First(read.Ical, ICAL_PERCENTCOMPLETE_PROPERTY)) {
    percent = std::clamp(icalproperty_get_percentcomplete(property), 0, 100);
  }
  std::optional<TFile_Time> completed;
  if (icalproperty* const property = First(read.Ical, ICAL_COMPLETED_PROPERTY))
    completed = Read_Time(property, zones, read.What, remarks);

  const std::string word = Status_Word(read.Ical);
  if (word == "COMPLETED") {
    progress.Status = TTask_Status::Completed;
  } else if (word == "IN-PROCESS") {
    progress.Status = TTask_Status::In_Progress;
  } else if (word == "CANCELLED") {
    progress.Status = TTask_Status::Cancelled;
  } else if (word == "NEEDS-ACTION") {
    progress.Status = TTask_Status::Not_Started;
  } else {
    progress.Status = completed || percent == 100 ? TTask_Status::Completed
                      : percent > 0               ? TTask_Status::In_Progress
                                                  : TTask_Status::Not_Started;
  }
  // Pending and postponed have no word of their own in calendar files.
  const std::int64_t finer = X_Number(read.Ical, "X-PLEXIDEX-STATUS", -1);
  if (progress.Status == TTask_Status::In_Progress && (finer == 3 || finer == 4))
    progress.Status = static_cast<TTask_Status>(finer);

  progress.Percentage = progress.Status == TTask_Status::Completed     ? 100
                        : progress.Status == TTask_Status::Not_Started ? 0
                                                                       : percent;
  if (progress.Status == TTask_Status::Completed && completed)
    progress.Completed = Whole_Day(completed->Local());
  const auto last_day = Day_From_Date(Max_Year, 12, 31);
  progress.Started = std::clamp<std::int64_t>(X_Number(read.Ical, "X-PLEXIDEX-STARTED", 0), 0, last_day);
  progress.Budget = X_Number(read.Ical, "X-PLEXIDEX-BUDGET", 0);
  progress.Worked = X_Number(read.Ical, "X-PLEXIDEX-WORKED", 0);
  read.Content.Lead_Days = static_cast<int>(
      std::max<std::int64_t>(0, Whole_Day(read.Due.Local()) - Whole_Day(read.Start.Local())));
}

// A duration in seconds; 0 for a negative one.
std::int64_t Length_In_Seconds(const icaldurationtype& length) {
  if (length.is_neg) return 0;
  return ((std::int64_t{length.weeks} * 7 + length.days) * 24 + length.hours) * 3600 +
         std::int64_t{length.minutes} * 60 + length.seconds;
}

// The end of an event, or the due moment of a task.
void Read_End(TComponent& read, TZones& zones, std::vector<TImport_Remark>& remarks) {
  std::optional<TFile_Time> end;
  icalproperty* const property = First(read.Ical, read.Is_Task() ? ICAL_DUE_PROPERTY : ICAL_DTEND_PROPERTY);
  icalproperty* const duration = First(read.Ical, ICAL_DURATION_PROPERTY);
  if (property) end = Read_Time(property, zones, read.What, remarks);
  if (!end && duration && read.Has_Start) {
    end = read.Start;
    end->Wall =
        From_Msecs(To_Msecs(end->Wall) + Length_In_Seconds(icalproperty_get_duration(duration)) * 1000);
    if (!In_Date_Range(end->Local())) end.reset();
  }
  if (read.Is_Task()) {
    if (!end && !read.Has_Start) {
      end = TFile_Time{Today(), true, TZone()};
      remarks.push_back({read.What, "has no date; it was made due on the day of the import"});
      read.Undated = true;
    }
    if (end) {
      read.Has_Due = true;
      read.Due = *end;
      const bool starts_later = read.Has_Start && Whole_Day(read.Start.Local()) > Whole_Day(end->Local());
      if (!read.Has_Start || starts_later) read.Start = *end;
    } else if (read.Has_Start) {
      read.Has_Due = true;
      read.Due = read.Start;
    }
    read.End = read.Due.Local();
  } else if (read.Has_Start) {
    const std::int64_t implied_days = read.Start.Is_Date ? 1 : 0;
    read.End = end ? end->Local() : read.Start.Local() + static_cast<TDateTime>(implied_days);
    if (read.Start.Is_Date) {
      const std::int64_t days = Whole_Day(read.End) - Whole_Day(read.Start.Local());
      read.Content.Days = static_cast<int>(std::max<std::int64_t>(1, days));
    }
  }
}

void Remark_Errors(icalcomponent* component, const std::string& what, std::vector<TImport_Remark>& remarks) {
  For_Each_Property(component, ICAL_XLICERROR_PROPERTY, [&](icalproperty* error) {
    const std::string text = One_Line(Text_Of(error));
    // Programs write empty values for everything that they know but do not use.
    if (text.starts_with("No value for")) return;
    remarks.push_back({what, "a line could not be read: " + Beginning_Of(text, Most_Of_Name)});
  });
  for (icalcompiter i = icalcomponent_begin_component(component, ICAL_ANY_COMPONENT); icalcompiter_deref(&i);
       icalcompiter_next(&i)) {
    Remark_Errors(icalcompiter_deref(&i), what, remarks);
  }
}

}  // namespace

std::string Beginning_Of(const std::string& text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U) --most;
  return text.substr(0, most);
}

std::string Text_Of(icalproperty* property) {
  const icalvalue* const value = icalproperty_get_value(property);
  const icalvalue_kind kind = value ? icalvalue_isa(value) : ICAL_NO_VALUE;
  if (kind != ICAL_TEXT_VALUE && kind != ICAL_X_VALUE) return Raw_Value(property);
  const char* const text = kind == ICAL_TEXT_VALUE ? icalvalue_get_text(value) : icalvalue_get_x(value);
  return text ? Valid_UTF8(text) : std::string();
}

std::string Raw_Value(icalproperty* property) {
  char* const text = icalproperty_get_value_as_string_r(property);
  std::string value = text ? Valid_UTF8(text) : std::string();
  icalmemory_free_buffer(text);
  return value;
}

icalproperty* Find_X_Property(icalcomponent* component, const char* name) {
  icalproperty* found = nullptr;
  For_Each_Property(component, ICAL_X_PROPERTY, [&](icalproperty* property) {
    const char* const own = icalproperty_get_x_name(property);
    if (!found && own && Simple_UpperCase(own) == name) found = property;
  });
  return found;
}

TComponent Identify(icalcomponent* component, const std::string& uid) {
  TComponent identified;
  identified.Ical = component;
  if (icalcomponent_isa(component) == ICAL_VTODO_COMPONENT)
    identified.Content.Record.EventType = Kt_data_01::TEntry_Type::Task;
  identified.UID = uid;
  identified.What = Beginning_Of(One_Line(First_Text(component, ICAL_SUMMARY_PROPERTY)), Most_Of_Name);
  const std::string named = Beginning_Of(One_Line(First_Text(component, ICAL_UID_PROPERTY)), Most_Of_Name);
  if (identified.What.empty()) {
    identified.What = named.empty() ? "(no UID, no title)" : named;
  } else if (!named.empty()) {
    constexpr std::size_t half = Most_Of_Name / 2 - 2;
    identified.What = Beginning_Of(identified.What, half) + " (" + Beginning_Of(named, half) + ")";
  }
  if (icalproperty* const sequence = First(component, ICAL_SEQUENCE_PROPERTY)) {
    identified.Sequence = icalproperty_get_sequence(sequence);
  }
  identified.Has_Recurrence_Id = First(component, ICAL_RECURRENCEID_PROPERTY) != nullptr;
  return identified;
}

void Read_Component(TComponent& read, TZones& zones, std::vector<TImport_Remark>& remarks) {
  Remark_Errors(read.Ical, read.What, remarks);
  const auto read_time = [&](icalproperty* property, TFile_Time& time) {
    const auto found = property ? Read_Time(property, zones, read.What, remarks) : std::nullopt;
    if (found) time = *found;
    return found.has_value();
  };
  const auto times_of = [&](icalproperty_kind kind, std::vector<TFile_Time>& times) {
    For_Each_Property(read.Ical, kind, [&](icalproperty* property) {
      if (const auto time = Read_Time(property, zones, read.What, remarks)) times.push_back(*time);
    });
  };
  const auto rules_of = [&](icalproperty_kind kind, std::vector<std::string>& rules) {
    For_Each_Property(read.Ical, kind, [&](icalproperty* property) { rules.push_back(Raw_Value(property)); });
  };

  // A cancelled task is kept and shown as cancelled; a cancelled event is left out.
  read.Cancelled =
      (!read.Is_Task() && Status_Word(read.Ical) == "CANCELLED") || Calendar_Method(read.Ical) == "CANCEL";
  read.Has_Start = read_time(First(read.Ical, ICAL_DTSTART_PROPERTY), read.Start);
  Read_Content(read, remarks);
  Read_End(read, zones, remarks);
  if (icalproperty* const id = First(read.Ical, ICAL_RECURRENCEID_PROPERTY)) {
    if (!read_time(id, read.Recurrence_Id)) remarks.push_back({read.What, "its RECURRENCE-ID is no date"});
    icalparameter* const range = icalproperty_get_first_parameter(id, ICAL_RANGE_PARAMETER);
    read.And_Future = range && icalparameter_get_range(range) == ICAL_RANGE_THISANDFUTURE;
  }
  rules_of(ICAL_RRULE_PROPERTY, read.Rules);
  rules_of(ICAL_EXRULE_PROPERTY, read.Exclusion_Rules);
  times_of(ICAL_RDATE_PROPERTY, read.Dates);
  times_of(ICAL_EXDATE_PROPERTY, read.Excluded);
  if (icalproperty* const done = Find_X_Property(read.Ical, "X-PLEXIDEX-DONE"))
    read.Done = Read_Moments(Raw_Value(done));
  if (read.Is_Task()) Read_Progress(read, zones, remarks);
  read.Content.Alarm = Read_Alarms(read, zones, remarks);
}

std::optional<TFile_Time> Read_Time(icalproperty* property, TZones& zones, const std::string& what,
                                    std::vector<TImport_Remark>& remarks) {
  const icalvalue* const value = icalproperty_get_value(property);
  if (!value) return std::nullopt;
  icaltimetype read = icaltime_null_time();
  switch (icalvalue_isa(value)) {
    case ICAL_DATE_VALUE:
      read = icalvalue_get_date(value);
      break;
    case ICAL_DATETIME_VALUE:
      read = icalvalue_get_datetime(value);
      break;
    case ICAL_PERIOD_VALUE:
      read = icalvalue_get_period(value).start;
      break;
    case ICAL_DATETIMEPERIOD_VALUE: {
      const icaldatetimeperiodtype either = icalvalue_get_datetimeperiod(value);
      read = icaltime_is_null_time(either.time) ? either.period.start : either.time;
      break;
    }
    case ICAL_TRIGGER_VALUE:
      read = icalvalue_get_trigger(value).time;
      break;
    default:
      return std::nullopt;
  }
  const auto wall = Read_Wall_Time(read);
  if (!wall) return std::nullopt;
  TFile_Time time{*wall, read.is_date != 0, TZone()};
  if (time.Is_Date) return time;
  icalparameter* const tzid = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
  if (icaltime_is_utc(read)) {
    time.Zone = TZone::UTC();
  } else if (tzid && icalparameter_get_tzid(tzid)) {
    const std::string name = Valid_UTF8(icalparameter_get_tzid(tzid));
    if (const TZone* const zone = zones.Find(name)) {
      time.Zone = *zone;
    } else {
      const std::string why = "the time zone \"" + Beginning_Of(name, Most_Of_Name) +
                              "\" is not known; its times were taken as local";
      // Once for a component is enough; its remarks are the last ones, and few but in files made for it.
      constexpr std::ptrdiff_t looked_at = 20;
      const auto end = remarks.rbegin() + std::min<std::ptrdiff_t>(std::ssize(remarks), looked_at);
      if (std::none_of(remarks.rbegin(), end,
                       [&](const auto& it) { return it.What == what && it.Why == why; }))
        remarks.push_back({what, why});
    }
  }
  if (!In_Date_Range(time.Local())) return std::nullopt;
  return time;
}

}  // namespace Plexidex
