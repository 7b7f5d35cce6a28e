#include "View_Rules.h"

#include "Kt_util_01.h"

namespace KTReminds {

std::vector<std::string> Day_Titles(Kt_util_01::TDateTime date) {
  std::vector<std::string> titles;
  for (const char* format : {" dddd, dd mmmm yyyy", " ddd, dd mmm yyyy", " ddd ddddd", " ddddd"})
    titles.push_back(Kt_util_01::FormatDateTime(format, date));
  return titles;
}

TNotice No_Entry_Notice(bool backwards, std::string_view title) {
  return {backwards ? "No Prior Events" : "No Later Events",
          "No eligible calendar events found " + std::string(backwards ? "prior to" : "after") +
              " the period" + std::string(title)};
}

}  // namespace KTReminds
