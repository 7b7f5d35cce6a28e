#include "Kept_Text.h"

#include <algorithm>
#include <sstream>

#include "Kt_util_01.h"
#include "Line_Writer.h"

namespace Plexidex {

namespace {

constexpr std::string_view Zone_Line = "X-PLEXIDEX-ZONE:";

// The length of the first line of a text with its continuations and line ends.
std::size_t Line_Length(std::string_view text) {
  for (std::size_t at = 0;;) {
    const auto end = text.find('\n', at);
    if (end == std::string_view::npos) return text.size();
    at = end + 1;
    if (at >= text.size() || (text[at] != ' ' && text[at] != '\t')) return at;
  }
}

std::string Unfolded(std::string_view line) {
  std::string whole;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '\n' || line.substr(at, 2) == "\r\n") continue;
    if (at > 0 && line[at - 1] == '\n') continue;  // the blank that continues it
    whole += line[at];
  }
  return whole;
}

std::string Name_Of(std::string_view line) {
  const std::size_t end = line.find_first_of(":;\n");
  if (end != std::string_view::npos && line[end] != '\n')
    return Kt_util_01::Simple_UpperCase(line.substr(0, end));
  // A name may be folded too.
  const std::string whole = Unfolded(line.substr(0, 200));
  return Kt_util_01::Simple_UpperCase(whole.substr(0, whole.find_first_of(":;")));
}

// "BEGIN" or "END" for a line that begins or ends a component, otherwise "".
std::string Frame_Of(std::string_view line) {
  const std::string name = Name_Of(line);
  if (name != "BEGIN" && name != "END") return {};
  return Unfolded(line.substr(0, 200)).substr(name.size(), 1) == ":" ? name : std::string();
}

std::string Value_Of(std::string_view line) {
  std::string value = Unfolded(line);
  value.erase(0, value.find(':') + 1);
  while (value.ends_with(' ') || value.ends_with('\t')) value.pop_back();
  return Kt_util_01::Simple_UpperCase(value);
}

}  // namespace

TKept_Component::TKept_Component(std::string_view text) {
  int depth = 0;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, Line_Length(text));
    text.remove_prefix(line.size());
    const std::string frame = Frame_Of(line);
    const bool begins = frame == "BEGIN", ends = frame == "END";
    std::string name = frame.empty() ? Name_Of(line) : Value_Of(line);
    if (depth < 2 || (begins && depth == 1)) {
      pieces.push_back({std::move(name), std::string(line)});
    } else {
      pieces.back().Text += line;
    }
    depth += begins ? 1 : ends ? -1 : 0;
    if (begins) ++begun;
  }
}

std::string TKept_Component::Text() const {
  std::string text;
  for (const TPiece& piece : pieces) text += piece.Text;
  return text;
}

bool TKept_Component::Has(std::string_view name) const {
  return std::any_of(pieces.begin() + 1, pieces.end() - 1, [&](const TPiece& p) { return p.Name == name; });
}

std::string TKept_Component::Lines(std::string_view name) const {
  std::string lines;
  for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
    if (pieces[i].Name == name) lines += pieces[i].Text;
  }
  return lines;
}

void TKept_Component::Remove(std::string_view name) {
  pieces.erase(std::remove_if(pieces.begin() + 1, pieces.end() - 1,
                              [&](const TPiece& piece) { return piece.Name == name; }),
               pieces.end() - 1);
}

void TKept_Component::Replace(std::string_view name, std::string_view lines) {
  const auto place = std::find_if(pieces.begin() + 1, pieces.end() - 1,
                                  [&](const TPiece& piece) { return piece.Name == name; });
  if (place == pieces.end() - 1) return Add(name, lines);
  const auto at = place - pieces.begin();
  Remove(name);
  if (!lines.empty()) pieces.insert(pieces.begin() + at, {std::string(name), std::string(lines)});
}

void TKept_Component::Add(std::string_view name, std::string_view lines) {
  if (lines.empty()) return;
  // Components inside it come after its properties.
  const auto place = std::find_if(pieces.begin() + 1, pieces.end() - 1,
                                  [](const TPiece& piece) { return Frame_Of(piece.Text) == "BEGIN"; });
  pieces.insert(Frame_Of(lines) == "BEGIN" ? pieces.end() - 1 : place,
                {std::string(name), std::string(lines)});
}

std::vector<std::string> TKept_Component::Zones() const {
  std::vector<std::string> zones;
  for (const TPiece& piece : pieces) {
    for (std::string_view rest = piece.Text; !rest.empty();) {
      const std::string line = Unfolded(rest.substr(0, std::min<std::size_t>(Line_Length(rest), 1000)));
      rest.remove_prefix(Line_Length(rest));
      const std::string upper = Kt_util_01::Simple_UpperCase(line);
      const auto at = upper.find(";TZID=");
      if (at == std::string::npos || at > upper.find(':')) continue;
      const std::size_t from = at + 6;
      const bool quoted = from < line.size() && line[from] == '"';
      const std::size_t begin = quoted ? from + 1 : from;
      const std::size_t end = quoted ? line.find('"', begin) : line.find_first_of(":;", begin);
      const std::string zone = line.substr(begin, end - begin);
      if (std::find(zones.begin(), zones.end(), zone) == zones.end()) zones.push_back(zone);
    }
  }
  return zones;
}

std::string As_Kept(std::string_view text) {
  const std::string valid = Kt_util_01::Valid_UTF8(text);
  std::ostringstream kept;
  for (std::string_view rest = valid; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    Write_Folded(kept, line);
  }
  return kept.str();
}

std::vector<TKept_Component> Split_Components(std::string_view text) {
  std::vector<TKept_Component> components;
  std::size_t begin = 0, depth = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view line = text.substr(at, Line_Length(text.substr(at)));
    at += line.size();
    const std::string frame = Frame_Of(line);
    if (frame == "BEGIN") ++depth;
    if (frame != "END" || depth == 0 || --depth > 0) continue;
    components.emplace_back(text.substr(begin, at - begin));
    begin = at;
  }
  return components;
}

std::string Zone_Reference(std::string_view digest) {
  return std::string(Zone_Line) + std::string(digest) + "\r\n";
}

std::vector<std::string> Take_Zone_References(std::string_view& text) {
  std::vector<std::string> digests;
  while (text.starts_with(Zone_Line)) {
    const std::size_t length = Line_Length(text);
    digests.emplace_back(text.substr(Zone_Line.size(), length - Zone_Line.size() - 2));
    text.remove_prefix(length);
  }
  return digests;
}

}  // namespace Plexidex
