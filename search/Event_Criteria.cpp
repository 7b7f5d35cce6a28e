#include "Event_Criteria.h"

#include "Entry_Rows.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;

const std::string& TUser_Names::Of(std::string_view user) {
  auto found = names.find(user);
  if (found == names.end()) found = names.emplace(std::string(user), Get_UserName(user)).first;
  return found->second;
}

TTable Searched_Events(std::string_view index) {
  return TTable(Events_Table, index,
                {"Title", "Location", "FirstDate", "Freq", "User", "Private", "AllDay", "Priority",
                 "EventType", "Percentage", "Status", "Started", "Completed", "Budget", "Worked"});
}

bool Is_Of_Master(int field) {
  switch (field) {
    case Search_Event_Description:
    case Search_Event_Location:
    case Search_Event_Owner:
    case Search_Event_Priority:
    case Search_Calendar_Description:
    case Search_Calendar_Location:
    case Search_Calendar_Owner:
    case Search_Calendar_Priority:
    case Search_Any_Description:
      return true;
    default:
      return field >= Search_Task_Description && field <= Search_Task_Priority && field != Search_Task_End;
  }
}

bool Meets_Master(const TMatcher& matcher, const TTable& events, TUser_Names& names) {
  const TEvent_Columns& column = Event_Columns();
  const auto is_on_day = [&](TField field) {
    return !Is_Hidden(events) && matcher.Date(static_cast<TDateTime>(events.Integer(field)));
  };
  switch (matcher.Item().SearchType) {
    case Search_Event_Description:
    case Search_Calendar_Description:
    case Search_Task_Description:
    case Search_Any_Description:
      return matcher.Text(Is_Hidden(events) ? Hidden_Text : events.Text(column.Title));
    case Search_Event_Location:
    case Search_Calendar_Location:
      return matcher.Text(Is_Hidden(events) ? std::string_view() : events.Text(column.Location));
    case Search_Event_Owner:
    case Search_Calendar_Owner:
    case Search_Task_Owner:
      return matcher.Text(names.Of(events.Text(column.User)));
    case Search_Event_Priority:
    case Search_Calendar_Priority:
    case Search_Task_Priority:
      return matcher.Number(events.Integer(column.Priority));
    case Search_Task_Start:
      return matcher.Date(events.DateTime(column.FirstDate));
    case Search_Task_Started:
      return is_on_day(column.Started);
    case Search_Task_Completed:
      return is_on_day(column.Completed);
    case Search_Task_Status:
      return events.Integer(column.Status) == matcher.Item().Action - Action_First_Task_Status;
    case Search_Task_Percentage:
      return matcher.Number(events.Integer(column.Percentage));
    // Compared as they are kept, in hundredths: only what remains is asked for in whole ones.
    case Search_Task_Budget:
      return !Is_Hidden(events) && matcher.Number(events.Integer(column.Budget));
    case Search_Task_Worked:
      return !Is_Hidden(events) && matcher.Number(events.Integer(column.Worked));
    case Search_Task_Remaining:
      return !Is_Hidden(events) &&
             matcher.Hundredths(events.Integer(column.Budget) - events.Integer(column.Worked));
    default:
      return false;
  }
}

}  // namespace KTReminds
