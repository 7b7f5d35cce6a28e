#include "Card_Writer.h"

#include <algorithm>
#include <set>

#include "Card_Lines.h"
#include "Card_Plan.h"
#include "Kt_util_01.h"
#include "Line_Writer.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

using enum TVcard_Version;

const char* Version_Text(TVcard_Version version) {
  return version == V2_1 ? "2.1" : version == V3_0 ? "3.0" : "4.0";
}

std::string Type_Of(TMeaning meaning) {
  switch (meaning) {
    case TMeaning::Home:
      return "home";
    case TMeaning::Work:
      return "work";
    case TMeaning::Cell:
      return "cell";
    case TMeaning::Fax:
      return "fax";
    case TMeaning::Pager:
      return "pager";
    default:
      return {};
  }
}

bool Is_Company(const TField_Places& places) {
  return CompareText(places.Template().Name, Company_Template) == 0;
}

std::string UID_Of(const TWritten_Contact& contact) {
  return "urn:uuid:" + contact.Key;
}

// Writes the slots of a contact as properties.
class TSlot_Writer {
 public:
  TSlot_Writer(const TContact_Texts& texts, const TField_Places& places, TVcard_Version version)
      : texts(texts), places(places), version(version) {}

  // One that was not in the card.
  std::string New(std::size_t slot) {
    if (slot == Slot_Of_Prefix()) return Lines_Of(Make_Property("N", Names()));
    if (Is_Empty(slot)) return {};
    TCard_Property property = Make_Property("", Value(slot));
    std::string label;
    if (slot == Slot::Name) property.Name = "FN";
    if (slot == Slot::Notes) property.Name = "NOTE";
    if (slot == Slot::Categories) property.Name = "CATEGORIES";
    if (slot == Slot::Birthday) property.Name = "BDAY";
    if (slot >= Slot::Other && slot < Slot::Other + Other_Fields) {
      property.Name = "X-PLEXIDEX-OTHER";
      Add_Parameter(property, "X-LABEL", places.Other_Label(slot - Slot::Other));
    }
    if (const std::size_t field = Field_Of(slot); field != TField_Places::None) {
      const TField_Property written = places.Property_Of(field);
      property.Name = written.Name;
      if (const std::string type = Type_Of(written.Meaning); !type.empty())
        Add_Parameter(property, "TYPE", type);
      if (property.Name == "X-PLEXIDEX-FIELD") {
        Add_Parameter(property, "X-LABEL", written.Label);
      } else if (!written.Label.empty()) {
        label = written.Label;
        property.Group = "plexidex" + std::to_string(slot);
      }
    }
    std::string lines = Lines_Of(property);
    if (!label.empty()) {
      TCard_Property of = Make_Property("X-ABLabel", Escaped_Text(label));
      of.Group = property.Group;
      lines += Lines_Of(of);
    }
    return lines;
  }

  // In the place of the property that it came from.
  std::string Instead_Of(const TCard& card, const TCard_Property& old, std::size_t slot) {
    if (Is_Empty(slot) && old.Name != "N") return {};
    TCard_Property property = old;
    for (const char* gone : {"ENCODING", "CHARSET", "VALUE", "LABEL", "X-APPLE-OMIT-YEAR"})
      Remove_Parameter(property, gone);
    property.Value = old.Name == "N" ? Names(card.Components(old)) : Value(slot);
    // It is written as the later versions write values.
    TCard later("");
    later.Version = card.Version == V2_1 ? V3_0 : card.Version;
    return property.Name == "BDAY" ? Lines_Of(property) : Lines_In(later, std::move(property), version);
  }

  // The names of a person: those of the card where the contact's name is still that of the card.
  std::string Names(std::vector<std::string> parts = {}, bool is_company = false) const {
    parts.resize(5);
    if (const std::size_t prefix = Slot_Of_Prefix(); prefix < Slot::Count) parts[3] = texts[prefix];
    if (is_renamed) {
      const std::string& name = texts[Slot::Name];
      const auto last = is_company ? std::string::npos : name.rfind(' ');
      const bool has_two = last != std::string::npos;
      parts = {has_two ? name.substr(last + 1) : name, has_two ? name.substr(0, last) : std::string(), "",
               parts[3], ""};
    }
    return Escaped_List(parts, ';');
  }
  void Keep_Names() { is_renamed = false; }

