#include "Object_Plan.h"

#include <algorithm>

#include "Kt_util_01.h"
#include "Series.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

bool Says_The_Same(const TPlanned_Content& one, const TPlanned_Content& other) {
  const KTReminds::TEvent_Record &a = one.Record, &b = other.Record;
  return a.Title == b.Title && a.Location == b.Location && a.Notes == b.Notes && a.Priority == b.Priority &&
         a.Activity == b.Activity && a.Private == b.Private && a.AllDay == b.AllDay && one.Days == other.Days;
}

class TObject_Planner {
 public:
  TObject_Planner(TZones& zones, TDateTime until, TImport_Budget& budget, TPlanned_Object& object,
                  TImport_Report& report)
      : zones(zones), until(until), budget(budget), object(object), report(report) {}

  void Plan(std::vector<TComponent>& components) {
    first = components.data();
    for (TComponent& component : components) {
      Read_Component(component, zones, report.Left_Out);
      for (const TDateTime done : component.Done) object.Done.insert(To_Msecs(done));
    }
    for (TComponent& component : components) {
      if (!component.Has_Recurrence_Id) Prefer_Newer(master, component);
    }
    if (master && master->Cancelled) {
      for (const TComponent& component : components) {
        if (&component == master) Unused(component, "is cancelled");
        if (component.Has_Recurrence_Id) Unused(component, "belongs to a cancelled entry");
      }
      object.Withdrawn = true;
      return;
    }
    if (master && !Has_Date(*master)) master = nullptr;
    if (master) {
      for (TComponent& component : components) {
        if (component.Has_Recurrence_Id) {
          Prefer_Newer(overrides[To_Msecs(Named_Occurrence(*master, component.Recurrence_Id))], component);
        }
      }
      if (Plan_Master()) return;
    }
    for (TComponent& component : components) {
      if (component.Has_Recurrence_Id) Plan_Alone(component);
    }
  }

 private:
  void Unused(const TComponent& component, const std::string& why) {
    report.Unused.push_back({component.What, why});
  }
  void Remark(const std::string& why) { report.Left_Out.push_back({master->What, why}); }
  // Only the first day of what would have been too much is left.
  void Cut(const TComponent& component, TPlanned_Event& event, const std::string& why) {
    event.Days = 1;
    object.Cut = true;
    report.Left_Out.push_back(
        {component.What, why + "; only its first date was written; " + budget.How_To_Raise});
  }

  bool Has_Date(const TComponent& component) {
    if (component.Is_Task() || component.Has_Start) return true;
    Unused(component, "has no start");
    return false;
  }

  // Of several versions the one of the highest sequence counts, and of equal ones the last.
  void Prefer_Newer(TComponent*& best, TComponent& candidate) {
    if (best && best->Sequence > candidate.Sequence) {
      Unused(candidate, "another version of it counts");
      return;
    }
    if (best) Unused(*best, "another version of it counts");
    best = &candidate;
  }

  int Part_Of(const TComponent& component) const { return static_cast<int>(&component - first); }

  TPlanned_Event Event_Of(const TComponent& component) const {
    if (!component.Is_Task() && !component.Start.Is_Date && component.End > component.Start.Local())
      ++report.Ends;
    TPlanned_Event event;
    event.Part = Part_Of(component);
    static_cast<TPlanned_Content&>(event) = component.Content;
    return event;
  }

  // A task's dates are those of its start, but it is due later.
  static TDateTime Shown_On(const TComponent& component, TDateTime date) {
    return component.Is_Task() ? static_cast<TDateTime>(Whole_Day(date) + component.Content.Lead_Days) : date;
  }

  void Plan_Alone(const TComponent& component) {
    if (component.Cancelled)
      return Unused(component, "cancels a date of an entry that the file does not hold");
    if (!Has_Date(component)) return;
    TPlanned_Event event = Event_Of(component);
    event.Dates = {Shown_On(component, component.Start.Local())};
    event.Named = {component.Has_Recurrence_Id && master ? Named_Occurrence(*master, component.Recurrence_Id)
                                                         : component.Start.Local()};
    try {
      budget.Take_Entries(event.Days);
    } catch (const ELimit_Error& e) {
      Cut(component, event, e.what());
    }
    object.Events.push_back(std::move(event));
  }

