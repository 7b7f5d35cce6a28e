#include "Matchers.h"

#include <limits>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

TDay_Range Days_Of(const TSearchItem& item, TDateTime now) {
  constexpr double end = std::numeric_limits<double>::infinity();
  const auto today = static_cast<double>(Whole_Day(now));
  const auto in_days = [now](double days) { return static_cast<double>(Whole_Day(now + days)); };
  const double number = item.IntegerValue;
  switch (item.Action) {
    case Action_Anytime:
      return {1, end};
    case Action_Never:
      return {-end, 0};
    case Action_Yesterday:
      return {in_days(-1), in_days(-1)};
    case Action_Today:
      return {today, today};
    case Action_Tomorrow:
      return {in_days(1), in_days(1)};
    case Action_In_Next:
      return {today, in_days(number)};
    case Action_In_Last:
      return {in_days(-number), today};
    case Action_Not_In_Next:
      return {today, in_days(number), true};
    case Action_Not_In_Last:
      return {in_days(-number), today, true};
    case Action_On:
      return {item.Date1Value, item.Date1Value};
    case Action_On_Or_After:
      return {item.Date1Value, end};
    case Action_On_Or_Before:
      return {-end, item.Date1Value};
    case Action_Between:
      return {item.Date1Value, item.Date2Value};
    default:
      return {};
  }
}

}  // namespace

TMatcher::TMatcher(const TSearchItem& item, TDateTime now)
    : item(item), wanted(item.Value, item.MatchCase, item.WholeWord), days(Days_Of(item, now)) {}

bool TMatcher::Text(std::string_view text) const {
  switch (item.Action) {
    case Action_Contains:
      return wanted.Is_In(First_Characters(text, Searched_Characters));
    case Action_Equals:
      return item.MatchCase ? text == item.Value : CompareText(text, item.Value) == 0;
    case Action_Does_Not_Contain:
      return !wanted.Is_In(First_Characters(text, Searched_Characters));
    case Action_Blank:
      return text.empty();
    case Action_Not_Blank:
      return !text.empty();
    case Action_Starts_With:
      return wanted.Is_Begun_By(text);
    default:
      return false;
  }
}

bool TMatcher::Date(TDateTime date) const {
  return days.Holds(static_cast<double>(Whole_Day(date)));
}

bool TMatcher::Compare(std::int64_t number, std::int64_t with) const {
  switch (item.Action) {
    case Action_Number_Equals:
      return number == with;
    case Action_Less:
      return number < with;
    case Action_Greater:
      return number > with;
    default:
      return false;
  }
}

}  // namespace KTReminds
