#pragma once

// Which views of the calendar there are.

#include <string>

#include "Kt_forms.h"

namespace KTReminds {

bool Is_Calendar_View(int page);

/// Shows a view by its page number, as its own entry point does; it selects there what was selected in the
/// view before it, and takes the keyboard over from it. False when the other page refuses to close, when yet
/// another one is shown by the end, and for a number that is none of a view's.
bool Display_Calendar_View(int page, QWidget* Parent, Kt_forms::TForm_Reference& Form,
                           const std::string& NodeKey, const std::string& OwnerKey, bool WholeCalendar);

}  // namespace KTReminds
