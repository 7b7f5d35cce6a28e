#pragma once

// What a card says of a contact, and which of its properties say it.

#include <map>
#include <string>
#include <vector>

#include "Card.h"
#include "Contact_Texts.h"
#include "Field_Places.h"

namespace Plexidex {

struct TCard_Plan {
  TContact_Texts Texts;
  /// The properties that a slot came from, by their positions in the card; of an address under that of the
  /// whole. What stands nowhere here is kept with the card alone.
  std::map<std::size_t, std::vector<std::size_t>> Sources;
  /// Properties whose text is too long for a field.
  std::vector<std::string> Too_Long;
};

TCard_Plan Plan_Card(const TCard& card, const TField_Places& places);

/// The name of a card; "" when nothing in it can serve as one.
std::string Name_Of(const TCard& card);
/// Position of the template for a card: the one that it names, a company's for an organisation, or else the
/// first.
std::size_t Choose_Template(const TCard& card, const std::vector<Kt_data_01::TTemplate>& templates);
inline constexpr const char* Company_Template = "Company";

/// "" when it says none that a calendar has.
std::string Birthday_Of(const TCard& card, const TCard_Property& property);

}  // namespace Plexidex
