#include "Object_Export.h"

#include <algorithm>
#include <limits>
#include <map>

#include "Kept_Changes.h"
#include "Kt_util_01.h"
#include "Object_Plan.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::TAlarm;
using KTReminds::TEvent_Record;

namespace {

bool Same_Pattern(const KTReminds::TRecurrence_Pattern& a, const KTReminds::TRecurrence_Pattern& b) {
  return a.Freq == b.Freq && a.Period == b.Period && a.PeriodDefault == b.PeriodDefault && a.P == b.P &&
         a.Instance == b.Instance && a.Month == b.Month && Whole_Day(a.LastDate) == Whole_Day(b.LastDate);
}

class TObject_Exporter {
 public:
  TObject_Exporter(const TKept_Object& object, TZones& zones)
      : object(object), zones(zones), change({object, components, planned.Done, zones}) {}

  bool Plan() {
    for (const TKept_Component& part : object.Parts) {
      auto text = Read_Component_Text(part.Text(), false, part.Begun());
      if (!text) return false;
      read.push_back(*std::move(text));
      components.push_back(Identify(read.back().Component, object.UID));
      parts.push_back({part, TState::Unplanned});
    }
    TImport_Report told_then;
    TImport_Budget budget(object.Cut ? 0 : std::numeric_limits<std::int32_t>::max());
    Plan_Object(components, zones, object.Until, budget, planned, told_then);
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
        part.Kept.Add("EXDATE", Moments("EXDATE", excluded, change.Form_Of(i)));
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
  static std::size_t Index(int part) { return static_cast<std::size_t>(part); }

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
    change.Contents(kept, event.Record, now.Record);
    const int days = Days_In_A_Row(now);
    const TAlarm alarm = days > 1 ? now.Occurrences.front().Alarm : Usual_Alarm(now);
    if (Is_At(event, 0, now)) {
      change.Alarm(kept, index, now.Record, event.Alarm, alarm);
    } else {
      change.Dates(kept, index, now, further);
      change.Alarm_Anew(kept, index, now.Record, alarm);
    }
    if (days > 0 && !event.Is_Task()) change.Done(kept, All_Of(now), now.Record.AllDay);
    if (!is_rewritten || !components[index].Has_Recurrence_Id) return;
    kept.Remove("RECURRENCE-ID");
    kept.Replace("UID", UID_Lines(now.Record.Key));
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
          other.Add("RECURRENCE-ID",
                    Moments("RECURRENCE-ID", {event.Named[found->second]}, change.Form_Of(index)));
        } else {
          TStored_Event own = now;
          own.UID = now.Record.Key;
          change.Dates(other, index, own, further);
          change.Alarm_Anew(other, index, own.Record, Usual_Alarm(own));
          other.Replace("UID", UID_Lines(own.UID));
        }
        further.push_back(std::move(other));
      }
      if (is_there) free.erase(found);
    }
    for (const auto& [moment, date] : free) excluded.push_back(event.Named[date]);
    std::sort(excluded.begin(), excluded.end());
    if (!any) parts[index].State = TState::Dropped;
    if (!event.Is_Task()) change.Done(parts[index].Kept, as_planned, event.Record.AllDay);
  }

  static bool Says_The_Same(const TPlanned_Event& event, const TStored_Event& now) {
    return Same_Contents(event.Record, now.Record) &&
           Tell_The_Same(event.Alarm, now.Occurrences.front().Alarm);
  }

  // A component for one occurrence, at the date that it has now.
  TKept_Component Single_Of(std::size_t part, const TPlanned_Event& event, const TStored_Event& now,
                            const TStored_Occurrence& occurrence) {
    TKept_Component single = object.Parts[part];
    for (const char* name : Rule_Names) single.Remove(name);
    change.Contents(single, event.Record, now.Record);
    if (event.Is_Task()) {
      change.Dates(single, part, now, further);
      change.Alarm_Anew(single, part, now.Record, occurrence.Alarm);
      return single;
    }
    change.Start(single, part, now.Record.AllDay, occurrence.EventDate, change.Form_Of(part, now.Record),
                 event.Days);
    change.Alarm_Anew(single, part, now.Record, occurrence.Alarm);
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
    change.Contents(kept, event.Record, now.Record);
    if (!Same_Pattern(event.Record.Pattern, now.Record.Pattern) || event.Record.AllDay != now.Record.AllDay ||
        To_Msecs(event.Dates.front()) != To_Msecs(now.Record.FirstDate)) {
      is_rewritten = true;
      drop_changes();
      change.Rule(kept, index, now, further);
      change.Alarm_Anew(kept, index, now.Record, usual);
      return;
    }
    change.Alarm(kept, index, now.Record, event.Alarm, usual);
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
    kept.Add("RDATE", Moments("RDATE", added, change.Form_Of(index)));
    change.Done(kept, of_rule, now.Record.AllDay);
  }

  void Settle_Occurrence(const TPlanned_Event& event, const TStored_Event& now,
                         const TPlanned_Occurrence& then, const TStored_Occurrence& occurrence,
                         const TAlarm& usual) {
    if (then.Part >= 0) {
      TPart& part = parts[Index(then.Part)];
      part.State = TState::Written;
      change.Contents(part.Kept, event.Record, now.Record);
      change.Alarm(part.Kept, Index(then.Part), now.Record, then.Alarm, occurrence.Alarm);
    } else if (!Tell_The_Same(occurrence.Alarm, usual)) {
      TKept_Component other = Single_Of(Index(event.Part), event, now, occurrence);
      other.Add("RECURRENCE-ID", Moments("RECURRENCE-ID", {then.Named}, change.Form_Of(Index(event.Part))));
      further.push_back(std::move(other));
    }
  }

  std::string Finished(TKept_Component& kept, const std::string& as_it_came, TExport_Report& report) const {
    if (!kept.Has("RECURRENCE-ID"))
      ++(kept.Kind() == "VTODO" ? report.Tasks
         : kept.Has("RRULE")    ? report.Rules
         : kept.Has("RDATE")    ? report.Dates
                                : report.Events);
    if (kept.Text() != as_it_came) {
      const std::string now = Time_Stamp();
      for (const std::string name : {"DTSTAMP", "LAST-MODIFIED"}) {
        if (name == "DTSTAMP" || kept.Has(name))
          kept.Replace(name, Lines_Of([&](TLine_Writer& lines) { lines.Raw(name, now); }));
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
  const TKept_Changes change;
  bool is_rewritten = false;  // the rule was given up for one of our own
};

}  // namespace

std::optional<std::string> Export_Object(const TKept_Object& object, TZones& zones, TExport_Report& report) {
  TObject_Exporter exporter(object, zones);
  if (!exporter.Plan()) return std::nullopt;
  return exporter.Export(report);
}

}  // namespace Plexidex
