#pragma once

#include <string>

namespace KTReminds {

/// What an input that was refused tells the user, and where it points.
struct TRefusal {
  std::string Caption, Text;
  std::string Control;  // name of the control to be focused
  bool Empty() const { return Text.empty(); }
};

/// Refuses an invalid time of day; names the user's short format, with "mm" for the minutes.
TRefusal Refuse_Time(const std::string& caption, const std::string& control);

}  // namespace KTReminds
