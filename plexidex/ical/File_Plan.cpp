#include "File_Plan.h"

#include <algorithm>
#include <unordered_map>

#include "Component.h"
#include "Kt_util_01.h"
#include "Object_Plan.h"

namespace Plexidex {

namespace {

struct TGroup {
  std::string UID;
  std::vector<TComponent> Components;
};

bool Is_Event_Or_Task(icalcomponent* component) {
  const icalcomponent_kind kind = icalcomponent_isa(component);
  return kind == ICAL_VEVENT_COMPONENT || kind == ICAL_VTODO_COMPONENT;
}

// Components by UID, in the order of the file.
std::vector<TGroup> Group(const TCalendar_File& file, TImport_Report& report) {
  std::vector<TGroup> groups;
  std::unordered_map<std::string, std::size_t> places;
  for (icalcomponent* const component : file.Components()) {
    ++report.Read;
    TComponent identified = Identify(component);
    if (!Is_Event_Or_Task(component)) {
      const char* const kind = icalcomponent_kind_to_string(icalcomponent_isa(component));
      report.Unused.push_back(
          {identified.What, std::string("is neither an event nor a task, but ") +
                                (kind && *kind && *kind != 'X' ? kind : "something unknown")});
      continue;
    }
    const auto [place, is_new] = places.try_emplace(identified.UID, groups.size());
    if (is_new) groups.push_back({identified.UID, {}});
    groups[place->second].Components.push_back(std::move(identified));
  }
  return groups;
}

// Whether the option that ends such rules has a say in what the component becomes.
bool Has_Endless_Rule(std::string_view text) {
  constexpr std::string_view name = "RRULE";
  for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
    const std::string_view line = text.substr(at, text.find('\n', at) - at);
    if (line.find("COUNT=") == std::string_view::npos && line.find("UNTIL=") == std::string_view::npos)
      return true;
  }
  return false;
}

std::string Group_Digest(const TGroup& group, const TPlan_Options& options) {
  std::vector<std::string> texts;
  for (const TComponent& component : group.Components) texts.push_back(Normalised_Text(component.Ical));
  std::sort(texts.begin(), texts.end());
  std::string all;
  for (const std::string& text : texts) all += text;
  if (options.Until_Was_Given && Has_Endless_Rule(all))
    all += std::to_string(Kt_util_01::Whole_Day(options.Until));
  return Digest_Of(all);
}

}  // namespace

std::vector<TPlanned_Object> Plan_File(const TCalendar_File& file, const TPlan_Options& options,
                                       TImport_Budget& budget, TImport_Report& report) {
  std::vector<TGroup> groups = Group(file, report);
  TZones zones(file.Zones());
  if (options.Progress) options.Progress->Set_Max(static_cast<std::int64_t>(groups.size()));
  std::vector<TPlanned_Object> objects;
  std::int64_t passed = 0;
  if (options.Progress) budget.Pulse = [&] { options.Progress->Set_Position(passed); };
  for (TGroup& group : groups) {
    TPlanned_Object object;
    object.UID = group.UID;
    object.Digest = Group_Digest(group, options);
    // What was cut counts as changed as soon as more is allowed.
    const std::string cut = Digest_Of(object.Digest + std::to_string(budget.Most_Entries()));
    if (options.Is_Unchanged &&
        (options.Is_Unchanged(object.UID, object.Digest) || options.Is_Unchanged(object.UID, cut))) {
      report.Unchanged += static_cast<std::int64_t>(group.Components.size());
    } else {
      Plan_Object(group.Components, zones, options.Until, budget, object, report);
      if (object.Cut) object.Digest = cut;
      if (!object.Events.empty() || object.Withdrawn) objects.push_back(std::move(object));
    }
    // What was read of the components is not needed any more.
    group.Components = {};
    if (options.Progress) options.Progress->Set_Position(++passed);
  }
  return objects;
}

}  // namespace Plexidex
