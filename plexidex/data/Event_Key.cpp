#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

std::string TEventKey::Get_Tip(bool one_line) const {
  if (Private) return "Private";
  std::string tip;
  const auto add = [&](std::string_view part) {
    if (part.empty()) return;
    if (!tip.empty()) tip += one_line ? ", " : "\n";
    tip += part;
  };
  add(Description);
  if (Is_Task()) {
    add(FirstText);
  } else if (!Is_Holiday()) {
    add(SecondText);
  }
  add(Kt_util_01::FormatDateTime(Timeless ? "dddddd" : "dddddd t", EventDate));
  // Where there is but one, it goes without saying.
  if (Get_User_List().size() > 1) add(Get_UserName(User));
  add(ContactName);
  return tip;
}

}  // namespace Kt_data_01
