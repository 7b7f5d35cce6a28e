#pragma once

// What the views of the calendar say, without their windows.

#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace KTReminds {

/// The day as a view's title, with a blank before it that sets it off from the text it is appended to; and in
/// shorter forms.
std::vector<std::string> Day_Titles(Kt_util_01::TDateTime date);

struct TNotice {
  std::string Caption, Text;
};
/// That there is no entry before, or after, what a view with this title shows.
TNotice No_Entry_Notice(bool backwards, std::string_view title);

}  // namespace KTReminds
