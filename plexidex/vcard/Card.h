#pragma once

// One card of a vCard file, as it stands there: its properties, and what their values say.

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Plexidex {

/// A card that cannot be used: why, as the end of a sentence about it, with the line.
class ECard_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class TVcard_Version { V2_1, V3_0, V4_0 };

/// A name in capitals with its values, which are many where they are separated by commas. A type that stands
/// for itself, as in version 2.1, is a value of TYPE; so is an encoding one of ENCODING.
struct TCard_Parameter {
  std::string Name;
  std::vector<std::string> Values;
};

struct TCard_Property {
  std::string Group, Name;  // the name in capitals, "" for a line that is no property
  std::string Spelling;     // of the name; "" for capitals
  std::vector<TCard_Parameter> Parameters;
  std::string Value;  // unfolded, otherwise as it stands
  std::string Lines;  // all of it, as it stands in the file, with its line ends

  /// The first value of a parameter; "" without it.
  std::string_view Parameter(std::string_view name) const;
  /// Whether a parameter has a value, in any case.
  bool Has(std::string_view parameter, std::string_view value) const;
  bool Is_Type(std::string_view type) const { return Has("TYPE", type); }
  /// Whether it is marked as the one to prefer.
  bool Is_Preferred() const { return Is_Type("PREF") || Parameter("PREF") == "1"; }
};

class TCard {
 public:
  /// Takes the text from BEGIN:VCARD to END:VCARD. `first_line` is the number of its first line in the file.
  /// Throws ECard_Error for an unknown version and for more than a card may hold.
  explicit TCard(std::string_view text, std::size_t first_line = 1);

  TVcard_Version Version = TVcard_Version::V3_0;  // also where none is given
  /// Between its beginning and its end, in the order of the file; VERSION among them.
  std::vector<TCard_Property> Properties;
  std::string Begin, End;  // its first and last lines

  /// Null when there is none.
  const TCard_Property* Find(std::string_view name) const;
  /// What a value says, in UTF-8: without its encoding, charset and escapes.
  std::string Text(const TCard_Property& property) const;
  /// The same of the components between semicolons; empty ones at the end are left out.
  std::vector<std::string> Components(const TCard_Property& property) const;
  /// The same of a list with commas.
  std::vector<std::string> List(const TCard_Property& property) const;
  /// The numbers of lines that are no property.
  std::vector<std::size_t> Strange_Lines;

 private:
  std::vector<std::string> Split(const TCard_Property& property, char separator) const;
  std::string Unescaped(std::string_view value) const;
};

/// The value without quoted-printable and charset, in UTF-8, its escapes as they stand.
std::string Decoded_Value(const TCard_Property& property);

}  // namespace Plexidex
