#pragma once

// What the views of the calendar say, without their windows.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace KTReminds {

/// The day as a view's title, with a blank before it that sets it off from the text it is appended to; and in
/// shorter forms.
std::vector<std::string> Day_Titles(Kt_util_01::TDateTime date);

/// The Monday of a date's week; a Sunday belongs to the week that ends on it.
Kt_util_01::TDateTime Week_Start(Kt_util_01::TDateTime date);
/// The week that begins on a Monday as a view's title, in the same manner, and the header of one of its days.
std::vector<std::string> Week_Titles(Kt_util_01::TDateTime monday);
std::vector<std::string> Week_Day_Titles(Kt_util_01::TDateTime day);

/// How a paper diary divides a page: three rows, their left halves, and in the last row at the right the
/// Saturday above the Sunday. In pixels; what does not divide evenly goes to the second one.
struct TWeek_Division {
  std::array<int, 3> Rows;
  int Left, Saturday;
};
TWeek_Division Divide_Week(int width, int height);

struct TNotice {
  std::string Caption, Text;
};
/// That there is no entry before, or after, what a view with this title shows.
TNotice No_Entry_Notice(bool backwards, std::string_view title);

}  // namespace KTReminds
