#include "Calendar_File.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "Kt_util_01.h"

namespace Plexidex {

namespace {

constexpr std::uintmax_t Most_Bytes = 256U << 20;
// How deep components may lie in each other. Alarms lie three deep; libical calls itself for each level.
constexpr std::size_t Most_Open = 32;
constexpr std::string_view Byte_Order_Mark = "\xEF\xBB\xBF";

std::string Read_File(const std::string& file) {
  const std::string name = '"' + file + '"';
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) throw EImport_Error("There is no file " + name + ".");
  if (std::filesystem::is_directory(status)) throw EImport_Error(name + " is a folder, not a calendar file.");
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw EImport_Error(name + " cannot be read: " + std::strerror(errno) + ".");
  std::string text;
  std::vector<char> block(1U << 16);
  while (stream.read(block.data(), static_cast<std::streamsize>(block.size())), stream.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    if (text.size() > Most_Bytes) {
      throw EImport_Error(name + " is larger than " + std::to_string(Most_Bytes >> 20) + " MiB.");
    }
  }
  if (stream.bad()) throw EImport_Error(name + " cannot be read to its end.");
  if (text.starts_with(Byte_Order_Mark)) text.erase(0, Byte_Order_Mark.size());
  // Old programs end a line with a return alone.
  if (text.find('\n') == std::string::npos) std::replace(text.begin(), text.end(), '\r', '\n');
  return text;
}

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

// The content lines of a calendar text, with their continuations, and the number of the line each begins on.
class TContent_Lines {
 public:
  explicit TContent_Lines(std::string_view text) : text(text) {}

  bool Next(std::string& line, std::size_t& number) {
    line.clear();
    if (position >= text.size()) return false;
    number = next_number;
    do {
      const std::size_t end = std::min(text.find('\n', position), text.size());
      std::string_view part = text.substr(position, end - position);
      if (part.ends_with('\r')) part.remove_suffix(1);
      if (!line.empty() || number != next_number) part.remove_prefix(1);
      // Only the beginning of a line is looked at; a picture attached in one line may be megabytes long.
      if (line.size() < Looked_At) line += part.substr(0, Looked_At);
      position = end + 1;
      ++next_number;
    } while (position < text.size() && (text[position] == ' ' || text[position] == '\t'));
    return true;
  }

 private:
  static constexpr std::size_t Looked_At = 200;

  std::string_view text;
  std::size_t position = 0;
  std::size_t next_number = 1;
};

std::string Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

// "BEGIN:" or "END:" and the name of the component, both in capitals; false for any other line.
bool Read_Frame(const std::string& line, const char* word, std::string& name) {
  const std::size_t length = std::strlen(word);
  const std::string upper = Kt_util_01::Simple_UpperCase(std::string_view(line).substr(0, 100));
  if (!upper.starts_with(word)) return false;
  name = Trimmed(std::string_view(upper).substr(length));
  return true;
}

// Components that hold no place inside each other.
bool Stands_By_Itself(const std::string& component) {
  constexpr std::string_view kinds[] = {"VCALENDAR", "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE"};
  return std::find(std::begin(kinds), std::end(kinds), component) != std::end(kinds);
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

std::size_t Check_Structure(const std::string& name, const std::string& text, const TImport_Budget& budget) {
  const auto damage = [&name](const char* what, const std::string& where) {
    return EImport_Error(name + " is " + what + ": " + where + ".");
  };
  const auto at = [](std::size_t line) { return "line " + std::to_string(line); };
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) throw EImport_Error(name + " is empty.");
  if (const auto zero = text.find('\0'); zero != std::string::npos) {
    const auto before = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(zero), '\n');
    throw damage("no calendar", at(static_cast<std::size_t>(before) + 1) + " holds binary data");
  }

