#pragma once

// What the lists of events and tasks decide without their windows.

#include <string>
#include <string_view>

#include "Kt_data_01.h"

namespace KTReminds {

/// What marking an entry means: nothing where its image is not that of an outstanding or completed entry.
enum class TToggle { None, Mark_Done, Mark_Outstanding };

/// Which commands apply while an entry is selected.
struct TView_Buttons {
  bool Toggle = false, Open = false, Add = true, Delete = false;
  TToggle Toggle_To = TToggle::None;  // None also while Toggle is false
};
/// For the selected entry, null without one. A failed look at the rights is reported and counts as a refusal.
TView_Buttons Buttons_For(const Kt_data_01::TList_Item* selected);

struct TToggle_Texts {
  std::string Hint, Caption, Long_Hint;
};
/// `noun` is what the list calls its entries. Not for None.
TToggle_Texts Toggle_Texts(TToggle toggle, std::string_view noun = "item");

/// A click on the label of a sort column: another column sorts ascending, the same one turns round.
void Click_Sort_Label(int column, int& sort_key, bool& ascending);

/// The day as a view's title, with a blank before it that sets it off from the text it is appended to.
std::string Day_Title(Kt_util_01::TDateTime date);

struct TNotice {
  std::string Caption, Text;
};
/// That there is no entry before, or after, what a view with this title shows.
TNotice No_Entry_Notice(bool backwards, std::string_view title);

/// None for what is neither event nor task. An entry of exactly now is not overdue yet.
enum class TEntry_State { None, Outstanding, Overdue, Done };
TEntry_State State_Of(const Kt_data_01::TEventKey& entry, Kt_util_01::TDateTime now);

/// The text of the row; hides that of a private entry.
std::string_view Row_Text(const Kt_data_01::TEventKey& entry);
/// The row in words: text, time, state.
std::string Spoken_Row(const Kt_data_01::TEventKey& entry, Kt_util_01::TDateTime now);

}  // namespace KTReminds
