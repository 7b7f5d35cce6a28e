#include "Kept_Changes.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::TAlarm;
using KTReminds::TEvent_Record;

namespace {

constexpr const char* Content_Names[] = {"SUMMARY",
                                         "LOCATION",
                                         "DESCRIPTION",
                                         "PRIORITY",
                                         "CLASS",
                                         "X-PLEXIDEX-ACTIVITY",
                                         "STATUS",
                                         "COMPLETED",
                                         "X-PLEXIDEX-STARTED",
                                         "X-PLEXIDEX-STATUS",
                                         "X-PLEXIDEX-BUDGET",
                                         "PERCENT-COMPLETE",
                                         "X-PLEXIDEX-WORKED"};

// What says the same in another form, and would go on saying what was changed.
constexpr std::pair<std::string_view, std::string_view> Other_Forms[] = {{"DESCRIPTION", "X-ALT-DESC"},
                                                                         {"LOCATION", "GEO"}};

TKept_Component Contents_Of(const TEvent_Record& record) {
  return TKept_Component(Lines_Of([&](TLine_Writer& lines) {
    lines.Begin("CONTENTS");
    Write_Contents(record, lines);
    lines.End("CONTENTS");
  }));
}

TMoment_Form Days() {
  return {TMoment_Form::TKind::Day};
}

// That of a time in the line of a property.
TMoment_Form Form_Of_Time(const TFile_Time& time, const std::string& line) {
  if (time.Is_Date) return Days();
  if (!time.Zone.Is_Local()) return {TMoment_Form::TKind::UTC};
  const std::vector<std::string> zones = TKept_Component(line).Zones();
  return {TMoment_Form::TKind::Local, zones.empty() ? std::string() : zones.front()};
}

TDateTime On_Day(TDateTime day, const TFile_Time& time) {
  return time.Is_Date ? day : From_Msecs(Whole_Day(day) * Msecs_Per_Day + Msec_Of_Day(time.Local()));
}

}  // namespace

std::string Lines_Of(const std::function<void(TLine_Writer&)>& write) {
  std::ostringstream text;
  TLine_Writer lines(text);
  write(lines);
  return text.str();
}

std::string UID_Lines(const std::string& uid) {
  return Lines_Of([&](TLine_Writer& lines) { lines.Text("UID", uid); });
}

std::string Moments(const std::string& name, const std::vector<TDateTime>& dates, const TMoment_Form& form) {
  return Lines_Of([&](TLine_Writer& lines) {
    for (const TDateTime date : dates) {
      const TDateTime utc = Local_To_UTC(date);
      // A time that the clock skips is none in UTC.
      if (form.Kind == TMoment_Form::TKind::UTC && CompareDates(UTC_To_Local(utc), date) == 0) {
        lines.Raw(name, Moment_Text(utc, false) + "Z");
      } else {
        lines.Moment(form.Zone.empty() ? name : name + ";TZID=\"" + form.Zone + "\"", date,
                     form.Kind == TMoment_Form::TKind::Day);
      }
    }
  });
}

bool Same_Contents(const TEvent_Record& one, const TEvent_Record& other) {
  return Contents_Of(one).Text() == Contents_Of(other).Text();
}

int Days_In_A_Row(const TStored_Event& event) {
  const auto& dates = event.Occurrences;
  if (dates.size() == 1) return 1;
  if (!event.Record.AllDay || event.Record.Pattern.Freq != KTReminds::TFrequency::Daily) return 0;
  for (std::size_t i = 1; i < dates.size(); ++i) {
    if (dates[i].Alarm.On || Whole_Day(dates[i].EventDate) != Whole_Day(dates[i - 1].EventDate) + 1) return 0;
  }
  return static_cast<int>(dates.size());
}

std::vector<const TStored_Occurrence*> All_Of(const TStored_Event& event) {
  std::vector<const TStored_Occurrence*> all;
  for (const TStored_Occurrence& occurrence : event.Occurrences) all.push_back(&occurrence);
  return all;
}

TMoment_Form TKept_Changes::Form_Of(std::size_t part) const {
  return Form_Of_Time(source.Components[part].Start, source.Object.Parts[part].Lines("DTSTART"));
}

TMoment_Form TKept_Changes::Form_Of(std::size_t part, const TEvent_Record& now) const {
  if (now.AllDay) return Days();
  return source.Components[part].Start.Is_Date ? TMoment_Form() : Form_Of(part);
}

void TKept_Changes::Contents(TKept_Component& kept, const TEvent_Record& then,
                             const TEvent_Record& now) const {
  const TKept_Component was = Contents_Of(then), is = Contents_Of(now);
  for (const char* name : Content_Names) {
    if (was.Lines(name) == is.Lines(name)) continue;
    kept.Replace(name, is.Lines(name));
    for (const auto& [changed, other] : Other_Forms) {
      if (changed == name) kept.Remove(other);
    }
  }
}

