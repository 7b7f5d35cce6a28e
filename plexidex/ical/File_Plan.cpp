#include "File_Plan.h"

#include <algorithm>

#include "Component.h"
#include "Kept_Text.h"
#include "Kt_util_01.h"
#include "Object_Plan.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

// The zones that a file defines, as they are kept.
struct TKept_Zone {
  std::string Digest, Text;
};
using TKept_Zones = std::map<std::string, TKept_Zone>;

TKept_Zones Kept_Zones(const std::vector<TRead_Component>& definitions) {
  TKept_Zones kept;
  for (const TRead_Component& definition : definitions) {
    std::string text = As_Kept(definition.Text);
    TDigest digest;
    digest.Add(text);
    kept.try_emplace(Zone_Name(definition.Component), TKept_Zone{digest.Text(), std::move(text)});
  }
  return kept;
}

void Keep_Text(const std::vector<TRead_Component>& components, const TKept_Zones& zones,
               TPlanned_Object& object) {
  std::string text;
  for (const TRead_Component& read : components) text += As_Kept(read.Text);
  const std::vector<TKept_Component> parts = Split_Components(text);
  // Of a text that cannot be taken apart again nothing is kept.
  if (parts.size() != components.size()) return;
  for (const TKept_Component& part : parts) {
    if (zones.empty()) break;
    for (const std::string& name : part.Zones()) {
      if (const auto zone = zones.find(name); zone != zones.end())
        object.Zones.emplace(zone->second.Digest, zone->second.Text);
    }
  }
  for (const auto& [digest, definition] : object.Zones) object.Text += Zone_Reference(digest);
  object.Text += text;
}

}  // namespace

TFile_Plan::TFile_Plan(const TCalendar_File& file, const TPlan_Options& options, TImport_Budget& budget,
                       TImport_Report& report)
    : file(file), options(options), budget(budget), report(report) {}

std::string TFile_Plan::Digest(const std::vector<const TIndexed_Component*>& components) const {
  std::vector<std::string> texts;
  bool is_endless = false, depends_on_zone = false;
  for (const TIndexed_Component* component : components) {
    texts.push_back(file.Meaning_Of(*component));
    is_endless = is_endless || component->Is_Endless;
    depends_on_zone = depends_on_zone || component->Depends_On_Zone;
  }
  std::sort(texts.begin(), texts.end());
  TDigest digest;
  for (const std::string& text : texts) digest.Add(text);
  if (is_endless && options.Until_Was_Given) digest.Add(std::to_string(Whole_Day(options.Until)));
  if (depends_on_zone) digest.Add(Time_Zone());
  return digest.Text();
}

// What was cut counts as changed as soon as more is allowed.
std::string TFile_Plan::Digest_Of_Cut(const std::string& digest) const {
  TDigest cut;
  cut.Add(digest + std::to_string(budget.Most_Entries()));
  return cut.Text();
}

bool TFile_Plan::Is_Unchanged(const std::string& uid, const std::string& digest,
                              const TIs_Unchanged& is_unchanged) const {
  return is_unchanged && (is_unchanged(uid, digest) || is_unchanged(uid, Digest_Of_Cut(digest)));
}

void TFile_Plan::Show_Objects() const {
  if (options.Progress) options.Progress->Set_Max(static_cast<std::int64_t>(file.Object_Count()));
}

void TFile_Plan::Show(std::size_t object) const {
  if (options.Progress) options.Progress->Set_Position(static_cast<std::int64_t>(object) + 1);
}

bool TFile_Plan::Is_Unchanged(const TIs_Unchanged& is_unchanged) const {
  Show_Objects();
  for (std::size_t i = 0; i < file.Object_Count(); ++i) {
    Show(i);
    const auto components = file.Object(i);
    if (components.front()->Is_Used &&
        !Is_Unchanged(file.UID_Of(*components.front()), Digest(components), is_unchanged))
      return false;
  }
  return true;
}

void TFile_Plan::Run(const TIs_Unchanged& is_unchanged, const std::function<void(TPlanned_Object&)>& take) {
  const std::vector<TRead_Component> definitions = file.Zones();
  const TKept_Zones kept_zones = Kept_Zones(definitions);
  TZones zones(definitions);
  Show_Objects();
  for (std::size_t i = 0; i < file.Object_Count(); ++i) {
    if (options.Progress) budget.Pulse = [this, i] { Show(i); };
    Show(i);
    const auto indexed = file.Object(i);
    report.Read += static_cast<std::int64_t>(indexed.size());
    TPlanned_Object object;
    object.UID = file.UID_Of(*indexed.front());
    object.Digest = Digest(indexed);
    if (indexed.front()->Is_Used && Is_Unchanged(object.UID, object.Digest, is_unchanged)) {
      report.Unchanged += static_cast<std::int64_t>(indexed.size());
      continue;
    }
    std::vector<TRead_Component> read;
    std::vector<TComponent> components;
    for (const TIndexed_Component* component : indexed) {
      read.push_back(file.Read(*component));
      components.push_back(Identify(read.back().Component, object.UID));
    }
    if (!indexed.front()->Is_Used) {
      const char* const kind = icalcomponent_kind_to_string(icalcomponent_isa(read.front().Component));
      report.Unused.push_back(
          {components.front().What, std::string("is neither an event nor a task, but ") +
                                        (kind && *kind && *kind != 'X' ? kind : "something unknown")});
      continue;
    }
    Plan_Object(components, zones, options.Until, budget, object, report);
    if (object.Cut) object.Digest = Digest_Of_Cut(object.Digest);
    Keep_Text(read, kept_zones, object);
    if (!object.Events.empty() || object.Withdrawn) take(object);
  }
}

}  // namespace Plexidex
