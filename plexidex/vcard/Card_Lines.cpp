#include "Card_Lines.h"

#include <algorithm>
#include <sstream>

#include "Card_Plan.h"
#include "Content_Lines.h"
#include "Kt_util_01.h"
#include "Line_Writer.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

using enum TVcard_Version;

template <class TNames>
bool Is_One_Of(const TCard_Property& property, const TNames& names) {
  return std::find(std::begin(names), std::end(names), property.Name) != std::end(names);
}

constexpr std::string_view With_Components[] = {"N", "ADR", "ORG"};
constexpr std::string_view With_Lists[] = {"CATEGORIES", "NICKNAME"};
constexpr std::string_view With_Address[] = {"URL", "PHOTO", "LOGO", "SOUND", "KEY", "SOURCE"};

// The value as versions 3.0 and 4.0 have it.
std::string Escaped_Value(const TCard& card, const TCard_Property& property) {
  if (property.Name == "URL") return Escaped_Address(card.Text(property));
  if (card.Version != V2_1) return Decoded_Value(property);
  if (Is_One_Of(property, With_Components)) return Escaped_List(card.Components(property), ';');
  if (Is_One_Of(property, With_Lists)) return Escaped_List(card.List(property), ',');
  if (Is_One_Of(property, With_Address) || property.Name == "GEO") return card.Text(property);
  return Escaped_Text(card.Text(property));
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

// Pictures, sounds and keys: in 4.0 an address that holds them, before a value with an encoding.
void Convert_Binary(TCard_Property& property, TVcard_Version version) {
  const bool is_encoded = property.Has("ENCODING", "B") || property.Has("ENCODING", "BASE64");
  const auto comma = property.Value.find(";base64,");
  if (is_encoded && version == V4_0) {
    const std::string type = Lower(std::string(property.Parameter("TYPE")));
    const char* const kind = property.Name == "SOUND" ? "audio/"
                             : property.Name == "KEY" ? "application/"
                                                      : "image/";
    property.Value = "data:" + (type.empty() ? "application/octet-stream" : kind + type) + ";base64," +
                     std::string(Trimmed(property.Value));
    for (const char* gone : {"ENCODING", "TYPE", "VALUE"}) Remove_Parameter(property, gone);
  } else if (is_encoded) {
    Remove_Parameter(property, "ENCODING");
    Add_Parameter(property, "ENCODING", "b");
    property.Value = Trimmed(property.Value);
  } else if (version == V3_0 && Begins_With(property.Value, "DATA:") && comma != std::string::npos) {
    const std::string type = property.Value.substr(5, comma - 5);
    property.Value.erase(0, comma + 8);
    Remove_Parameter(property, "VALUE");
    Add_Parameter(property, "ENCODING", "b");
    if (const auto slash = type.find('/'); slash != std::string::npos)
      Add_Parameter(property, "TYPE", Simple_UpperCase(type.substr(slash + 1)));
  }
}

void Convert_Preference(TCard_Property& property, TVcard_Version version) {
  if (version == V4_0 && property.Is_Type("PREF")) {
    for (TCard_Parameter& one : property.Parameters) {
      if (one.Name != "TYPE") continue;
      std::erase_if(one.Values, [](const std::string& value) { return Simple_UpperCase(value) == "PREF"; });
    }
    std::erase_if(property.Parameters, [](const TCard_Parameter& one) { return one.Values.empty(); });
    Add_Parameter(property, "PREF", "1");
  } else if (version == V3_0 && !property.Parameter("PREF").empty()) {
    const bool is_first = property.Is_Preferred();
    Remove_Parameter(property, "PREF");
    if (is_first) Add_Parameter(property, "TYPE", "pref");
  }
}

void Convert_Place(TCard_Property& property, TVcard_Version version) {
  const bool is_address = Begins_With(property.Value, "GEO:");
  if (version == V4_0 && !is_address) {
    std::replace(property.Value.begin(), property.Value.end(), ';', ',');
    property.Value = "geo:" + property.Value;
  } else if (version == V3_0 && is_address) {
    property.Value = property.Value.substr(4, property.Value.find(';') - 4);
    std::replace(property.Value.begin(), property.Value.end(), ',', ';');
  }
}

void Convert_Birthday(const std::string& birthday, TCard_Property& property, TVcard_Version version) {
  Remove_Parameter(property, "VALUE");
  if (!birthday.empty()) {
    Remove_Parameter(property, "X-APPLE-OMIT-YEAR");
    property.Value = Birthday_Value(birthday, version);
  } else if (version == V4_0) {
    Add_Parameter(property, "VALUE", "text");
  }
}

}  // namespace