  std::size_t Slot_Of_Prefix() const {
    const std::size_t field = places.With_Meaning(TField_Kind::Text, TMeaning::Prefix);
    return field == TField_Places::None ? Slot::Count : static_cast<std::size_t>(Template_Fields[field].Code);
  }

 private:
  bool Is_Empty(std::size_t slot) const { return texts[slot].empty(); }

  static std::size_t Field_Of(std::size_t slot) {
    std::size_t field = 0;
    while (field < TField_Places::None && static_cast<std::size_t>(Template_Fields[field].Code) != slot)
      ++field;
    return field;
  }

  std::string Value(std::size_t slot) const {
    const std::string& text = texts[slot];
    if (slot == Slot::Birthday) return Birthday_Value(text, version);
    if (slot == Slot::Address) return Address();
    if (slot == Slot::Categories) return Escaped_List(Category_Names(text), ',');
    const std::size_t field = Field_Of(slot);
    const bool is_address = field != TField_Places::None && Template_Fields[field].Kind == TField_Kind::Web;
    return is_address ? Escaped_Address(Valid_UTF8(text)) : Escaped_Text(Valid_UTF8(text));
  }

  std::string Address() const {
    TContact_Fields fields;
    for (std::size_t code = 1; code <= Contact_Fields; ++code) fields[static_cast<int>(code)] = texts[code];
    const TAddress_Style style = places.Template().Address_Style;
    if (style == TAddress_Style::International)
      return Escaped_List({"", "", fields[Field_Address], "", "", "", ""}, ';');
    const std::string& code = style == TAddress_Style::UK ? fields[Field_Postcode] : fields[Field_ZIP];
    return Escaped_List(
        {"", "", fields[Field_Street], fields[Field_City], fields[Field_State], code, fields[Field_Country]},
        ';');
  }

  const TContact_Texts& texts;
  const TField_Places& places;
  const TVcard_Version version;
  bool is_renamed = true;
};

// Text with the line ends of another one.
std::string With_Ends_Of(const std::string& like, std::string lines) {
  if (!like.ends_with("\r\n")) std::erase(lines, '\r');
  return lines;
}

std::string Time_Stamp(TDateTime moment) {
  return FormatDateTime("yyyymmdd\"T\"hhnnss\"Z\"", Local_To_UTC(moment));
}

// Writes a kept card with what is different now.
class TKept_Writer {
 public:
  TKept_Writer(const TCard& card, const TWritten_Contact& contact, const TField_Places& places,
               TVcard_Version version)
      : card(card),
        contact(contact),
        plan(Plan_Card(card, places)),
        slots(contact.Texts, places, version),
        version(version) {
    for (std::size_t slot = 0; slot < Slot::Count; ++slot) {
      if (!Same_Slot(plan.Texts, contact.Texts, slot)) changed.insert(Leading_Slot(slot));
    }
    if (!changed.contains(Slot::Name)) slots.Keep_Names();
  }

  bool Is_Changed() const { return !changed.empty(); }

  std::string Write() {
    std::string text = card.Begin;
    std::set<std::size_t> written;
    for (std::size_t i = 0; i < card.Properties.size(); ++i) text += Property(i, written);
    for (const std::size_t slot : changed) {
      if (!written.contains(slot)) text += With_Ends_Of(card.Begin, slots.New(slot));
    }
    // So that a reader can tell that it is the same one.
    if (Is_Changed() && !card.Find("UID"))
      text += With_Ends_Of(card.Begin, Lines_Of(Make_Property("UID", UID_Of(contact))));
    // What ends its file need not end its line.
    return text + card.End + (card.End.ends_with('\n') ? "" : With_Ends_Of(card.Begin, "\r\n"));
  }

