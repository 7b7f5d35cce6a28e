#pragma once

// Which commands apply to an entry of a list, and what they say, without any window.

#include <string>
#include <string_view>

#include "Kt_lists.h"

namespace KTReminds {

enum class TToggle { None, Mark_Done, Mark_Outstanding };

/// What the user may mark the entry as; None also without an entry. A failed look at the rights is reported
/// and counts as a refusal; so below.
TToggle Toggle_For(const Kt_data_01::TList_Item* selected);
bool May_Delete(const Kt_data_01::TList_Item* selected);
/// Whether it may be moved to another day.
bool May_Move(const Kt_data_01::TList_Item* selected);
/// No right is needed to open an entry, if only to look at it.
bool May_Open(const Kt_data_01::TList_Item* selected);

struct TToggle_Texts {
  std::string Hint, Caption, Long_Hint;
};
/// `noun` is what the list calls its entries. Not for None.
TToggle_Texts Toggle_Texts(TToggle toggle, std::string_view noun);

/// A click on the label of a sort column: another column sorts ascending, the same one turns round.
void Click_Sort_Label(int column, int& sort_key, bool& ascending);

}  // namespace KTReminds
