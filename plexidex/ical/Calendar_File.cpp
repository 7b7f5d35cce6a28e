#include "Calendar_File.h"

#include <algorithm>
#include <numeric>

namespace Plexidex {

namespace {

// The text with its very long lines folded: libical takes the square of a line's length in time, but not of
// the whole that was folded.
std::string Folded(const std::string& text) {
  constexpr std::size_t long_line = 1U << 14, piece = 70;
  std::string folded;
  folded.reserve(text.size() + text.size() / 16);
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t end = std::min(text.find('\n', position), text.size() - 1) + 1;
    for (const bool is_long = end - position > long_line; is_long && end - position > 2 * piece;
         position += piece) {
      folded.append(text, position, piece);
      folded += "\r\n ";
    }
    folded.append(text, position, end - position);
    position = end;
  }
  return folded;
}

std::size_t Count_Components(icalcomponent* component) {
  std::size_t count = 1;
  for (icalcompiter i = icalcomponent_begin_component(component, ICAL_ANY_COMPONENT); icalcompiter_deref(&i);
       icalcompiter_next(&i)) {
    count += Count_Components(icalcompiter_deref(&i));
  }
  return count;
}

}  // namespace

std::optional<TRead_Component> Read_Component_Text(std::string text, bool cancels, std::size_t begun) {
  icalerror_set_errors_are_fatal(0);
  TRead_Component read;
  read.Calendar.reset(
      icalparser_parse_string((std::string("BEGIN:VCALENDAR\r\n") + (cancels ? "METHOD:CANCEL\r\n" : "") +
                               Folded(text) + "END:VCALENDAR\r\n")
                                  .c_str()));
  icalcomponent* const calendar = read.Calendar.get();
  if (!calendar || icalcomponent_isa(calendar) != ICAL_VCALENDAR_COMPONENT) return std::nullopt;
  read.Component = icalcomponent_get_first_component(calendar, ICAL_ANY_COMPONENT);
  // A line that libical reads in another way than we do could hide what follows it.
  if (!read.Component || icalcomponent_count_components(calendar, ICAL_ANY_COMPONENT) != 1 ||
      icalcomponent_count_properties(calendar, ICAL_ANY_PROPERTY) != (cancels ? 1 : 0) ||
      Count_Components(read.Component) != begun)
    return std::nullopt;
  read.Text = std::move(text);
  return read;
}

TCalendar_File::TCalendar_File(const std::string& file, const TImport_Budget& budget,
                               Kt_data_01::TProgress_Bar* progress)
    : input(file), index(input.Name(), budget) {
  ends_with_return = Read_Lines(input, progress, [this](const TContent_Line& line) { index.Take(line); });
  index.End();
  Group();
}

void TCalendar_File::Group() {
  const std::vector<TIndexed_Component>& all = index.Components;
  order.resize(all.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::tie(all[a].Object, a) < std::tie(all[b].Object, b);
  });
  // Each component's place is that of the first one of its object.
  std::vector<std::uint32_t> first(all.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool same = i > 0 && all[order[i]].Object == all[order[i - 1]].Object;
    first[order[i]] = same ? first[order[i - 1]] : order[i];
  }
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t a, std::uint32_t b) { return std::tie(first[a], a) < std::tie(first[b], b); });
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (first[order[i]] == order[i]) objects.push_back(static_cast<std::uint32_t>(i));
  }
}

std::vector<const TIndexed_Component*> TCalendar_File::Object(std::size_t number) const {
  const std::size_t end = number + 1 < objects.size() ? objects[number + 1] : order.size();
  std::vector<const TIndexed_Component*> components;
  for (std::size_t i = objects[number]; i < end; ++i) components.push_back(&index.Components[order[i]]);
  return components;
}

TRead_Component TCalendar_File::Read(const TIndexed_Component& component) const {
  std::string text = input.Read(component.Offset, component.Length);
  if (ends_with_return) std::replace(text.begin(), text.end(), '\r', '\n');
  if (auto read = Read_Component_Text(std::move(text), index.Cancels[component.Calendar], component.Begun))
    return *std::move(read);
  throw EImport_Error(input.Name() + " is damaged: the component of line " + std::to_string(component.Line) +
                      " cannot be read as it stands.");
}

std::vector<TRead_Component> TCalendar_File::Zones() const {
  std::vector<TRead_Component> zones;
  for (const TIndexed_Component& zone : index.Zones) zones.push_back(Read(zone));
  return zones;
}

}  // namespace Plexidex