 private:
  std::string Property(std::size_t i, std::set<std::size_t>& written) {
    const TCard_Property& property = card.Properties[i];
    const auto lines = [&](const std::string& text) { return With_Ends_Of(card.Begin, text); };
    if (property.Name == "VERSION" && card.Version != version)
      return lines(Lines_Of(Make_Property("VERSION", Version_Text(version))));
    if (property.Name == "REV" && Is_Changed())
      return lines(Lines_Of(Make_Property("REV", Time_Stamp(contact.Modified))));
    if (property.Name == "N" && (changed.contains(Slot::Name) || changed.contains(slots.Slot_Of_Prefix()))) {
      written.insert(slots.Slot_Of_Prefix());
      return lines(slots.Instead_Of(card, property, Slot::Name));
    }
    for (const auto& [slot, sources] : plan.Sources) {
      if (!changed.contains(slot) || std::find(sources.begin(), sources.end(), i) == sources.end()) continue;
      // A company's name stands in two of them.
      if (slot != Slot::Name || property.Name == "FN") written.insert(slot);
      if (!replaced.insert({slot, slot == Slot::Name ? property.Name : std::string()}).second) return {};
      return lines(slots.Instead_Of(card, property, slot));
    }
    if (Belongs_To_Removed(property)) return {};
    if (card.Version == version && Valid_UTF8(property.Lines) == property.Lines) return property.Lines;
    return lines(Lines_In(card, property, version));
  }

  // The label of a property that is no more.
  bool Belongs_To_Removed(const TCard_Property& property) const {
    if (property.Group.empty() || !property.Name.starts_with("X-AB")) return false;
    for (const auto& [slot, sources] : plan.Sources) {
      if (!changed.contains(slot) || !contact.Texts[slot].empty()) continue;
      for (const std::size_t source : sources) {
        if (card.Properties[source].Group == property.Group) return true;
      }
    }
    return false;
  }

  const TCard& card;
  const TWritten_Contact& contact;
  const TCard_Plan plan;
  TSlot_Writer slots;
  const TVcard_Version version;
  std::set<std::size_t> changed;
  std::set<std::pair<std::size_t, std::string>> replaced;
};

}  // namespace

std::string Own_Card(const TWritten_Contact& contact, const TField_Places& places, TVcard_Version version) {
  TSlot_Writer slots(contact.Texts, places, version);
  const bool is_company = Is_Company(places);
  const bool has_name_in_field =
      places.With_Meaning(TField_Kind::Text, TMeaning::Organisation) != TField_Places::None;
  std::string card = "BEGIN:VCARD\r\nVERSION:" + std::string(Version_Text(version)) + "\r\n" +
                     Lines_Of(Make_Property("PRODID", "-//Plexidex//KTReminds//EN")) +
                     Lines_Of(Make_Property("UID", UID_Of(contact)));
  if (is_company && version == V4_0) card += Lines_Of(Make_Property("KIND", "org"));
  if (is_company ? has_name_in_field : !contact.Has_First_Template)
    card += Lines_Of(Make_Property("X-PLEXIDEX-TEMPLATE", Escaped_Text(places.Template().Name)));
  const std::string name = Escaped_Text(Valid_UTF8(contact.Texts[Slot::Name]));
  card += Lines_Of(Make_Property("FN", name));
  if (is_company && !has_name_in_field) card += Lines_Of(Make_Property("ORG", name));
  // Version 3.0 wants names of everybody.
  const std::size_t prefix = slots.Slot_Of_Prefix();
  const bool has_prefix = prefix < Slot::Count && !contact.Texts[prefix].empty();
  if (!is_company || version == V3_0 || has_prefix)
    card += Lines_Of(Make_Property("N", slots.Names({}, is_company)));
  for (std::size_t slot = 1; slot < Slot::Count; ++slot) {
    if (Leading_Slot(slot) == slot && slot != prefix) card += slots.New(slot);
  }
  return card + "END:VCARD\r\n";
}

std::string Kept_Card(const std::string& text, const TWritten_Contact& contact, const TField_Places& places,
                      std::optional<TVcard_Version> version) {
  const TCard card(text);
  TVcard_Version target = version.value_or(card.Version);
  if (!version && card.Version == V2_1) {
    const bool stays = Valid_UTF8(text) == text && !TKept_Writer(card, contact, places, V2_1).Is_Changed();
    if (!stays) target = V4_0;
  }
  return TKept_Writer(card, contact, places, target).Write();
}

}  // namespace Plexidex