void TKept_Changes::Alarm(TKept_Component& kept, std::size_t part, const TEvent_Record& now,
                          const TAlarm& then, TAlarm alarm) const {
  if (Tell_The_Same(then, alarm)) return;
  // Ours hang on the midnight of the day on which a task is due, but a file may give it a time.
  const TComponent& component = source.Components[part];
  if (component.Is_Task() && !component.Due.Is_Date)
    alarm.Offset += static_cast<int>(Msec_Of_Day(component.Due.Local()) / 60'000);
  kept.Replace("VALARM", Lines_Of([&](TLine_Writer& lines) { Write_Alarm(now, alarm, lines); }));
}

void TKept_Changes::Alarm_Anew(TKept_Component& kept, std::size_t part, const TEvent_Record& now,
                               const TAlarm& alarm) const {
  const TKept_Component own(kept.Text());
  const auto changed = Read_Component_Text(own.Text(), false, own.Begun());
  TAlarm then;
  if (changed) {
    TComponent component = Identify(changed->Component, source.Object.UID);
    std::vector<TImport_Remark> ignored;
    Read_Component(component, source.Zones, ignored);
    then = component.Content.Alarm;
  }
  Alarm(kept, part, now, then, alarm);
}

void TKept_Changes::Done(TKept_Component& kept, const std::vector<const TStored_Occurrence*>& occurrences,
                         bool are_days) const {
  std::vector<TDateTime> then, now;
  for (const TStored_Occurrence* occurrence : occurrences) {
    if (source.Done.contains(To_Msecs(occurrence->EventDate))) then.push_back(occurrence->EventDate);
    if (occurrence->Actioned) now.push_back(occurrence->EventDate);
  }
  if (then == now) return;
  kept.Replace("X-PLEXIDEX-DONE", Lines_Of([&](TLine_Writer& lines) { Write_Done(now, are_days, lines); }));
}

void TKept_Changes::Start(TKept_Component& kept, std::size_t part, bool all_day, TDateTime start,
                          const TMoment_Form& form, int days) const {
  const TComponent& component = source.Components[part];
  kept.Replace("DTSTART", Moments("DTSTART", {start}, form));
  const bool had_end = kept.Has("DTEND") || kept.Has("DURATION");
  if (all_day || component.Start.Is_Date) kept.Remove("DURATION");
  if (all_day) {
    kept.Replace("DTEND", had_end || days > 1 ? Moments("DTEND", {start + days}, form) : std::string());
  } else if (component.Start.Is_Date) {
    kept.Remove("DTEND");
  } else if (kept.Has("DTEND")) {
    const TDateTime length = component.End - component.Start.Local();
    kept.Replace("DTEND", Moments("DTEND", {From_Msecs(To_Msecs(start) + To_Msecs(length))}, form));
  }
}

void TKept_Changes::Dates(TKept_Component& kept, std::size_t part, const TStored_Event& now,
                          std::vector<TKept_Component>& further) const {
  const TEvent_Record& record = now.Record;
  const TDateTime date = now.Occurrences.front().EventDate;
  if (source.Components[part].Is_Task()) {
    const TComponent& task = source.Components[part];
    const std::string due = source.Object.Parts[part].Lines("DUE");
    kept.Replace("DUE", Moments("DUE", {On_Day(date, task.Due)}, Form_Of_Time(task.Due, due)));
    kept.Remove("DURATION");
    if (kept.Has("DTSTART") || Whole_Day(record.FirstDate) != Whole_Day(date))
      kept.Replace("DTSTART", Moments("DTSTART", {On_Day(record.FirstDate, task.Start)}, Form_Of(part)));
  } else if (const int days = Days_In_A_Row(now); days > 0) {
    Start(kept, part, record.AllDay, date, Form_Of(part, record), days);
  } else {
    Rule(kept, part, now, further);
  }
}

void TKept_Changes::Rule(TKept_Component& kept, std::size_t part, const TStored_Event& now,
                         std::vector<TKept_Component>& further) const {
  TExport_Report ignored;
  const auto own =
      Split_Components(Lines_Of([&](TLine_Writer& lines) { Write_Components(now, lines, ignored); }));
  const auto take = [&](TKept_Component& to, const TKept_Component& from) {
    const std::string line = from.Lines("DTSTART");
    const std::size_t value = line.find(':') + 1;
    const auto start =
        Read_Wall_Time(icaltime_from_string(line.substr(value, line.find('\r') - value).c_str()));
    const bool all_day = now.Record.AllDay;
    Start(to, part, all_day, start.value_or(now.Record.FirstDate), all_day ? Days() : TMoment_Form());
    for (const char* name : Rule_Names) to.Replace(name, from.Lines(name));
    to.Replace("X-PLEXIDEX-DONE", from.Lines("X-PLEXIDEX-DONE"));
  };
  for (std::size_t i = 1; i < own.size(); ++i) {
    TKept_Component other = kept;
    take(other, own[i]);
    other.Replace("UID", own[i].Lines("UID"));
    other.Replace("VALARM", own[i].Lines("VALARM"));
    further.push_back(std::move(other));
  }
  take(kept, own.front());
}

}  // namespace Plexidex
