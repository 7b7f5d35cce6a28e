#include "Field_Places.h"

#include <algorithm>

#include "Contacts.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using Kt_util_01::Simple_UpperCase;

namespace {

struct TWord {
  std::string_view Label;
  TField_Kind Kind;
  TMeaning Meaning;
};
constexpr TWord Words[] = {
    {"TITLE", TField_Kind::Text, TMeaning::Prefix},
    {"SALUTATION", TField_Kind::Text, TMeaning::Prefix},
    {"COMPANY", TField_Kind::Text, TMeaning::Organisation},
    {"ORGANISATION", TField_Kind::Text, TMeaning::Organisation},
    {"ORGANIZATION", TField_Kind::Text, TMeaning::Organisation},
    {"EMPLOYER", TField_Kind::Text, TMeaning::Organisation},
    {"JOB TITLE", TField_Kind::Text, TMeaning::Job},
    {"POSITION", TField_Kind::Text, TMeaning::Job},
    {"ROLE", TField_Kind::Text, TMeaning::Role},
    {"PROFESSION", TField_Kind::Text, TMeaning::Role},
    {"TELEPHONE", TField_Kind::Telephone, TMeaning::Any},
    {"PHONE", TField_Kind::Telephone, TMeaning::Any},
    {"HOME", TField_Kind::Telephone, TMeaning::Home},
    {"PRIVATE", TField_Kind::Telephone, TMeaning::Home},
    {"WORK", TField_Kind::Telephone, TMeaning::Work},
    {"BUSINESS", TField_Kind::Telephone, TMeaning::Work},
    {"OFFICE", TField_Kind::Telephone, TMeaning::Work},
    {"MOBILE", TField_Kind::Telephone, TMeaning::Cell},
    {"MOBILE PHONE", TField_Kind::Telephone, TMeaning::Cell},
    {"CELL", TField_Kind::Telephone, TMeaning::Cell},
    {"CELL PHONE", TField_Kind::Telephone, TMeaning::Cell},
    {"FAX", TField_Kind::Telephone, TMeaning::Fax},
    {"PAGER", TField_Kind::Telephone, TMeaning::Pager},
    {"E-MAIL", TField_Kind::Mail, TMeaning::Any},
    {"EMAIL", TField_Kind::Mail, TMeaning::Any},
    {"E-MAIL AT HOME", TField_Kind::Mail, TMeaning::Home},
    {"HOME", TField_Kind::Mail, TMeaning::Home},
    {"E-MAIL AT WORK", TField_Kind::Mail, TMeaning::Work},
    {"WORK", TField_Kind::Mail, TMeaning::Work},
    {"WEB PAGE", TField_Kind::Web, TMeaning::Any},
    {"WEB SITE", TField_Kind::Web, TMeaning::Any},
    {"WEBSITE", TField_Kind::Web, TMeaning::Any},
    {"HOME PAGE", TField_Kind::Web, TMeaning::Any},
};

// Some programs put the labels that they bring along into such marks.
std::string_view Without_Marks(std::string_view label) {
  constexpr std::string_view before = "_$!<", after = ">!$_";
  if (label.starts_with(before) && label.ends_with(after) && label.size() >= before.size() + after.size())
    return label.substr(before.size(), label.size() - before.size() - after.size());
  return label;
}

const char* Property_Name(TField_Kind kind, TMeaning meaning) {
  switch (kind) {
    case TField_Kind::Telephone:
      return "TEL";
    case TField_Kind::Mail:
      return "EMAIL";
    case TField_Kind::Web:
      return "URL";
    case TField_Kind::Address:
      return "ADR";
    default:
      return meaning == TMeaning::Organisation ? "ORG"
             : meaning == TMeaning::Job        ? "TITLE"
             : meaning == TMeaning::Role       ? "ROLE"
             : meaning == TMeaning::Prefix     ? "N"
                                               : "X-PLEXIDEX-FIELD";
  }
}

}  // namespace

TField_Places::TField_Places(const TTemplate& of, const TOther_Texts& other) : of(of), other(other) {
  for (std::size_t i = 0; i < None; ++i) {
    TPlace& place = places[i];
    place.Label = Simple_UpperCase(Field_Name(of, i));
    place.Is_Shown = !of.Labels[i].empty();
    if (!place.Is_Shown) continue;
    for (const TWord& word : Words) {
      if (word.Kind == Template_Fields[i].Kind && word.Label == place.Label) place.Meaning = word.Meaning;
    }
  }
}

std::string TField_Places::Label_Text(std::string_view label) {
  return Simple_UpperCase(Without_Marks(label));
}

std::size_t TField_Places::With_Meaning(TField_Kind kind, TMeaning meaning) const {
  for (std::size_t i = 0; meaning != TMeaning::Unknown && i < None; ++i) {
    if (Template_Fields[i].Kind == kind && places[i].Meaning == meaning) return i;
  }
  return None;
}

bool TField_Places::Can_Take(std::size_t field, TField_Kind kind, TMeaning meaning) const {
  return Template_Fields[field].Kind == kind && places[field].Is_Shown &&
         (places[field].Meaning == TMeaning::Fax) == (meaning == TMeaning::Fax);
}

std::size_t TField_Places::Other_With_Label(std::string_view label) const {
  const std::string wanted = Simple_UpperCase(label);
  std::size_t number = 0;
  while (number < Other_Fields && Simple_UpperCase(other[number]) != wanted) ++number;
  return number;
}

TField_Property TField_Places::Property_Of(std::size_t field) const {
  const TField_Kind kind = Template_Fields[field].Kind;
  TMeaning meaning = places[field].Meaning;
  const auto is_alike = [&](std::size_t other) {
    return Template_Fields[other].Kind == kind && places[other].Meaning == meaning;
  };
  bool says_which = kind == TField_Kind::Address || meaning != TMeaning::Unknown;
  for (std::size_t other = 0; other < None; ++other) {
    if (other == field || !is_alike(other)) continue;
    // Of texts, the first has the name to itself.
    says_which = says_which && kind == TField_Kind::Text && field < other;
  }
  if (!says_which && kind == TField_Kind::Text) meaning = TMeaning::Unknown;
  return {Property_Name(kind, meaning), meaning, says_which ? std::string() : Field_Name(of, field)};
}

TMeaning Meaning_Of(const TCard_Property& property) {
  constexpr struct {
    std::string_view Type;
    TMeaning Meaning;
  } types[] = {{"FAX", TMeaning::Fax},
               {"PAGER", TMeaning::Pager},
               {"CELL", TMeaning::Cell},
               {"WORK", TMeaning::Work},
               {"HOME", TMeaning::Home}};
  for (const auto& [type, meaning] : types) {
    if (property.Is_Type(type)) return meaning;
  }
  return TMeaning::Any;
}

}  // namespace Plexidex
