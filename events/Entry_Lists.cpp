#include "Entry_Lists.h"

#include "Entry_Order.h"
#include "Entry_Rows.h"
#include "Entry_Walk.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "List_Building.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr TDateTime Last_Day_Looked_At = 99999;

TDateTime Day_Start(TDateTime date) {
  return static_cast<TDateTime>(Whole_Day(date));
}

std::string Tag(const char* routine) {
  return std::string("Reminder_Utils:") + routine + " [KT_Events/KT_Events_Data/KT_Alarms]";
}

// Lets `fill` add items to lists from the last to the first, and sorts.
template <class TFill>
void Rebuild_Sorted(const std::vector<TItem_List*>& lists, const char* routine, TFill fill) {
  Rebuild_Lists(lists, Tag(routine), [&] {
    fill();
    for (TItem_List* list : lists) {
      list->Reverse();
      Sort_Items(*list, SortKey);
    }
  });
}

// Adds the entries and holidays of a day to each list, beginning with the first day.
void Add_Days(const std::vector<TItem_List*>& lists, const TOwner& owner, bool by_book, TDateTime first_day,
              bool include_completed) {
  const std::int64_t first = Whole_Day(first_day);
  const auto last_day = static_cast<TDateTime>(first + static_cast<std::int64_t>(lists.size()) - 1);
  const auto add = [&](std::unique_ptr<TEventKey> entry) {
    TItem_List& list = *lists.at(static_cast<std::size_t>(Whole_Day(entry->EventDate) - first));
    Add_Item(list, std::move(entry));
  };
  TWalk_Range range = Day_Of(owner, by_book, last_day);
  range.From = static_cast<TDateTime>(first);
  TEntry_Walk walk(range, TAlarm_Key::Occurrence, TReading::Window);
  while (auto entry = walk.Next()) {
    if (!entry->Done || include_completed) add(std::move(entry));
  }
  TEventKey_List holidays;
  Build_Holidays_Data(holidays, first_day, last_day);
  for (auto& holiday : holidays) add(std::move(holiday));
}

}  // namespace

std::string_view Task_Status_Name(TTask_Status status) {
  switch (status) {
    case TTask_Status::Not_Started:
      return "Not Started";
    case TTask_Status::In_Progress:
      return "In Progress";
    case TTask_Status::Completed:
      return "Completed";
    case TTask_Status::Pending:
      return "Pending";
    case TTask_Status::Postponed:
      return "Postponed";
    case TTask_Status::Cancelled:
      return "Cancelled";
  }
  return "Unknown";
}

std::string Task_Status_Text(TTask_Status status, int percentage) {
  const std::string name(Task_Status_Name(status));
  switch (status) {
    case TTask_Status::In_Progress:
    case TTask_Status::Pending:
    case TTask_Status::Postponed:
    case TTask_Status::Cancelled:
      return name + " " + std::to_string(percentage) + "% Complete";
    default:
      return name;
  }
}

TList_Item& Add_Item(TItem_List& list, std::unique_ptr<TEventKey> entry) {
  auto item = std::make_unique<TList_Item>();
  item->Image = entry->Is_Holiday() ? Image_Holiday : State_Image(*entry);
  item->Data = std::move(entry);
  return list.Add(std::move(item));
}

std::optional<TDateTime> Nearest_Entry_Day(const TOwner& of_owner, bool by_book, TDateTime from,
                                           bool backward) {
  return Read("Reminder_Utils:Locate_Event [KT_Events_Data]", [&] {
    TDateTime found = 0;
    const TDateTime day = Day_Start(from);
    TSnapshot snapshot;
    TTable occurrences(Events_Data, by_book ? "BookandDate" : "ContactandDate", {"Contact", "EventDate"});
    TTable contacts(Contacts_Table, "Key", {"Deleted"});
    const TField contact = Occurrence_Columns().Contact, date = Occurrence_Columns().EventDate,
                 deleted = contacts.Field("Deleted");
    Set_Cache(contacts);
    const std::string& owner = by_book ? of_owner.Book : of_owner.Contact;
    const auto is_visible = [&] {
      return contacts.FindKey({occurrences.Text(contact)}) && !contacts.Boolean(deleted) &&
             Access_Allowed(occurrences.Text(contact), Access_See);
    };
    if (backward) {
      occurrences.SetRange({owner, 0.0}, {owner, day});
      for (occurrences.Last(); !occurrences.Bof() && found == 0; occurrences.Prior()) {
        const TDateTime at = Day_Start(occurrences.DateTime(date));
        if (at < day && is_visible()) found = at;
      }
    } else {
      occurrences.SetRange({owner, day}, {owner, Last_Day_Looked_At});
      for (occurrences.First(); !occurrences.Eof() && found == 0; occurrences.Next()) {
        const TDateTime at = Day_Start(occurrences.DateTime(date));
        if (at > day && is_visible()) found = at;
      }
    }
    return found;
  });
}

bool Locate_Event(const std::string& Contact, const std::string& Book, TDateTime Date, TDateTime& Found,
                  bool Backward, bool ByBook) {
  Found = Nearest_Entry_Day({Book, Contact}, ByBook, Date, Backward).value_or(0);
  return Found > 0;
}

void Build_Events_Data(const std::string& Contact, const std::string& Book, TEventKey_List& List,
                       TDateTime FromDate, TDateTime ToDate, bool ByBook) {
  List.clear();
  const bool read = Read(Tag("Build_Events_Data"), [&] {
    TEntry_Walk walk(Days_Of({Book, Contact}, ByBook, FromDate, ToDate), TAlarm_Key::Set, TReading::Window);
    while (auto entry = walk.Next()) List.push_back(std::move(entry));
  });
  if (!read) List.clear();
}

void Build_Reminder_DayView(const std::string& Contact, const std::string& Book, TItem_List& List,
                            TDateTime Date, bool IncludeCompleted, bool ByBook) {
  Rebuild_Sorted({&List}, "Build_Reminder_DayView", [&] {
    Add_Days({&List}, {Book, Contact}, ByBook, Date, IncludeCompleted);
  });
}

void Build_Day_Lists(const TOwner& owner, bool by_book, TDateTime first_day,
                     const std::vector<TItem_List*>& lists) {
  Rebuild_Sorted(lists, "Build_Reminder_DayView", [&] { Add_Days(lists, owner, by_book, first_day, true); });
}

void Build_Reminder_AllView(const std::string& Contact, const std::string& Book, TItem_List& List,
                            bool IncludeCompleted, bool ByBook, TProgress_Bar* Progress) {
  constexpr std::int64_t progress_step = 100;
  Rebuild_Sorted({&List}, "Build_Reminder_AllView", [&] {
    TEntry_Walk walk(All_Of({Book, Contact}, ByBook), TAlarm_Key::Occurrence, TReading::Whole);
    std::int64_t shown = 0;
    if (Progress) Progress->Set_Max(walk.Count());
    while (auto entry = walk.Next()) {
      if (Progress && walk.Passed() - shown >= progress_step) {
        shown = walk.Passed();
        // In the order of the walk the first rows are known already.
        if (SortKey == 2 && SortAscending) List.Show_So_Far();
        Progress->Set_Position(shown);
      }
      if (!entry->Done || IncludeCompleted) Add_Item(List, std::move(entry));
    }
    if (Progress) Progress->Set_Position(walk.Passed());
  });
}

}  // namespace KTReminds