std::string Lines_Of(const TCard_Property& property) {
  const std::string& name = property.Spelling.empty() ? property.Name : property.Spelling;
  std::string line = property.Group.empty() ? name : property.Group + "." + name;
  for (const TCard_Parameter& parameter : property.Parameters) {
    line += ';' + parameter.Name + '=';
    for (std::size_t i = 0; i < parameter.Values.size(); ++i) {
      const std::string& value = parameter.Values[i];
      const bool is_quoted = value.find_first_of(",;:") != std::string::npos;
      line += (i > 0 ? "," : "") + (is_quoted ? '"' + value + '"' : value);
    }
  }
  std::ostringstream lines;
  Write_Folded(lines, line + ":" + property.Value);
  return lines.str();
}

std::string Lines_In(const TCard& card, TCard_Property property, TVcard_Version version) {
  // A card in a card is no value of the later versions.
  if (property.Name.empty() || (property.Name == "AGENT" && card.Version == V2_1)) return {};
  const std::string birthday = property.Name == "BDAY" ? Birthday_Of(card, property) : std::string();
  property.Value = Escaped_Value(card, property);
  Remove_Parameter(property, "CHARSET");
  if (Is_One_Of(property, With_Address)) {
    Convert_Binary(property, version);
  } else {
    Remove_Parameter(property, "ENCODING");
  }
  if (card.Version != version) {
    Convert_Preference(property, version);
    if (property.Name == "GEO") Convert_Place(property, version);
    if (property.Name == "BDAY") Convert_Birthday(birthday, property, version);
    if (property.Name == "TEL" && version == V3_0 && property.Has("VALUE", "URI")) {
      property.Value = Escaped_Text(Telephone_Text(property.Value));
      Remove_Parameter(property, "VALUE");
    }
  }
  return Lines_Of(property);
}

TCard_Property Make_Property(std::string name, std::string value) {
  TCard_Property made;
  made.Name = std::move(name);
  made.Value = std::move(value);
  return made;
}

void Add_Parameter(TCard_Property& property, std::string name, std::string value) {
  // What no parameter can hold.
  std::erase_if(value, [](unsigned char c) { return c < ' ' || c == '"'; });
  for (TCard_Parameter& one : property.Parameters) {
    if (one.Name == name) {
      one.Values.push_back(std::move(value));
      return;
    }
  }
  property.Parameters.push_back({std::move(name), {std::move(value)}});
}

void Remove_Parameter(TCard_Property& property, std::string_view name) {
  std::erase_if(property.Parameters, [&](const TCard_Parameter& one) { return one.Name == name; });
}

std::string Escaped_Address(std::string_view address) {
  std::string escaped;
  for (const char c : address) {
    if (c == '\\') escaped += c;
    if (static_cast<unsigned char>(c) >= ' ') escaped += c;
  }
  return escaped;
}

std::string Escaped_List(const std::vector<std::string>& texts, char separator) {
  std::string list;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) list += separator;
    list += Escaped_Text(texts[i]);
  }
  return list;
}

std::string Birthday_Value(const std::string& birthday, TVcard_Version version) {
  if (version == V4_0) return birthday;
  return birthday.substr(0, birthday.size() - 4) + (birthday.starts_with('-') ? "" : "-") +
         birthday.substr(birthday.size() - 4, 2) + "-" + birthday.substr(birthday.size() - 2);
}

std::string Telephone_Text(std::string text) {
  if (!Begins_With(text, "TEL:")) return text;
  text.erase(0, 4);
  const auto extension = text.find(";ext=");
  std::string number = text.substr(0, text.find(';'));
  if (extension == std::string::npos) return number;
  const auto from = extension + 5;
  return number + " ext. " + text.substr(from, text.find(';', from) - from);
}

}  // namespace Plexidex
