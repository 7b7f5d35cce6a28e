#include "Field_Places.h"

#include <algorithm>

#include "Contacts.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using Kt_util_01::Simple_UpperCase;

namespace {

struct TWord {
  TField_Kind Kind;
  std::string_view Label;
  TMeaning Meaning;
};
constexpr TWord Words[] = {
    {TField_Kind::Text, "TITLE", TMeaning::Prefix},
    {TField_Kind::Text, "SALUTATION", TMeaning::Prefix},
    {TField_Kind::Text, "COMPANY", TMeaning::Organisation},
    {TField_Kind::Text, "ORGANISATION", TMeaning::Organisation},
    {TField_Kind::Text, "ORGANIZATION", TMeaning::Organisation},
    {TField_Kind::Text, "EMPLOYER", TMeaning::Organisation},
    {TField_Kind::Text, "JOB TITLE", TMeaning::Job},
    {TField_Kind::Text, "POSITION", TMeaning::Job},
    {TField_Kind::Text, "ROLE", TMeaning::Role},
    {TField_Kind::Text, "PROFESSION", TMeaning::Role},
    {TField_Kind::Telephone, "TELEPHONE", TMeaning::Any},
    {TField_Kind::Telephone, "PHONE", TMeaning::Any},
    {TField_Kind::Telephone, "HOME", TMeaning::Home},
    {TField_Kind::Telephone, "PRIVATE", TMeaning::Home},
    {TField_Kind::Telephone, "WORK", TMeaning::Work},
    {TField_Kind::Telephone, "BUSINESS", TMeaning::Work},
    {TField_Kind::Telephone, "OFFICE", TMeaning::Work},
    {TField_Kind::Telephone, "MOBILE", TMeaning::Cell},
    {TField_Kind::Telephone, "MOBILE PHONE", TMeaning::Cell},
    {TField_Kind::Telephone, "CELL", TMeaning::Cell},
    {TField_Kind::Telephone, "CELL PHONE", TMeaning::Cell},
    {TField_Kind::Telephone, "FAX", TMeaning::Fax},
    {TField_Kind::Telephone, "PAGER", TMeaning::Pager},
    {TField_Kind::Mail, "E-MAIL", TMeaning::Any},
    {TField_Kind::Mail, "EMAIL", TMeaning::Any},
    {TField_Kind::Mail, "E-MAIL AT HOME", TMeaning::Home},
    {TField_Kind::Mail, "HOME", TMeaning::Home},
    {TField_Kind::Mail, "E-MAIL AT WORK", TMeaning::Work},
    {TField_Kind::Mail, "WORK", TMeaning::Work},
    {TField_Kind::Web, "WEB PAGE", TMeaning::Any},
    {TField_Kind::Web, "WEB SITE", TMeaning::Any},
    {TField_Kind::Web, "WEBSITE", TMeaning::Any},
    {TField_Kind::Web, "HOME PAGE", TMeaning::Any},
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
