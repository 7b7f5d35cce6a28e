#pragma once

#include <string>

namespace KTReminds {

/// What an input that was refused tells the user, and where it points.
struct TRefusal {
  std::string Caption, Text;
  std::string Control;  // name of the control to be focused
  bool Empty() const { return Text.empty(); }
};

/// The refusal of what is no time of day; shows the user's short format with the minutes as "mm".
TRefusal Refuse_Time(const std::string& caption, const std::string& control);

}  // namespace KTReminds
