#pragma once

#include <string_view>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// Positions a table with an index "Contact" on the first row of a contact for which `is` holds; false when
/// there is none. For rows without keys.
template <class TIs>
bool Find_Row_Of(TTable& table, std::string_view contact, TIs is) {
  table.Set_Index("Contact");
  table.SetRange({contact}, {contact});
  for (table.First(); !table.Eof(); table.Next()) {
    if (is()) return true;
  }
  return false;
}

}  // namespace Kt_data_01
