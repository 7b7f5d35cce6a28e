#include "Card_Plan.h"

#include <algorithm>

#include "Card_Lines.h"
#include "Content_Lines.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::size_t Most_Of_Field = 64U << 10, Most_Of_Notes = 1U << 20;

std::string Joined(const std::vector<std::string>& texts, const char* between) {
  std::string joined;
  for (const std::string& text : texts) {
    if (!text.empty()) joined += (joined.empty() ? "" : between) + text;
  }
  return joined;
}

// A text for a field of one line.
std::string One_Line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return std::string(Trimmed(text));
}

std::string First_Text(const TCard& card, std::string_view name) {
  for (const TCard_Property& property : card.Properties) {
    if (property.Name != name) continue;
    std::string text = One_Line(card.Text(property));
    if (!text.empty()) return text;
  }
  return {};
}

// Of the names of a person, in the order in which they are spoken.
std::string Spoken_Name(std::vector<std::string> parts) {
  parts.resize(5);
  return One_Line(Joined({parts[3], parts[1], parts[2], parts[0], parts[4]}, " "));
}

class TPlanner {
 public:
  TPlanner(const TCard& card, const TField_Places& places) : card(card), places(places) {}

  TCard_Plan Plan() {
    Name();
    Text_Fields();
    for (const TField_Kind kind : {TField_Kind::Telephone, TField_Kind::Mail, TField_Kind::Web}) Fields(kind);
    Address();
    Lists();
    return std::move(plan);
  }

 private:
  void Put(std::size_t slot, std::size_t source, std::string text) {
    if (text.size() > (slot == Slot::Notes ? Most_Of_Notes : Most_Of_Field)) {
      const std::string& name = card.Properties[source].Name;
      if (plan.Too_Long.empty() || plan.Too_Long.back() != name) plan.Too_Long.push_back(name);
      return;
    }
    if (text.empty()) return;
    plan.Texts[slot] = std::move(text);
    plan.Sources[Leading_Slot(slot)].push_back(source);
  }

  template <class TUse>
  void Each(std::string_view name, TUse use) {
    for (std::size_t i = 0; i < card.Properties.size(); ++i) {
      if (card.Properties[i].Name == name) use(i, card.Properties[i]);
    }
  }

  void Name() {
    const std::string name = Name_Of(card);
    plan.Texts[Slot::Name] = name;
    auto& sources = plan.Sources[Slot::Name];
    for (const char* property : {"FN", "N"})
      Each(property, [&](std::size_t i, const auto&) { sources.push_back(i); });
  }

  bool Is_Free(std::size_t field) const {
    return field != TField_Places::None &&
           plan.Texts[static_cast<std::size_t>(Template_Fields[field].Code)].empty();
  }
  std::size_t Free_With_Label(TField_Kind kind, std::string_view label) const {
    return places.With_Label(kind, label, [this](std::size_t field) { return Is_Free(field); });
  }
  bool Put_Field(std::size_t field, std::size_t source, std::string text) {
    if (!Is_Free(field)) return false;
    Put(static_cast<std::size_t>(Template_Fields[field].Code), source, std::move(text));
    return true;
  }

  void Text_Fields() {
    const auto put = [&](std::size_t i, TMeaning meaning, std::string text) {
      return Put_Field(places.With_Meaning(TField_Kind::Text, meaning), i, One_Line(std::move(text)));
    };
    Each("N", [&](std::size_t i, const auto& property) {
      const auto parts = card.Components(property);
      if (parts.size() > 3) put(i, TMeaning::Prefix, parts[3]);
    });
    Each("ORG", [&](std::size_t i, const auto& property) {
      const auto parts = card.Components(property);
      if (put(i, TMeaning::Organisation, Joined(parts, ", "))) return;
      // A company's name stands there once more.
      if (parts.size() == 1 && One_Line(parts.front()) == plan.Texts[Slot::Name])
        plan.Sources[Slot::Name].push_back(i);
    });
    Each("TITLE", [&](std::size_t i, const auto& property) { put(i, TMeaning::Job, card.Text(property)); });
    Each("ROLE", [&](std::size_t i, const auto& property) {
      if (!put(i, TMeaning::Role, card.Text(property))) put(i, TMeaning::Job, card.Text(property));
    });
    Each("X-PLEXIDEX-FIELD", [&](std::size_t i, const auto& property) {
      Put_Field(Free_With_Label(TField_Kind::Text, property.Parameter("X-LABEL")), i, card.Text(property));
    });
    Each("X-PLEXIDEX-OTHER", [&](std::size_t i, const auto& property) {
      const std::size_t number = places.Other_With_Label(property.Parameter("X-LABEL"));
      if (number < Other_Fields && plan.Texts[Slot::Other + number].empty())
        Put(Slot::Other + number, i, card.Text(property));
    });
  }