  // False when the rule cannot be followed.
  bool Plan_Master() {
    std::set<TMoment> asked;
    for (const TFile_Time& time : master->Excluded)
      excluded.insert(To_Msecs(Named_Occurrence(*master, time)));
    asked = excluded;
    for (const auto& [moment, component] : overrides) asked.insert(moment);
    try {
      series = Read_Series(*master, until, asked, budget);
    } catch (const ERule_Error& e) {
      Unused(*master, std::string(master->Rules.empty() ? "its time " : "its rule ") + e.what());
      return false;
    }
    if (series.Starts_Only) Remark("its rule gives no date; only its start was written");
    for (const TMoment moment : excluded) {
      if (!series.Met.contains(moment))
        Remark("it excludes " + ISO_DateTime(From_Msecs(moment)) + ", which is none of its dates");
    }
    excluded.insert(series.Excluded.begin(), series.Excluded.end());
    event = Event_Of(*master);
    if (!series.Cut.empty()) Cut(*master, event, series.Cut);
    for (const auto& [moment, component] : overrides) Apply(*component, moment);
    if (series.Is_Set) {
      Plan_Set();
    } else {
      Plan_Dates();
    }
    if (object.Events.empty()) {
      Unused(*master, "all its dates are excluded");
      object.Withdrawn = true;
    }
    return true;
  }

  // Applies an override to one date.
  void Apply(const TComponent& component, TMoment moment) {
    const bool met = series.Met.contains(moment);
    if (component.And_Future) Remark("a change of a date and all later ones was applied to that date only");
    if (component.Cancelled) {
      if (!met) Remark("it cancels " + ISO_DateTime(From_Msecs(moment)) + ", which is none of its dates");
      excluded.insert(moment);
      return;
    }
    if (!Has_Date(component)) return;
    const TDateTime date = component.Start.Local();
    if (!met) {
      Remark("it changes " + ISO_DateTime(From_Msecs(moment)) +
             ", which is none of its dates; the change was written as an entry of its own");
    } else if (series.Is_Set && Says_The_Same(component.Content, master->Content)) {
      excluded.erase(moment);
      event.Changes[moment] = {false, date, component.Content.Alarm, Part_Of(component)};
      return;
    }
    excluded.insert(moment);
    Plan_Alone(component);
  }

  void Plan_Set() {
    event.Record.Pattern = series.Pattern;
    event.Dates = series.Dates;
    std::int64_t left = series.Count;
    for (const TMoment moment : excluded) {
      // An exclusion rule may name dates that the rule does not give.
      if (series.Is_Extra(moment) || event.Changes.contains(moment)) continue;
      event.Changes[moment] = {true, 0, {}, -1};
      if (Is_Date_Of_Rule(moment)) --left;
    }
    event.Extra = Extra_Left();
    if (left > 0 || !event.Extra.empty()) object.Events.push_back(std::move(event));
  }

  bool Is_Date_Of_Rule(TMoment moment) {
    if (series.Met.contains(moment)) return true;
    if (series.Excluded.empty()) return false;
    if (rule_dates.empty()) {
      Walk_Pattern(series.Pattern, series.Dates.front(),
                   [this](TDateTime date) { rule_dates.insert(To_Msecs(date)); });
    }
    return rule_dates.contains(moment);
  }

  void Plan_Dates() {
    bool beyond = false;
    const auto add = [&](TDateTime date) {
      const TDateTime shown = Shown_On(*master, date);
      const bool within = In_Date_Range(shown + static_cast<TDateTime>(event.Days - 1));
      beyond = beyond || !within;
      if (!within) return;
      event.Dates.push_back(shown);
      event.Named.push_back(date);
    };
    for (const TDateTime date : series.Dates) {
      if (!excluded.contains(To_Msecs(date))) add(date);
    }
    for (const TDateTime date : Extra_Left()) add(date);
    if (beyond) Remark("what it has after the year 9999 was left out");
    if (event.Dates.empty()) return;
    if (event.Dates.size() > 1 && !event.Is_Task() && event.Days == 1) {
      Remark((master->Rules.empty() ? "its dates follow no rule"
                                    : "no recurring set has the dates of its rule") +
             std::string("; its ") + std::to_string(event.Dates.size()) +
             " dates were written as single events");
    }
    object.Events.push_back(std::move(event));
  }

  std::vector<TDateTime> Extra_Left() const {
    std::vector<TDateTime> left;
    for (const TDateTime date : series.Extra) {
      if (!excluded.contains(To_Msecs(date))) left.push_back(date);
    }
    return left;
  }

  TZones& zones;
  const TDateTime until;
  TImport_Budget& budget;
  TPlanned_Object& object;
  TImport_Report& report;
  const TComponent* first = nullptr;
  TComponent* master = nullptr;
  std::map<TMoment, TComponent*> overrides;
  std::set<TMoment> excluded, rule_dates;
  TSeries series;
  TPlanned_Event event;
};

}  // namespace

void Plan_Object(std::vector<TComponent>& components, TZones& zones, TDateTime until, TImport_Budget& budget,
                 TPlanned_Object& object, TImport_Report& report) {
  TObject_Planner(zones, until, budget, object, report).Plan(components);
}

}  // namespace Plexidex
