#include "Contact_Fields.h"

#include <initializer_list>
#include <iterator>

namespace Kt_data_01 {

namespace {

constexpr TAddress_Part International_Parts[] = {{Field_Address, "", true}};
constexpr TAddress_Part US_Parts[] = {{Field_Street, "Street", true},
                                      {Field_City, "City", false},
                                      {Field_State, "State", false},
                                      {Field_ZIP, "ZIP code", false},
                                      {Field_Country, "Country", false}};
constexpr TAddress_Part UK_Parts[] = {
    {Field_Street, "", true}, {Field_Postcode, "Postcode", false}, {Field_Country, "Country", false}};
constexpr int All_Parts[] = {Field_Street, Field_City, Field_State, Field_ZIP, Field_Postcode, Field_Country};

std::string Joined(std::initializer_list<std::string> texts, const char* between) {
  std::string joined;
  for (const std::string& text : texts) {
    if (!text.empty()) joined += (joined.empty() ? "" : between) + text;
  }
  return joined;
}

std::string Without_Last_Breaks(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

std::string City_Line(const TContact_Fields& fields, const std::string& zip) {
  return Joined({fields[Field_City], Joined({fields[Field_State], zip}, " ")}, ", ");
}

TContact_Fields Parts_Of(const TContact_Fields& fields, TAddress_Style style) {
  TContact_Fields parts;
  for (const TAddress_Part& part : style) parts[part.Code] = fields[part.Code];
  return parts;
}

// The style whose parts make the whole.
TAddress_Style Style_Of(const TContact_Fields& fields) {
  const std::string& whole = fields[Field_Address];
  for (const TAddress_Style style : {TAddress_Style::US, TAddress_Style::UK}) {
    const std::string made = Written_Address(fields, style);
    if (!made.empty() && made == whole) return style;
  }
  if (!whole.empty()) return TAddress_Style::International;
  return fields[Field_Postcode].empty() ? TAddress_Style::US : TAddress_Style::UK;
}

}  // namespace

const TAddress_Part* begin(TAddress_Style style) {
  return style == TAddress_Style::US   ? std::begin(US_Parts)
         : style == TAddress_Style::UK ? std::begin(UK_Parts)
                                       : std::begin(International_Parts);
}

const TAddress_Part* end(TAddress_Style style) {
  return style == TAddress_Style::US   ? std::end(US_Parts)
         : style == TAddress_Style::UK ? std::end(UK_Parts)
                                       : std::end(International_Parts);
}

std::string Written_Address(const TContact_Fields& fields, TAddress_Style style) {
  const std::string street = Without_Last_Breaks(fields[Field_Street]);
  switch (style) {
    case TAddress_Style::US:
      return Joined({street, City_Line(fields, fields[Field_ZIP]), fields[Field_Country]}, "\n");
    case TAddress_Style::UK:
      return Joined({street, fields[Field_Postcode], fields[Field_Country]}, "\n");
    default:
      return Without_Last_Breaks(fields[Field_Address]);
  }
}

TContact_Fields With_Address_In(TContact_Fields fields, TAddress_Style style) {
  using enum TAddress_Style;
  const TAddress_Style from = Style_Of(fields);
  TContact_Fields parts = Parts_Of(fields, from);
  if (from != style) {
    const std::string whole = Written_Address(fields, from);
    if (style == International) {
      parts[Field_Address] = whole;
    } else if (from == International) {
      parts[Field_Street] = whole;
    } else if (style == UK) {
      parts[Field_Street] = Joined({Without_Last_Breaks(fields[Field_Street]), City_Line(fields, {})}, "\n");
      parts[Field_Postcode] = fields[Field_ZIP];
    } else {
      parts[Field_ZIP] = fields[Field_Postcode];
    }
    parts = Parts_Of(parts, style);
  }
  for (const int code : All_Parts) fields[code] = parts[code];
  fields[Field_Address] = Written_Address(parts, style);
  return fields;
}

}  // namespace Kt_data_01
