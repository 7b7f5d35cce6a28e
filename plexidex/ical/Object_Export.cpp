#include "Object_Export.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "Kt_util_01.h"
#include "Object_Plan.h"

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
constexpr const char* Rule_Names[] = {"RRULE", "EXRULE", "RDATE", "EXDATE", "RECURRENCE-ID"};

using TWrite = std::function<void(TLine_Writer&)>;

std::string Lines_Of(const TWrite& write) {
  std::ostringstream text;
  TLine_Writer lines(text);
  write(lines);
  return text.str();
}

TKept_Component Contents_Of(const TEvent_Record& record) {
  return TKept_Component(Lines_Of([&](TLine_Writer& lines) {
    lines.Begin("CONTENTS");
    Write_Contents(record, lines);
    lines.End("CONTENTS");
  }));
}

std::string UID_Lines(const std::string& uid) {
  return Lines_Of([&](TLine_Writer& lines) { lines.Text("UID", uid); });
}

bool Same_Pattern(const KTReminds::TRecurrence_Pattern& a, const KTReminds::TRecurrence_Pattern& b) {
  return a.Freq == b.Freq && a.Period == b.Period && a.PeriodDefault == b.PeriodDefault && a.P == b.P &&
         a.Instance == b.Instance && a.Month == b.Month && Whole_Day(a.LastDate) == Whole_Day(b.LastDate);
}

class TObject_Exporter {
 public:
  TObject_Exporter(const TKept_Object& object, TZones& zones) : object(object), zones(zones) {}

  bool Plan() {
    for (const TKept_Component& part : object.Parts) {
      auto text = Read_Component_Text(part.Text(), false, part.Begun());
      if (!text) return false;
      read.push_back(*std::move(text));
      components.push_back(Identify(read.back().Component, object.UID));
      parts.push_back({part, TState::Unplanned});
    }
    TImport_Report told_then;
    Plan_Object(components, zones, object.Until, planned, told_then);
    for (TPlanned_Event& event : planned.Events) {
      if (components[static_cast<std::size_t>(event.Part)].Undated) event.Dates = {object.Imported};
    }
    return true;
  }

