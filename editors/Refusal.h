#pragma once

#include <string>

namespace KTReminds {

/// What an input that was refused tells the user, and where it points.
struct TRefusal {
  std::string Caption = {}, Text = {};
  std::string Control = {};  // name of the control to be focused
  bool Beep = false;         // it is only heard
  bool Empty() const { return Text.empty() && !Beep; }
};

/// Refuse an invalid time of day, or date; they name the user's short format.
TRefusal Refuse_Time(const std::string& caption, const std::string& control);
TRefusal Refuse_Date(const std::string& control);

}  // namespace KTReminds
