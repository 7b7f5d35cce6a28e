#pragma once

// The fields that a contact may have by its template, and its address.

#include <array>
#include <cstddef>
#include <string>

namespace Kt_data_01 {

enum class TField_Kind { Text, Telephone, Mail, Web, Address };

/// A field by its code, which is that of saved searches and names the column of Contacts_Data: never
/// renumber.
struct TTemplate_Field {
  int Code;
  int Label_Column;  // of Templates_Table, counted from 1
  TField_Kind Kind;
};

/// The parts of an address besides the whole; which of them there are depends on its style.
inline constexpr int Field_Address = 6, Field_Street = 7, Field_City = 8, Field_State = 9, Field_ZIP = 10,
                     Field_Postcode = 11, Field_Country = 20;
inline constexpr std::size_t Contact_Fields = 20;

/// All that can have a label, in the order in which they are shown.
inline constexpr std::array<TTemplate_Field, 14> Template_Fields{{
    {1, 38, TField_Kind::Text},
    {2, 39, TField_Kind::Text},
    {3, 40, TField_Kind::Text},
    {4, 4, TField_Kind::Text},
    {5, 5, TField_Kind::Text},
    {12, 7, TField_Kind::Telephone},
    {13, 8, TField_Kind::Telephone},
    {14, 9, TField_Kind::Telephone},
    {15, 10, TField_Kind::Telephone},
    {16, 11, TField_Kind::Telephone},
    {17, 29, TField_Kind::Mail},
    {18, 30, TField_Kind::Mail},
    {19, 31, TField_Kind::Web},
    {Field_Address, 6, TField_Kind::Address},
}};

/// Column 25 of Templates_Table: never renumber. Any other number counts as International.
enum class TAddress_Style { International = 0, US = 2, UK = 3 };

/// The texts of a contact by the codes of the fields.
class TContact_Fields {
 public:
  std::string& operator[](int code) { return texts.at(static_cast<std::size_t>(code - 1)); }
  const std::string& operator[](int code) const { return texts.at(static_cast<std::size_t>(code - 1)); }
  friend bool operator==(const TContact_Fields&, const TContact_Fields&) = default;

 private:
  std::array<std::string, Contact_Fields> texts;
};

struct TAddress_Part {
  int Code;
  const char* Label;  // empty for a part that stands for the address itself
  bool Has_Lines;
};
/// What is typed for an address of a style, in order. International: the lines as they are written. US:
/// street, city, state, ZIP code, country. UK: the lines to the county, postcode, country.
const TAddress_Part* begin(TAddress_Style style);
const TAddress_Part* end(TAddress_Style style);

/// The address as it stands on a letter, from the parts of its style; lines without a line break at the end.
std::string Written_Address(const TContact_Fields& fields, TAddress_Style style);
/// The fields with their address, of whichever style, in a given one: with the parts of this style alone, and
/// the whole made of them. The whole counts where the parts do not make it; what no part of the new style is
/// meant for goes into its lines. No text of the address is lost.
TContact_Fields With_Address_In(TContact_Fields fields, TAddress_Style style);

}  // namespace Kt_data_01
