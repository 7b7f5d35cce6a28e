#include "View_Rules.h"

#include "Kt_util_01.h"
#include "Recurrence.h"

namespace KTReminds {

using Kt_util_01::FormatDateTime;

std::vector<std::string> Day_Titles(TDateTime date) {
  std::vector<std::string> titles;
  for (const char* format : {" dddd, dd mmmm yyyy", " ddd, dd mmm yyyy", " ddd ddddd", " ddddd"})
    titles.push_back(FormatDateTime(format, date));
  return titles;
}

TDateTime Week_Start(TDateTime date) {
  return static_cast<TDateTime>(Kt_util_01::Whole_Day(date) - MaskPosition(date));
}

std::vector<std::string> Week_Titles(TDateTime monday) {
  std::vector<std::string> titles;
  for (const std::string format : {"dd mmmm yyyy", "dd mmm yyyy", "ddddd"})
    titles.push_back(FormatDateTime(" " + format, monday) + " - " + FormatDateTime(format, monday + 6));
  return titles;
}

std::vector<std::string> Week_Day_Titles(TDateTime day) {
  std::vector<std::string> titles;
  for (const char* format : {" dddd, d mmmm yyyy", " dddd, d mmmm", " ddd, d mmm", " ddd d"})
    titles.push_back(FormatDateTime(format, day));
  return titles;
}

TWeek_Division Divide_Week(int width, int height) {
  const int third = height / 3;
  return {{third, height - 2 * third, third}, width / 2, third / 2};
}

TNotice No_Entry_Notice(bool backwards, std::string_view title) {
  return {backwards ? "No Prior Events" : "No Later Events",
          "No eligible calendar events found " + std::string(backwards ? "prior to" : "after") +
              " the period" + std::string(title)};
}

}  // namespace KTReminds
