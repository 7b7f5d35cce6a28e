#include "Card.h"

#include <algorithm>
#include <optional>

#include "Charsets.h"
#include "Content_Lines.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr std::size_t Most_Properties = 10'000;

// Takes the first line off a text, with its line end.
std::string_view Take_Line(std::string_view& text) {
  const auto end = text.find('\n');
  const auto line = text.substr(0, end == std::string_view::npos ? text.size() : end + 1);
  text.remove_prefix(line.size());
  return line;
}

std::string_view Without_End(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool Is_Frame(std::string_view line) {
  return Begins_With(line, "BEGIN:") || Begins_With(line, "END:");
}

// Where the value begins, after the first colon that is not in quotes; npos for a line that is no property.
std::size_t Find_Value(std::string_view line) {
  bool quoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '"') quoted = !quoted;
    if (line[at] == ':' && !quoted) return at + 1;
  }
  // A quote that was never closed hides nothing.
  const auto colon = line.find(':');
  return quoted && colon != std::string_view::npos ? colon + 1 : std::string_view::npos;
}

std::string Without_Quotes(std::string_view text) {
  std::string plain(text);
  plain.erase(std::remove(plain.begin(), plain.end(), '"'), plain.end());
  return plain;
}

// What stands between separators outside of quotes.
std::vector<std::string_view> Between(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  bool quoted = false;
  std::size_t begin = 0;
  for (std::size_t at = 0; at <= text.size(); ++at) {
    if (at < text.size() && text[at] == '"') quoted = !quoted;
    if (at < text.size() && (text[at] != separator || quoted)) continue;
    parts.push_back(text.substr(begin, at - begin));
    begin = at + 1;
  }
  return parts;
}

bool Is_Encoding(std::string_view name) {
  constexpr std::string_view encodings[] = {"QUOTED-PRINTABLE", "BASE64", "7BIT", "8BIT"};
  return std::find(std::begin(encodings), std::end(encodings), name) != std::end(encodings);
}

void Read_Parameters(std::string_view head, TCard_Property& property) {
  const auto parts = Between(head, ';');
  const auto dot = parts.front().find('.');
  if (dot != std::string_view::npos) property.Group = Trimmed(parts.front().substr(0, dot));
  property.Spelling = Trimmed(parts.front().substr(dot == std::string_view::npos ? 0 : dot + 1));
  property.Name = Simple_UpperCase(property.Spelling);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const auto equals = parts[i].find('=');
    std::string name = Simple_UpperCase(Trimmed(parts[i].substr(0, equals)));
    TCard_Parameter read;
    if (equals == std::string_view::npos) {
      read.Name = Is_Encoding(name) ? "ENCODING" : "TYPE";
      read.Values = {std::move(name)};
    } else {
      read.Name = std::move(name);
      // A list may also stand in quotes as a whole.
      const bool is_type = read.Name == "TYPE";
      const std::string plain = is_type ? Without_Quotes(parts[i].substr(equals + 1)) : std::string();
      for (const auto value : Between(is_type ? std::string_view(plain) : parts[i].substr(equals + 1), ','))
        read.Values.push_back(Without_Quotes(Trimmed(value)));
    }
    property.Parameters.push_back(std::move(read));
  }
}

// Reads the lines of a card one property after the other.
class TProperty_Reader {
 public:
  TProperty_Reader(std::string_view text, std::size_t line) : text(text), number(line) {}

  bool Has_Next() const { return !text.empty(); }
  std::size_t Number() const { return number; }
  std::string_view Next_Line() const {
    auto rest = text;
    return Without_End(Take_Line(rest));
  }

  TCard_Property Next() {
    TCard_Property property;
    std::string line(Take(property));
    for (;;) {
      if (Is_Soft(line) && Has_Next() && !Is_Frame(Next_Line())) {
        line.pop_back();
        line += Take(property);
      } else if (text.starts_with(' ') || text.starts_with('\t')) {
        line += Take(property).substr(1);
      } else {
        break;
      }
    }
    const std::size_t value = Find_Value(line);
    if (value == std::string::npos) return property;
    Read_Parameters(std::string_view(line).substr(0, value - 1), property);
    property.Value = line.substr(value);
    if (property.Has("ENCODING", "BASE64") || property.Has("ENCODING", "B")) {
      Join_Binary_Lines(property);
    } else if (property.Name == "AGENT" && Trimmed(property.Value).empty()) {
      Join_Card(property);
    }
    return property;
  }

 private:
  std::string_view Take(TCard_Property& property) {
    const auto line = Take_Line(text);
    property.Lines += line;
    ++number;
    return Without_End(line);
  }
  // In quoted-printable a line that ends in "=" goes on in the next one, to which all blanks of it belong.
  static bool Is_Soft(std::string_view line) {
    return line.ends_with('=') && Simple_UpperCase(line.substr(0, std::min(Find_Value(line), line.size())))
                                          .find("QUOTED-PRINTABLE") != std::string::npos;
  }

  // Old programs do not indent it. No property looks like it: that has a colon.
  void Join_Binary_Lines(TCard_Property& property) {
    while (Has_Next() && !Next_Line().empty() && Next_Line().find(':') == std::string_view::npos) {
      const auto line = Take(property);
      property.Value += Trimmed(line);
    }
  }