  struct TOpen {
    std::string Name;
    std::size_t Line;
  };
  std::vector<TOpen> open;
  const auto innermost = [&] { return open.back().Name + " of " + at(open.back().Line); };
  std::size_t begun = 0;
  std::int64_t entries = 0;
  std::string line, frame;
  std::size_t number = 0;
  for (TContent_Lines lines(text); lines.Next(line, number);) {
    if (Read_Frame(line, "BEGIN:", frame)) {
      if (open.empty() && frame != "VCALENDAR") {
        throw damage("no calendar", at(number) + " begins a " + frame + " outside of one");
      }
      // An end that was lost would otherwise hide what follows.
      if (!open.empty() && Stands_By_Itself(frame) && (open.size() > 1 || frame == "VCALENDAR")) {
        throw damage("damaged", at(number) + " begins a " + frame + " inside the " + innermost());
      }
      if (open.size() == Most_Open) {
        throw damage("damaged", at(number) + " begins a " + frame + " inside of " +
                                    std::to_string(Most_Open) + " other components");
      }
      if (open.size() == 1 && ++entries > budget.Most_Entries()) {
        throw EImport_Error(name + " holds more than " + std::to_string(budget.Most_Entries()) +
                            " entries; " + budget.How_To_Raise + ".");
      }
      open.push_back({frame, number});
      ++begun;
    } else if (Read_Frame(line, "END:", frame)) {
      if (open.empty()) throw damage("damaged", at(number) + " ends a " + frame + " that never began");
      if (open.back().Name != frame) {
        const bool cut = open.back().Name.starts_with(frame) && text.back() != '\n';
        if (frame.empty()) frame = "component without a name";
        throw damage(cut ? "cut short" : "damaged",
                     at(number) + " ends a " + frame + " where the " + innermost() + " is open");
      }
      open.pop_back();
    } else if (open.empty() && !Trimmed(line).empty()) {
      if (begun > 0) throw damage("damaged", at(number) + " follows the end of the calendar");
      throw damage("no calendar", at(number) + " does not begin a calendar");
    }
  }
  if (!open.empty()) throw damage("cut short", "the " + innermost() + " has no end");
  return begun;
}

TCalendar_File::TCalendar_File(const std::string& file, const TImport_Budget& budget) {
  const std::string name = '"' + file + '"';
  const std::string text = Read_File(file);
  const std::size_t begun = Check_Structure(name, text, budget);
  icalerror_set_errors_are_fatal(0);
  root.reset(icalparser_parse_string(Folded(text).c_str()));
  if (!root) throw EImport_Error(name + " is no calendar: nothing in it could be read.");
  std::size_t read = 0;
  const auto add = [&](icalcomponent* calendar) {
    read += Count_Components(calendar);
    Add_Calendar(calendar);
  };
  if (icalcomponent_isa(root.get()) == ICAL_VCALENDAR_COMPONENT) {
    add(root.get());
  } else {
    for (icalcompiter i = icalcomponent_begin_component(root.get(), ICAL_VCALENDAR_COMPONENT);
         icalcompiter_deref(&i); icalcompiter_next(&i)) {
      add(icalcompiter_deref(&i));
    }
  }
  // A line that libical reads in another way than we do could hide what follows it.
  if (read != begun) {
    throw EImport_Error(name + " is damaged: " + std::to_string(begun) + " components begin in it, but " +
                        std::to_string(read) + " could be read.");
  }
}

void TCalendar_File::Add_Calendar(icalcomponent* calendar) {
  for (icalcompiter i = icalcomponent_begin_component(calendar, ICAL_ANY_COMPONENT); icalcompiter_deref(&i);
       icalcompiter_next(&i)) {
    icalcomponent* const component = icalcompiter_deref(&i);
    switch (icalcomponent_isa(component)) {
      case ICAL_VTIMEZONE_COMPONENT:
        zones.push_back(component);
        break;
      case ICAL_XLICINVALID_COMPONENT:
        break;
      default:
        components.push_back(component);
    }
  }
}

}  // namespace Plexidex