  std::string Export(TExport_Report& report) {
    // The overrides last: they depend on what became of the rule.
    for (const bool overrides : {false, true}) {
      for (const TPlanned_Event& event : planned.Events) {
        if (components[Index(event.Part)].Has_Recurrence_Id == overrides) Settle(event);
      }
    }
    bool has_master = false;
    for (std::size_t i = 0; i < parts.size(); ++i)
      has_master = has_master || (parts[i].State == TState::Written && !components[i].Has_Recurrence_Id);
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
      TPart& part = parts[i];
      if (part.State == TState::Dropped) continue;
      if (part.State == TState::Unplanned && (is_rewritten || !has_master || Is_Outdone(i))) continue;
      if (part.State == TState::Written && !components[i].Has_Recurrence_Id && !is_rewritten)
        part.Kept.Add("EXDATE", Moments("EXDATE", excluded, Form_Of(i)));
      text += Finished(part.Kept, object.Parts[i].Text(), report);
    }
    for (TKept_Component& component : further) text += Finished(component, {}, report);
    return text;
  }

 private:
  enum class TState { Unplanned, Written, Dropped };
  struct TPart {
    TKept_Component Kept;
    TState State;
  };
  // How moments are written: as days, in local time, where a zone is named that of the file, or in UTC.
  struct TForm {
    enum class TKind { Day, Local, UTC };
    TKind Kind = TKind::Local;
    std::string Zone = {};
  };

  static std::size_t Index(int part) { return static_cast<std::size_t>(part); }

  // ---- how dates are written -----------------------------------------------------------------------------

  static TForm Days() { return {TForm::TKind::Day}; }

  // That of a time in the line of a property.
  static TForm Form_Of(const TFile_Time& time, const std::string& line) {
    if (time.Is_Date) return Days();
    if (!time.Zone.Is_Local()) return {TForm::TKind::UTC};
    const std::vector<std::string> zones = TKept_Component(line).Zones();
    return {TForm::TKind::Local, zones.empty() ? std::string() : zones.front()};
  }
  TForm Form_Of(std::size_t part) const {
    return Form_Of(components[part].Start, object.Parts[part].Lines("DTSTART"));
  }
  TForm Form_Of(std::size_t part, const TEvent_Record& now) const {
    if (now.AllDay) return Days();
    return components[part].Start.Is_Date ? TForm() : Form_Of(part);
  }

  static std::string Moments(const std::string& name, const std::vector<TDateTime>& dates,
                             const TForm& form) {
    return Lines_Of([&](TLine_Writer& lines) {
      for (const TDateTime date : dates) {
        const TDateTime utc = Local_To_UTC(date);
        // A time that the clock skips is none in UTC.
        if (form.Kind == TForm::TKind::UTC && CompareDates(UTC_To_Local(utc), date) == 0) {
          lines.Raw(name, Moment_Text(utc, false) + "Z");
        } else {
          lines.Moment(form.Zone.empty() ? name : name + ";TZID=\"" + form.Zone + "\"", date,
                       form.Kind == TForm::TKind::Day);
        }
      }
    });
  }

  // Whether an override that counted before this other version of it is gone.
  bool Is_Outdone(std::size_t part) const {
    if (!components[part].Has_Recurrence_Id) return false;
    const std::int64_t moment = To_Msecs(components[part].Recurrence_Id.Local());
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (parts[i].State == TState::Dropped && components[i].Has_Recurrence_Id &&
          To_Msecs(components[i].Recurrence_Id.Local()) == moment)
        return true;
    }
    return false;
  }

  // ---- what was changed of a component -------------------------------------------------------------------

  static void Take_Contents(TKept_Component& kept, const TEvent_Record& then, const TEvent_Record& now) {
    const TKept_Component was = Contents_Of(then), is = Contents_Of(now);
    for (const char* name : Content_Names) {
      if (was.Lines(name) != is.Lines(name)) kept.Replace(name, is.Lines(name));
    }
  }

  void Take_Alarm(TKept_Component& kept, std::size_t part, const TEvent_Record& now, const TAlarm& then,
                  TAlarm alarm) const {
    if (Tell_The_Same(then, alarm)) return;
    // Ours hang on the midnight of the day on which a task is due, but a file may give it a time.
    const TComponent& component = components[part];
    if (component.Is_Task() && !component.Due.Is_Date)
      alarm.Offset += static_cast<int>(Msec_Of_Day(component.Due.Local()) / 60'000);
    kept.Replace("VALARM", Lines_Of([&](TLine_Writer& lines) { Write_Alarm(now, alarm, lines); }));
  }

  // The same where the dates are others than before: an alarm may hang on a moment that is no more.
  void Take_Alarm_Anew(TKept_Component& kept, std::size_t part, const TEvent_Record& now,
                       const TAlarm& alarm) const {
    const TKept_Component own(kept.Text());
    const auto changed = Read_Component_Text(own.Text(), false, own.Begun());
    TAlarm then;
    if (changed) {
      TComponent component = Identify(changed->Component, object.UID);
      std::vector<TImport_Remark> ignored;
      Read_Component(component, zones, ignored);
      then = component.Content.Alarm;
    }
    Take_Alarm(kept, part, now, then, alarm);
  }

  void Take_Done(TKept_Component& kept, const std::vector<const TStored_Occurrence*>& occurrences,
                 bool are_days) const {
    std::vector<TDateTime> then, now;
    for (const TStored_Occurrence* occurrence : occurrences) {
      if (planned.Done.contains(To_Msecs(occurrence->EventDate))) then.push_back(occurrence->EventDate);
      if (occurrence->Actioned) now.push_back(occurrence->EventDate);
    }
    if (then == now) return;
    kept.Replace("X-PLEXIDEX-DONE", Lines_Of([&](TLine_Writer& lines) { Write_Done(now, are_days, lines); }));
  }

  // The end keeps its distance from the start.
  void Take_Start(TKept_Component& kept, std::size_t part, bool all_day, TDateTime start, const TForm& form,
                  int days = 1) const {
    const TComponent& component = components[part];
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

  static TDateTime On_Day(TDateTime day, const TFile_Time& time) {
    return time.Is_Date ? day : From_Msecs(Whole_Day(day) * Msecs_Per_Day + Msec_Of_Day(time.Local()));
  }

  void Take_Dates(TKept_Component& kept, std::size_t part, const TStored_Event& now) {
    const TEvent_Record& record = now.Record;
    const TDateTime date = now.Occurrences.front().EventDate;
    if (components[part].Is_Task()) {
      const TComponent& task = components[part];
      const std::string due = object.Parts[part].Lines("DUE");
      kept.Replace("DUE", Moments("DUE", {On_Day(date, task.Due)}, Form_Of(task.Due, due)));
      kept.Remove("DURATION");
      if (kept.Has("DTSTART") || Whole_Day(record.FirstDate) != Whole_Day(date))
        kept.Replace("DTSTART", Moments("DTSTART", {On_Day(record.FirstDate, task.Start)}, Form_Of(part)));
    } else if (const int days = Days_In_A_Row(now); days > 0) {
      Take_Start(kept, part, record.AllDay, date, Form_Of(part, record), days);
    } else {
      Take_Rule(kept, part, now);
    }
  }

  // How many days an event covers that is nothing but these days, with one alarm at its beginning; 0 for a
  // recurring one.
  static int Days_In_A_Row(const TStored_Event& event) {
    const auto& dates = event.Occurrences;
    if (dates.size() == 1) return 1;
    if (!event.Record.AllDay || event.Record.Pattern.Freq != KTReminds::TFrequency::Daily) return 0;
    for (std::size_t i = 1; i < dates.size(); ++i) {
      if (dates[i].Alarm.On || Whole_Day(dates[i].EventDate) != Whole_Day(dates[i - 1].EventDate) + 1)
        return 0;
    }
    return static_cast<int>(dates.size());
  }

  // The dates of a set by a rule of our own, in local time; further components where one rule is not enough.
  void Take_Rule(TKept_Component& kept, std::size_t part, const TStored_Event& now) {
    TExport_Report ignored;
    const auto own =
        Split_Components(Lines_Of([&](TLine_Writer& lines) { Write_Components(now, lines, ignored); }));
    const auto take = [&](TKept_Component& to, const TKept_Component& from) {
      const std::string line = from.Lines("DTSTART");
      const std::size_t value = line.find(':') + 1;
      const auto start =
          Read_Wall_Time(icaltime_from_string(line.substr(value, line.find('\r') - value).c_str()));
      const bool all_day = now.Record.AllDay;
      Take_Start(to, part, all_day, start.value_or(now.Record.FirstDate), all_day ? Days() : TForm());
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

  // ---- what became of the events of a component
  // ------------------------------------------------------------

  void Settle(const TPlanned_Event& event) {
    const auto& now = object.Events[Index(event.Part)];
    TPart& part = parts[Index(event.Part)];
    part.State = now.empty() ? TState::Dropped : TState::Written;
    if (event.Is_Set()) {
      Settle_Set(event, now);
    } else if (event.Dates.size() > 1) {
      Settle_List(event, now);
    } else if (!now.empty()) {
      Settle_Single(event, now.front());
    } else if (components[Index(event.Part)].Has_Recurrence_Id) {
      excluded.push_back(event.Named.front());
    }
  }

  void Settle_Single(const TPlanned_Event& event, const TStored_Event& now) {
    const std::size_t index = Index(event.Part);
    TKept_Component& kept = parts[index].Kept;
    Take_Contents(kept, event.Record, now.Record);
    const int days = Days_In_A_Row(now);
    const TAlarm alarm = days > 1 ? now.Occurrences.front().Alarm : Usual_Alarm(now);
    if (Is_At(event, 0, now)) {
      Take_Alarm(kept, index, now.Record, event.Alarm, alarm);
    } else {
      Take_Dates(kept, index, now);
      Take_Alarm_Anew(kept, index, now.Record, alarm);
    }
    if (days > 0 && !event.Is_Task()) Take_Done(kept, All_Of(now), now.Record.AllDay);
    if (!is_rewritten || !components[index].Has_Recurrence_Id) return;
    kept.Remove("RECURRENCE-ID");
    kept.Replace("UID", UID_Lines(now.Record.Key));
  }

  static std::vector<const TStored_Occurrence*> All_Of(const TStored_Event& event) {
    std::vector<const TStored_Occurrence*> all;
    for (const TStored_Occurrence& occurrence : event.Occurrences) all.push_back(&occurrence);
    return all;
  }

  // Whether a single event stands where one of the planned dates put it.
  static bool Is_At(const TPlanned_Event& event, std::size_t date, const TStored_Event& now) {
    if (now.Occurrences.size() != static_cast<std::size_t>(event.Days) || Days_In_A_Row(now) == 0)
      return false;
    if (now.Record.AllDay != event.Record.AllDay) return false;
    if (event.Is_Task() && Whole_Day(now.Record.FirstDate) != Whole_Day(event.Dates[date]) - event.Lead_Days)
      return false;
    for (int day = 0; day < event.Days; ++day) {
      if (To_Msecs(now.Occurrences[Index(day)].EventDate) != To_Msecs(event.Dates[date] + day)) return false;
    }
    return true;
  }

  void Settle_List(const TPlanned_Event& event, const std::vector<TStored_Event>& events) {
    const std::size_t index = Index(event.Part);
    std::multimap<std::int64_t, std::size_t> free;
    for (std::size_t i = 0; i < event.Dates.size(); ++i) free.emplace(To_Msecs(event.Dates[i]), i);
    std::vector<const TStored_Occurrence*> as_planned;
    bool any = false;
    for (const TStored_Event& now : events) {
      const auto found = free.find(To_Msecs(now.Occurrences.front().EventDate));
      const bool is_there = found != free.end() && Is_At(event, found->second, now);
      if (is_there) any = true;
      if (is_there && Says_The_Same(event, now)) {
        for (const TStored_Occurrence* occurrence : All_Of(now)) as_planned.push_back(occurrence);
      } else {
        TKept_Component other = Single_Of(index, event, now, now.Occurrences.front());
        if (is_there) {
          other.Add("RECURRENCE-ID", Moments("RECURRENCE-ID", {event.Named[found->second]}, Form_Of(index)));
        } else {
          TStored_Event own = now;
          own.UID = now.Record.Key;
          Take_Dates(other, index, own);
          Take_Alarm_Anew(other, index, own.Record, Usual_Alarm(own));
          other.Replace("UID", UID_Lines(own.UID));
        }
        further.push_back(std::move(other));
      }
      if (is_there) free.erase(found);
    }
    for (const auto& [moment, date] : free) excluded.push_back(event.Named[date]);
    std::sort(excluded.begin(), excluded.end());
    if (!any) parts[index].State = TState::Dropped;
    if (!event.Is_Task()) Take_Done(parts[index].Kept, as_planned, event.Record.AllDay);
  }

  static bool Says_The_Same(const TPlanned_Event& event, const TStored_Event& now) {
    return Contents_Of(event.Record).Text() == Contents_Of(now.Record).Text() &&
           Tell_The_Same(event.Alarm, now.Occurrences.front().Alarm);
  }

  // A component for one occurrence, at the date that it has now.
  TKept_Component Single_Of(std::size_t part, const TPlanned_Event& event, const TStored_Event& now,
                            const TStored_Occurrence& occurrence) {
    TKept_Component single = object.Parts[part];
    for (const char* name : Rule_Names) single.Remove(name);
    Take_Contents(single, event.Record, now.Record);
    if (event.Is_Task()) {
      Take_Dates(single, part, now);
      Take_Alarm_Anew(single, part, now.Record, occurrence.Alarm);
      return single;
    }
    Take_Start(single, part, now.Record.AllDay, occurrence.EventDate, Form_Of(part, now.Record), event.Days);
    Take_Alarm_Anew(single, part, now.Record, occurrence.Alarm);
    std::vector<TDateTime> done;
    for (const TStored_Occurrence* one : All_Of(now)) {
      if (one->Actioned && (one == &occurrence || !event.Is_Set())) done.push_back(one->EventDate);
    }
    single.Replace("X-PLEXIDEX-DONE",
                   Lines_Of([&](TLine_Writer& lines) { Write_Done(done, now.Record.AllDay, lines); }));
    return single;
  }

  void Settle_Set(const TPlanned_Event& event, const std::vector<TStored_Event>& events) {
    const std::size_t index = Index(event.Part);
    std::vector<TPlanned_Occurrence> then = event.Occurrences();
    const auto drop_changes = [&] {
      for (const TPlanned_Occurrence& occurrence : then) {
        if (occurrence.Part >= 0) parts[Index(occurrence.Part)].State = TState::Dropped;
      }
    };
    if (events.empty()) return drop_changes();
    const TStored_Event& now = events.front();
    const TAlarm usual = Usual_Alarm(now);
    TKept_Component& kept = parts[index].Kept;
    Take_Contents(kept, event.Record, now.Record);
    if (!Same_Pattern(event.Record.Pattern, now.Record.Pattern) || event.Record.AllDay != now.Record.AllDay ||
        To_Msecs(event.Dates.front()) != To_Msecs(now.Record.FirstDate)) {
      is_rewritten = true;
      drop_changes();
      Take_Rule(kept, index, now);
      Take_Alarm_Anew(kept, index, now.Record, usual);
      return;
    }
    Take_Alarm(kept, index, now.Record, event.Alarm, usual);
    std::stable_sort(then.begin(), then.end(), [](const auto& a, const auto& b) { return a.Date < b.Date; });
    std::vector<TDateTime> added;
    std::vector<const TStored_Occurrence*> of_rule;
    auto old = then.begin();
    const auto lose = [&] {
      excluded.push_back(old->Named);
      if (old->Part >= 0) parts[Index(old->Part)].State = TState::Dropped;
      ++old;
    };
    for (const TStored_Occurrence& occurrence : now.Occurrences) {
      while (old != then.end() && CompareDates(old->Date, occurrence.EventDate) < 0) lose();
      if (old != then.end() && CompareDates(old->Date, occurrence.EventDate) == 0) {
        Settle_Occurrence(event, now, *old, occurrence, usual);
        ++old;
      } else if (event.Changes.contains(To_Msecs(occurrence.EventDate)) ||
                 (&occurrence != &now.Occurrences.front() &&
                  CompareDates((&occurrence)[-1].EventDate, occurrence.EventDate) == 0) ||
                 !Tell_The_Same(occurrence.Alarm, usual)) {
        // A date that the rule excludes, or has already, is none that could be added to it.
        TKept_Component other = Single_Of(index, event, now, occurrence);
        other.Replace("UID", UID_Lines(occurrence.Key));
        further.push_back(std::move(other));
        continue;
      } else {
        added.push_back(occurrence.EventDate);
      }
      of_rule.push_back(&occurrence);
    }
    while (old != then.end()) lose();
    kept.Add("RDATE", Moments("RDATE", added, Form_Of(index)));
    Take_Done(kept, of_rule, now.Record.AllDay);
  }

  void Settle_Occurrence(const TPlanned_Event& event, const TStored_Event& now,
                         const TPlanned_Occurrence& then, const TStored_Occurrence& occurrence,
                         const TAlarm& usual) {
    if (then.Part >= 0) {
      TPart& change = parts[Index(then.Part)];
      change.State = TState::Written;
      Take_Contents(change.Kept, event.Record, now.Record);
      Take_Alarm(change.Kept, Index(then.Part), now.Record, then.Alarm, occurrence.Alarm);
    } else if (!Tell_The_Same(occurrence.Alarm, usual)) {
      TKept_Component other = Single_Of(Index(event.Part), event, now, occurrence);
      other.Add("RECURRENCE-ID", Moments("RECURRENCE-ID", {then.Named}, Form_Of(Index(event.Part))));
      further.push_back(std::move(other));
    }
  }

  // ---- the end
  // ---------------------------------------------------------------------------------------------

  std::string Finished(TKept_Component& kept, const std::string& as_it_came, TExport_Report& report) const {
    if (!kept.Has("RECURRENCE-ID"))
      ++(kept.Kind() == "VTODO" ? report.Tasks
         : kept.Has("RRULE")    ? report.Rules
         : kept.Has("RDATE")    ? report.Dates
                                : report.Events);
    if (kept.Text() != as_it_came) {
      const std::string now = Time_Stamp();
      for (const std::string name : {"DTSTAMP", "LAST-MODIFIED"}) {
        if (name == "DTSTAMP" || kept.Has(name)) kept.Replace(name, name + ":" + now + "\r\n");
      }
    }
    if (!kept.Has("UID")) kept.Add("UID", UID_Lines(object.UID));
    return kept.Text();
  }

  const TKept_Object& object;
  TZones& zones;
  std::vector<TRead_Component> read;
  std::vector<TComponent> components;
  TPlanned_Object planned;
  std::vector<TPart> parts;
  std::vector<TKept_Component> further;
  std::vector<TDateTime> excluded;
  bool is_rewritten = false;  // the rule was given up for one of our own
};

}  // namespace

std::optional<std::string> Export_Object(const TKept_Object& object, TZones& zones, TExport_Report& report) {
  TObject_Exporter exporter(object, zones);
  if (!exporter.Plan()) return std::nullopt;
  return exporter.Export(report);
}

}  // namespace Plexidex