  // A card inside a card.
  void Join_Card(TCard_Property& property) {
    if (!Has_Next() || !Begins_With(Next_Line(), "BEGIN:VCARD")) return;
    for (int depth = 0; Has_Next();) {
      const auto line = Take(property);
      if (Begins_With(line, "BEGIN:VCARD")) ++depth;
      if (Begins_With(line, "END:VCARD") && --depth == 0) return;
    }
  }

  std::string_view text;
  std::size_t number;
};

std::optional<TVcard_Version> Version_Of(std::string_view value) {
  if (value == "2.1") return TVcard_Version::V2_1;
  if (value == "3.0") return TVcard_Version::V3_0;
  if (value == "4.0") return TVcard_Version::V4_0;
  return std::nullopt;
}

int Digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// What is no code stands for itself.
std::string Without_Codes(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool is_code =
        text[at] == '=' && at + 2 < text.size() && Digit(text[at + 1]) >= 0 && Digit(text[at + 2]) >= 0;
    plain += is_code ? static_cast<char>(Digit(text[at + 1]) * 16 + Digit(text[at + 2])) : text[at];
    if (is_code) at += 2;
  }
  return plain;
}

}  // namespace

std::string_view TCard_Property::Parameter(std::string_view name) const {
  for (const TCard_Parameter& parameter : Parameters) {
    if (parameter.Name == name && !parameter.Values.empty()) return parameter.Values.front();
  }
  return {};
}

bool TCard_Property::Has(std::string_view parameter, std::string_view value) const {
  return std::any_of(Parameters.begin(), Parameters.end(), [&](const TCard_Parameter& one) {
    return one.Name == parameter && std::any_of(one.Values.begin(), one.Values.end(), [&](const auto& own) {
             return own.size() == value.size() && Begins_With(own, value);
           });
  });
}

TCard::TCard(std::string_view text, std::size_t first_line) {
  TProperty_Reader reader(text, first_line);
  if (reader.Has_Next()) Begin = reader.Next().Lines;
  while (reader.Has_Next() && End.empty()) {
    if (Properties.size() == Most_Properties)
      throw ECard_Error("has more than " + std::to_string(Most_Properties) + " properties");
    const std::size_t line = reader.Number();
    TCard_Property read = reader.Next();
    if (read.Name == "END" && Simple_UpperCase(Trimmed(read.Value)) == "VCARD") {
      End = read.Lines;
      break;
    }
    Properties.push_back(std::move(read));
    const TCard_Property& property = Properties.back();
    if (property.Name.empty() && !Trimmed(Without_End(property.Lines)).empty()) Strange_Lines.push_back(line);
    if (property.Name != "VERSION") continue;
    const auto version = Version_Of(Trimmed(property.Value));
    if (!version)
      throw ECard_Error("line " + std::to_string(line) + " names a version that is none of 2.1, 3.0 and 4.0");
    Version = *version;
  }
  // Whatever is there, nothing of it is lost.
  while (reader.Has_Next()) End += reader.Next().Lines;
}

const TCard_Property* TCard::Find(std::string_view name) const {
  const auto found = std::find_if(Properties.begin(), Properties.end(),
                                  [&](const TCard_Property& property) { return property.Name == name; });
  return found == Properties.end() ? nullptr : &*found;
}

std::string Decoded_Value(const TCard_Property& property) {
  std::string value =
      property.Has("ENCODING", "QUOTED-PRINTABLE") ? Without_Codes(property.Value) : property.Value;
  const auto charset = property.Parameter("CHARSET");
  return charset.empty() ? Valid_UTF8(value) : UTF8_From(value, std::string(charset));
}

std::string TCard::Unescaped(std::string_view value) const {
  std::string plain;
  for (std::size_t at = 0; at < value.size(); ++at) {
    if (value[at] == '\r') {
      // A line break of quoted-printable.
      if (at + 1 < value.size() && value[at + 1] == '\n') continue;
      plain += '\n';
    } else if (value[at] != '\\' || at + 1 == value.size()) {
      plain += value[at];
    } else {
      const char next = value[at + 1];
      const bool is_letter = next == 'n' || next == 'N';
      // Version 2.1 has but one escape, and writes paths with single backslashes.
      if (Version == TVcard_Version::V2_1 && std::string_view(";,:\\").find(next) == std::string_view::npos) {
        plain += '\\';
        continue;
      }
      plain += is_letter ? '\n' : next;
      ++at;
    }
  }
  return plain;
}

std::string TCard::Text(const TCard_Property& property) const {
  return Unescaped(Decoded_Value(property));
}

std::vector<std::string> TCard::Split(const TCard_Property& property, char separator) const {
  const std::string value = Decoded_Value(property);
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t at = 0; at <= value.size(); ++at) {
    if (at < value.size() && value[at] == '\\') {
      ++at;
    } else if (at == value.size() || value[at] == separator) {
      parts.push_back(Unescaped(std::string_view(value).substr(begin, at - begin)));
      begin = at + 1;
    }
  }
  if (begin < value.size()) parts.push_back(Unescaped(std::string_view(value).substr(begin)));
  while (!parts.empty() && parts.back().empty()) parts.pop_back();
  return parts;
}

std::vector<std::string> TCard::Components(const TCard_Property& property) const {
  return Split(property, ';');
}

std::vector<std::string> TCard::List(const TCard_Property& property) const {
  return Split(property, ',');
}

}  // namespace Plexidex
