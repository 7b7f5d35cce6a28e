#include "Task_List.h"

#include <map>

#include "Entry_Lists.h"
#include "Entry_Rows.h"
#include "Entry_Walk.h"
#include "Kt_util_01.h"
#include "List_Building.h"
#include "Task_Order.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Whether a task that recurs is shown by this date rather than by that one.
bool Is_Shown_Before(bool done, TDateTime date, const TEventKey& other) {
  if (done != other.Done) return other.Done;
  const int order = CompareDates(date, other.EventDate);
  return done ? order > 0 : order < 0;
}

bool Is_Listed(const TEventKey& task, TTask_Status status, TTask_Filter filter, TDateTime now) {
  switch (filter) {
    case TTask_Filter::All:
      return true;
    case TTask_Filter::Overdue:
      return State_Of(task, now) == TEntry_State::Overdue;
    case TTask_Filter::In_Progress:
      return status == TTask_Status::In_Progress;
    case TTask_Filter::Completed:
      return task.Done;
    case TTask_Filter::Outstanding:
      return !task.Done;
  }
  return true;
}

void Add_Tasks(TItem_List& list, const TOwner& owner, TTask_Filter filter) {
  const TOccurrence_Columns& occurrence = Occurrence_Columns();
  const TEvent_Columns& master = Event_Columns();
  const TDateTime now = Now();
  const TSnapshot snapshot;
  const bool by_book = owner.Contact.empty() || owner.Contact == Calendar_Of_Book(owner.Book);
  TTable events = Entry_Events("EventType"), contacts = Entry_Contacts();
  TTable occurrences(Events_Data, "Event", {"Key", "Contact", "Book", "Actioned", "EventDate"});
  const int task = static_cast<int>(TEntry_Type::Task);
  events.SetRange({task}, {task});
  events.Prefetch(master.Key, occurrences);
  Set_Cache(events);
  Set_Cache(contacts);

  std::map<TTask_Status, TText> names;
  std::unique_ptr<TEventKey> shown;  // of the master that the walk is at
  TTask_Status status{};
  std::string at;
  const auto end_of_master = [&] {
    if (shown && Is_Listed(*shown, status, filter, now)) Add_Item(list, std::move(shown));
    shown.reset();
  };
  for (events.First(); !events.Eof(); events.Next()) {
    const std::string_view event = events.Text(master.Key);
    if (event != at) {
      end_of_master();
      at = event;
    }
    if (!occurrences.FindKey({event}) || occurrences.Text(occurrence.Book) != owner.Book) continue;
    const std::string_view contact = occurrences.Text(occurrence.Contact);
    if (!by_book && contact != owner.Contact) continue;
    if (shown && !Is_Shown_Before(occurrences.Boolean(occurrence.Actioned),
                                  occurrences.DateTime(occurrence.EventDate), *shown))
      continue;
    if (!Is_Visible(contacts, contact)) continue;
    shown = Entry_At(occurrences, events, contacts);
    status = static_cast<TTask_Status>(events.Integer(master.Status));
    TText& name = names[status];
    if (name.Empty()) name = TText(Task_Status_Name(status));
    shown->FirstText = name;
  }
  end_of_master();
}

}  // namespace

TTask_Filter Task_Filter_Of(std::int64_t number) {
  const bool known =
      number >= static_cast<int>(TTask_Filter::All) && number <= static_cast<int>(TTask_Filter::Outstanding);
  return known ? static_cast<TTask_Filter>(number) : TTask_Filter::All;
}

std::string Task_Caption(TTask_Filter filter) {
  switch (filter) {
    case TTask_Filter::All:
      return "All Tasks";
    case TTask_Filter::Overdue:
      return "Overdue Tasks Only";
    case TTask_Filter::In_Progress:
      return "In Progress Tasks Only";
    case TTask_Filter::Completed:
      return "Completed Tasks Only";
    case TTask_Filter::Outstanding:
      return "All Outstanding Tasks";
  }
  return {};
}

std::string Task_Results_Caption(std::size_t found) {
  return "Search Results [" + std::to_string(found) + " Tasks found]";
}

void Build_Task_List(const TOwner& owner, TTask_Filter filter, TItem_List& list) {
  Rebuild_Lists({&list}, "Task_List:Build_Task_List [KT_Events/KT_Events_Data/KT_Contacts]", [&] {
    Add_Tasks(list, owner, filter);
    Sort_Tasks(list);
  });
}

}  // namespace KTReminds
