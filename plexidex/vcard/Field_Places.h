#pragma once

// Which field of a template a property of a card is meant for.

#include <array>
#include <string>
#include <string_view>

#include "Card.h"
#include "Contacts.h"
#include "Templates.h"

namespace Plexidex {

enum class TMeaning { Unknown, Any, Home, Work, Cell, Fax, Pager, Prefix, Organisation, Job, Role };

/// What is written of a field besides its text.
struct TField_Property {
  const char* Name;
  TMeaning Meaning;
  std::string Label;  // where name and meaning do not say which field it is
};

/// The fields of one template, and the labels of its book's "Other" fields.
class TField_Places {
 public:
  TField_Places(const Kt_data_01::TTemplate& of, const Kt_data_01::TOther_Texts& other);

  const Kt_data_01::TTemplate& Template() const { return of; }
  /// Positions in Template_Fields; the number of them for none.
  static constexpr std::size_t None = Kt_data_01::Template_Fields.size();
  /// The first of these that is accepted, of several with one label.
  template <class TAccepts>
  std::size_t With_Label(Kt_data_01::TField_Kind kind, std::string_view label, TAccepts accepts) const {
    const std::string wanted = Label_Text(label);
    std::size_t i = 0;
    while (i < None &&
           !(Kt_data_01::Template_Fields[i].Kind == kind && places[i].Label == wanted && accepts(i)))
      ++i;
    return i;
  }
  std::size_t With_Meaning(Kt_data_01::TField_Kind kind, TMeaning meaning) const;
  /// Whether a number of such a meaning may go there when no field is meant for it: not a fax number to a
  /// telephone, nor the other way round.
  bool Can_Take(std::size_t field, Kt_data_01::TField_Kind kind, TMeaning meaning) const;
  /// The number of an "Other" field by its label; Other_Fields for none.
  std::size_t Other_With_Label(std::string_view label) const;
  const std::string& Other_Label(std::size_t number) const { return other[number]; }

  TField_Property Property_Of(std::size_t field) const;

 private:
  static std::string Label_Text(std::string_view label);

  const Kt_data_01::TTemplate of;
  const Kt_data_01::TOther_Texts other;
  struct TPlace {
    std::string Label;  // in capitals
    TMeaning Meaning = TMeaning::Unknown;
    bool Is_Shown = false;  // has a label of its own
  };
  std::array<TPlace, None> places;
};

/// What the types of a telephone, e-mail or web address say.
TMeaning Meaning_Of(const TCard_Property& property);

}  // namespace Plexidex
