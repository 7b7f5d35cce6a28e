#include "Contact_Texts.h"

#include <algorithm>

#include "Categories.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;

bool Is_Part_Of_Address(std::size_t slot) {
  return (slot >= std::size_t{Field_Address} && slot <= std::size_t{Field_Postcode}) || slot == Field_Country;
}

std::size_t Leading_Slot(std::size_t slot) {
  return Is_Part_Of_Address(slot) ? Slot::Address : slot;
}

bool Same_Slot(const TContact_Texts& one, const TContact_Texts& other, std::size_t slot) {
  for (std::size_t i = 0; i < Slot::Count; ++i) {
    if (Leading_Slot(i) == Leading_Slot(slot) && one[i] != other[i]) return false;
  }
  return true;
}

void Copy_Slot(const TContact_Texts& from, TContact_Texts& to, std::size_t slot) {
  for (std::size_t i = 0; i < Slot::Count; ++i) {
    if (Leading_Slot(i) == Leading_Slot(slot)) to[i] = from[i];
  }
}

TContact_Texts Texts_Of(const TContact& contact, const TContact_Details& details, const std::string& like) {
  TContact_Texts texts;
  texts[Slot::Name] = contact.Name;
  for (std::size_t code = 1; code <= Contact_Fields; ++code)
    texts[code] = details.Fields[static_cast<int>(code)];
  for (std::size_t i = 0; i < Other_Fields; ++i) texts[Slot::Other + i] = details.Other[i];
  texts[Slot::Notes] = details.Notes;
  const std::vector<std::string> spelled = Category_Names(like);
  std::vector<std::string> names;
  for (const TCategory& category : Categories_Of(contact.Key)) {
    const auto same = std::find_if(spelled.begin(), spelled.end(), [&](const std::string& one) {
      return Kt_util_01::CompareText(one, category.Name) == 0;
    });
    names.push_back(same == spelled.end() ? category.Name : *same);
  }
  std::sort(names.begin(), names.end());
  for (const std::string& name : names)
    texts[Slot::Categories] += (texts[Slot::Categories].empty() ? "" : "\n") + name;
  return texts;
}

std::vector<std::string> Category_Names(const std::string& categories) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at < categories.size();) {
    const std::size_t end = std::min(categories.find('\n', at), categories.size());
    names.push_back(categories.substr(at, end - at));
    at = end + 1;
  }
  return names;
}

void Put_Into(const TContact_Texts& texts, TContact_Details& details) {
  for (std::size_t code = 1; code <= Contact_Fields; ++code)
    details.Fields[static_cast<int>(code)] = texts[code];
  for (std::size_t i = 0; i < Other_Fields; ++i) details.Other[i] = texts[Slot::Other + i];
  details.Notes = texts[Slot::Notes];
}

}  // namespace Plexidex