  std::string Label_Of(const TCard_Property& property) const {
    if (property.Group.empty()) return {};
    for (const TCard_Property& other : card.Properties) {
      if (other.Name == "X-ABLABEL" && other.Group == property.Group) return card.Text(other);
    }
    return {};
  }

  // Each to the field of its label, the others to that of their meaning, what is left to what is free.
  void Fields(TField_Kind kind) {
    struct TFound {
      std::size_t Source;
      std::string Text, Label;
      TMeaning Meaning;
      bool Is_Placed = false;
    };
    std::vector<TFound> found;
    const char* const name = kind == TField_Kind::Telephone ? "TEL"
                             : kind == TField_Kind::Mail    ? "EMAIL"
                                                            : "URL";
    Each(name, [&](std::size_t i, const auto& property) {
      std::string text = One_Line(card.Text(property));
      if (kind == TField_Kind::Telephone) text = Telephone_Text(std::move(text));
      // Of a web address it does not matter whose it is.
      const TMeaning meaning = kind == TField_Kind::Web ? TMeaning::Any : Meaning_Of(property);
      if (!text.empty()) found.push_back({i, std::move(text), Label_Of(property), meaning});
    });
    std::stable_partition(found.begin(), found.end(),
                          [&](const TFound& one) { return card.Properties[one.Source].Is_Preferred(); });
    const auto place = [&](auto choose) {
      for (TFound& one : found) {
        if (!one.Is_Placed) one.Is_Placed = Put_Field(choose(one), one.Source, one.Text);
      }
    };
    place([&](const TFound& one) {
      return one.Label.empty() ? TField_Places::None : Free_With_Label(kind, one.Label);
    });
    place([&](const TFound& one) { return places.With_Meaning(kind, one.Meaning); });
    place([&](const TFound& one) {
      std::size_t field = 0;
      while (field < TField_Places::None && !(places.Can_Take(field, kind, one.Meaning) && Is_Free(field)))
        ++field;
      return field;
    });
  }

  void Address() {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t best = none;
    int best_rank = 0;
    Each("ADR", [&](std::size_t i, const auto& property) {
      const int rank = property.Is_Type("HOME") ? 3 : property.Is_Preferred() ? 2 : 1;
      if (rank <= best_rank || card.Components(property).empty()) return;
      best = i;
      best_rank = rank;
    });
    const TTemplate& of = places.Template();
    if (best == none || of.Labels.back().empty()) return;
    auto parts = card.Components(card.Properties[best]);
    parts.resize(7);
    const std::string street = Joined({parts[0], parts[1], parts[2]}, "\n");
    const auto &city = parts[3], &state = parts[4], &code = parts[5], &country = parts[6];
    TContact_Fields fields;
    if (of.Address_Style == TAddress_Style::International) {
      const std::string place =
          state.empty() ? Joined({code, city}, " ") : Joined({city, Joined({state, code}, " ")}, ", ");
      fields[Field_Address] = Joined({street, place, country}, "\n");
    } else {
      fields[Field_Street] = street;
      fields[Field_City] = city;
      fields[Field_State] = state;
      fields[Field_ZIP] = code;
      fields[Field_Country] = country;
    }
    fields = With_Address_In(fields, of.Address_Style);
    for (std::size_t part = 1; part <= Contact_Fields; ++part) {
      if (Is_Part_Of_Address(part)) plan.Texts[part] = fields[static_cast<int>(part)];
    }
    if (plan.Texts[Slot::Address].size() > Most_Of_Field) {
      Copy_Slot({}, plan.Texts, Slot::Address);
      plan.Too_Long.emplace_back("ADR");
    } else {
      plan.Sources[Slot::Address] = {best};
    }
  }

