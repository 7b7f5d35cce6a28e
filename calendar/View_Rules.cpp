#include "View_Rules.h"

#include "Kt_util_01.h"

namespace KTReminds {

std::string Day_Title(Kt_util_01::TDateTime date) {
  return Kt_util_01::FormatDateTime(" dddd, dd mmmm yyyy", date);
}

TNotice No_Entry_Notice(bool backwards, std::string_view title) {
  return {backwards ? "No Prior Events" : "No Later Events",
          "No eligible calendar events found " + std::string(backwards ? "prior to" : "after") +
              " the period" + std::string(title)};
}

}  // namespace KTReminds
