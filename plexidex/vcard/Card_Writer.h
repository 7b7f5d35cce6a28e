#pragma once

// A contact as a card.

#include <optional>
#include <string>

#include "Card.h"
#include "Contact_Texts.h"
#include "Field_Places.h"

namespace Plexidex {

struct TWritten_Contact {
  std::string Key;
  TContact_Texts Texts;
  Kt_util_01::TDateTime Modified = 0;
  bool Has_First_Template = true;  // of its book
};

/// A contact that was never a card, in version 3.0 or 4.0.
std::string Own_Card(const TWritten_Contact& contact, const TField_Places& places, TVcard_Version version);
/// One that was imported: its card as it came, with what has been changed since. Without a version in that of
/// the card, but for a card of 2.1 that was changed, or any that is not in UTF-8; these are written anew, the
/// former in version 4.0.
std::string Kept_Card(const std::string& text, const TWritten_Contact& contact, const TField_Places& places,
                      std::optional<TVcard_Version> version);

}  // namespace Plexidex
