#pragma once

// What a card and a contact have in common, as texts.

#include <array>
#include <string>
#include <vector>

#include "Contacts.h"

namespace Plexidex {

/// Places of a contact's texts. A field lies at its code.
namespace Slot {
inline constexpr std::size_t Name = 0, Other = 21, Notes = Other + Kt_data_01::Other_Fields,
                             Categories = Notes + 1, Birthday = Categories + 1, Count = Birthday + 1;
inline constexpr std::size_t Address = Kt_data_01::Field_Address;
}  // namespace Slot

/// Categories: names in order, a line each. Birthday: 19700131, or --0131 without its year.
using TContact_Texts = std::array<std::string, Slot::Count>;

/// The slots that change together: those of an address; any other alone.
bool Is_Part_Of_Address(std::size_t slot);
/// The slot that stands for a slot: that of the address for each of its parts.
std::size_t Leading_Slot(std::size_t slot);
bool Same_Slot(const TContact_Texts& one, const TContact_Texts& other, std::size_t slot);
/// Copies a slot with those that change with it.
void Copy_Slot(const TContact_Texts& from, TContact_Texts& to, std::size_t slot);

/// All but the birthday, which is no text. Categories are spelled as those of `like` are, where they differ
/// in nothing but their case.
TContact_Texts Texts_Of(const Kt_data_01::TContact& contact, const Kt_data_01::TContact_Details& details,
                        const std::string& like = {});
std::vector<std::string> Category_Names(const std::string& categories);
/// Changes nothing but what the texts hold, and leaves categories and birthday alone.
void Put_Into(const TContact_Texts& texts, Kt_data_01::TContact_Details& details);

}  // namespace Plexidex