  void Lists() {
    Each("NOTE", [&](std::size_t i, const auto& property) {
      std::string& notes = plan.Texts[Slot::Notes];
      Put(Slot::Notes, i, Joined({notes, card.Text(property)}, "\n\n"));
    });
    std::vector<std::string> categories;
    Each("CATEGORIES", [&](std::size_t i, const auto& property) {
      for (std::string& category : card.List(property)) {
        category = One_Line(std::move(category));
        if (!category.empty() && category.size() <= Most_Of_Field) categories.push_back(std::move(category));
      }
      plan.Sources[Slot::Categories].push_back(i);
    });
    std::sort(categories.begin(), categories.end());
    categories.erase(std::unique(categories.begin(), categories.end()), categories.end());
    plan.Texts[Slot::Categories] = Joined(categories, "\n");
    Each("BDAY", [&](std::size_t i, const auto& property) {
      if (plan.Texts[Slot::Birthday].empty()) Put(Slot::Birthday, i, Birthday_Of(card, property));
    });
  }

  const TCard& card;
  const TField_Places& places;
  TCard_Plan plan;
};

}  // namespace

TCard_Plan Plan_Card(const TCard& card, const TField_Places& places) {
  return TPlanner(card, places).Plan();
}

std::string Name_Of(const TCard& card) {
  std::string name = First_Text(card, "FN");
  if (name.empty()) {
    if (const TCard_Property* parts = card.Find("N")) name = Spoken_Name(card.Components(*parts));
  }
  if (name.empty()) {
    if (const TCard_Property* parts = card.Find("ORG"))
      name = One_Line(Joined(card.Components(*parts), ", "));
  }
  for (const char* other : {"NICKNAME", "EMAIL", "TEL"}) {
    if (name.empty()) name = First_Text(card, other);
  }
  if (name.size() <= Most_Of_Field) return name;
  throw ECard_Error("has a name of more than " + std::to_string(Most_Of_Field >> 10) + " KiB");
}

std::size_t Choose_Template(const TCard& card, const std::vector<TTemplate>& templates) {
  const auto find = [&](std::string_view name) {
    std::size_t i = 0;
    while (i < templates.size() && CompareText(templates[i].Name, name) != 0) ++i;
    return i;
  };
  if (const TCard_Property* named = card.Find("X-PLEXIDEX-TEMPLATE")) {
    if (const std::size_t i = find(card.Text(*named)); i < templates.size()) return i;
  }
  const TCard_Property *kind = card.Find("KIND"), *org = card.Find("ORG"), *shown = card.Find("X-ABSHOWAS");
  const auto is = [](const TCard_Property* property, std::string_view word) {
    return property && Simple_UpperCase(Trimmed(property->Value)) == word;
  };
  const bool is_company = is(kind, "ORG") || is(shown, "COMPANY") ||
                          (!kind && org && One_Line(Joined(card.Components(*org), ", ")) == Name_Of(card));
  if (!is_company) return 0;
  const std::size_t company = find(Company_Template);
  return company < templates.size() ? company : 0;
}

std::string Birthday_Of(const TCard& card, const TCard_Property& property) {
  std::string text = One_Line(card.Text(property));
  const bool has_no_year = text.starts_with("--");
  const std::string year = text.substr(0, 4);
  // A time does not matter.
  std::string digits;
  for (const char c : text.substr(0, std::min(text.find_first_of("Tt "), text.size()))) {
    if (c >= '0' && c <= '9') {
      digits += c;
    } else if (c != '-') {
      return {};
    }
  }
  if (digits.size() != (has_no_year ? 4U : 8U)) return {};
  // One program has a year for "none".
  if (has_no_year || property.Parameter("X-APPLE-OMIT-YEAR") == year)
    digits = "--" + digits.substr(digits.size() - 4);
  const auto number = [&](std::size_t from, std::size_t length) {
    return std::stoi(digits.substr(from, length));
  };
  constexpr int leap_year = 2000;
  const bool is_yearless = digits.starts_with('-');
  const int of_year = is_yearless ? leap_year : number(0, 4);
  const std::size_t month = is_yearless ? 2 : 4;
  try {
    Encode_Date(of_year, number(month, 2), number(month + 2, 2));
  } catch (const EConvert_Error&) {
    return {};
  }
  return digits;
}

}  // namespace Plexidex
