#pragma once

// Writing the properties of cards.

#include <string>

#include "Card.h"

namespace Plexidex {

/// The lines of a property made of its group, name, parameters and value, folded, with the line ends of the
/// format.
std::string Lines_Of(const TCard_Property& property);
/// The property of a card as a version has it, in UTF-8. Its value has no encoding but what is binary. "" for
/// what that version has no place for.
std::string Lines_In(const TCard& card, TCard_Property property, TVcard_Version version);

/// A property without parameters.
TCard_Property Make_Property(std::string name, std::string value);
void Add_Parameter(TCard_Property& property, std::string name, std::string value);
void Remove_Parameter(TCard_Property& property, std::string_view name);

/// Texts with escapes, between separators.
std::string Escaped_List(const std::vector<std::string>& texts, char separator);
/// A web address, in which commas and semicolons stand as they are.
std::string Escaped_Address(std::string_view address);
/// As a version writes the birthday of a contact's texts.
std::string Birthday_Value(const std::string& birthday, TVcard_Version version);
/// As it is dialled: without "tel:" before it.
std::string Telephone_Text(std::string text);

}  // namespace Plexidex
