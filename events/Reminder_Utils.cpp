#include "Reminder_Utils.h"

#include <limits>
#include <unordered_map>

#include "Event_Lists.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

int SortKey = 2;
bool SortAscending = true;

namespace {

constexpr TDateTime Last_Day_Looked_At = 99999;
constexpr int Priority_Of_Type_1 = 10;

constexpr auto Read_Tables = " [KT_Events/KT_Events_Data/KT_Alarms]";

TDateTime Day_Start(TDateTime date) {
  return static_cast<TDateTime>(Whole_Day(date));
}
// The last second of a day, and the half millisecond behind it that still rounds to it: the dates of a set
// that began long ago are off by less.
TDateTime Day_End(TDateTime date) {
  constexpr double half_msec = 0.5 / static_cast<double>(Msecs_Per_Day);
  return From_Msecs((Whole_Day(date) + 1) * Msecs_Per_Day - 1000) + half_msec;
}

void Add_Item(TItem_List& list, std::unique_ptr<TEventKey> entry, int image) {
  auto item = std::make_unique<TList_Item>();
  item->Image = image;
  item->Data = std::move(entry);
  list.Add(std::move(item));
}

// Clears the list, lets `fill` add items from the last to the first, and sorts; a failed read leaves it
// empty.
template <class TFill>
void Rebuild(TItem_List& list, const char* routine, TFill fill) {
  list.Begin_Update();
  list.Clear();
  bool failed = false;
  try {
    fill();
    list.Reverse();
    Sort_Items(list, SortKey);
  } catch (...) {
    list.Clear();
    failed = true;
    list.End_Update();
    FailRead(std::string("Reminder_Utils:") + routine + Read_Tables);
  }
  if (!failed) list.End_Update();
}

int Effective_Priority(const TEventKey& entry) {
  return entry.EventType == 1 ? Priority_Of_Type_1 : entry.Priority;
}

int First_Not_Zero(int primary, int tie_break) {
  return primary != 0 ? primary : tie_break;
}

// By any column but the text's, for which the caller has compared already.
int Compare(const TEventKey& a, const TEventKey& b, int column, int by_text) {
  switch (column) {
    case 0:
      return First_Not_Zero(CompareBool(a.Done, b.Done), CompareDates(a.EventDate, b.EventDate));
    case 1:
      return First_Not_Zero(CompareBool(a.Alarm, b.Alarm), CompareDates(a.EventDate, b.EventDate));
    case 2:
      return First_Not_Zero(CompareDates(a.EventDate, b.EventDate), CompareInteger(a.Priority, b.Priority));
    case 3:
      return First_Not_Zero(by_text, CompareDates(a.EventDate, b.EventDate));
    case 4:
      return First_Not_Zero(CompareInteger(Effective_Priority(a), Effective_Priority(b)),
                            CompareDates(a.EventDate, b.EventDate));
    default:
      return 0;
  }
}

}  // namespace

std::string Task_Status_Text(int status, int percentage) {
  const std::string complete = std::to_string(percentage) + "% Complete";
  switch (status) {
    case 0:
      return "Not Started";
    case 1:
      return "In Progress " + complete;
    case 2:
      return "Completed";
    case 3:
      return "Pending " + complete;
    case 4:
      return "Postponed " + complete;
    case 5:
      return "Cancelled " + complete;
    default:
      return "Unknown";
  }
}

bool Locate_Event(const std::string& Contact, const std::string& Book, TDateTime Date, TDateTime& Found,
                  bool Backward, bool ByBook) {
  Found = 0;
  try {
    const TDateTime day = Day_Start(Date);
    TSnapshot snapshot;
    TTable occurrences(Events_Data, {"Contact", "EventDate"});
    TTable contacts(Contacts_Table, {"Deleted"});
    const TField contact = occurrences.Field("Contact"), date = occurrences.Field("EventDate"),
                 deleted = contacts.Field("Deleted");
    occurrences.Set_Index(ByBook ? "BookandDate" : "ContactandDate");
    contacts.Set_Index("Key");
    Set_Cache(contacts);
    const std::string& owner = ByBook ? Book : Contact;
    const auto is_visible = [&] {
      return contacts.FindKey({occurrences.Text(contact)}) && !contacts.Boolean(deleted) &&
             Access_Allowed(occurrences.Text(contact), Access_See);
    };
    if (Backward) {
      occurrences.SetRange({owner, 0.0}, {owner, day});
      for (occurrences.Last(); !occurrences.Bof() && Found == 0; occurrences.Prior()) {
        const TDateTime at = Day_Start(occurrences.DateTime(date));
        if (at < day && is_visible()) Found = at;
      }
    } else {
      occurrences.SetRange({owner, day}, {owner, Last_Day_Looked_At});
      for (occurrences.First(); !occurrences.Eof() && Found == 0; occurrences.Next()) {
        const TDateTime at = Day_Start(occurrences.DateTime(date));
        if (at > day && is_visible()) Found = at;
      }
    }
  } catch (...) {
    FailRead("Reminder_Utils:Locate_Event [KT_Events_Data]");
    Found = 0;
  }
  return Found > 0;
}

void Build_Events_Data(const std::string& Contact, const std::string& Book, TEventKey_List& List,
                       TDateTime FromDate, TDateTime ToDate, bool ByBook) {
  List.clear();
  try {
    TEntry_Walk walk(Contact, Book, ByBook, Day_Start(FromDate), Day_End(ToDate), TAlarm_Key::Set,
                     TReading::Window);
    while (auto entry = walk.Next()) List.push_back(std::move(entry));
  } catch (...) {
    List.clear();
    FailRead(std::string("Reminder_Utils:Build_Events_Data") + Read_Tables);
  }
}

void Build_Reminder_DayView(const std::string& Contact, const std::string& Book, TItem_List& List,
                            TDateTime Date, bool IncludeCompleted, bool ByBook) {
  Rebuild(List, "Build_Reminder_DayView", [&] {
    TEntry_Walk walk(Contact, Book, ByBook, Day_Start(Date), Day_End(Date), TAlarm_Key::Occurrence,
                     TReading::Window);
    while (auto entry = walk.Next()) {
      if (entry->Done && !IncludeCompleted) continue;
      const int image = State_Image(*entry);
      Add_Item(List, std::move(entry), image);
    }
    TEventKey_List holidays;
    Build_Holidays_Data(holidays, Date, Date);
    for (auto& holiday : holidays) Add_Item(List, std::move(holiday), Image_Holiday);
  });
}

void Build_Reminder_AllView(const std::string& Contact, const std::string& Book, TItem_List& List,
                            bool IncludeCompleted, bool ByBook, TProgress_Bar* Progress) {
  constexpr std::int64_t progress_step = 1000;
  Rebuild(List, "Build_Reminder_AllView", [&] {
    TEntry_Walk walk(Contact, Book, ByBook, std::numeric_limits<double>::lowest(),
                     std::numeric_limits<double>::max(), TAlarm_Key::Occurrence, TReading::Whole);
    if (Progress) Progress->Set_Max(walk.Count());
    std::int64_t shown = 0;
    while (auto entry = walk.Next()) {
      if (Progress && walk.Passed() - shown >= progress_step) {
        shown = walk.Passed();
        Progress->Set_Position(shown);
      }
      if (entry->Done && !IncludeCompleted) continue;
      const int image = State_Image(*entry);
      Add_Item(List, std::move(entry), image);
    }
    if (Progress) Progress->Set_Position(walk.Passed());
  });
}

int CustomSortProc(const TList_Item& Item1, const TList_Item& Item2, int Column) {
  const TEventKey& a = SortAscending ? *Item1.Data : *Item2.Data;
  const TEventKey& b = SortAscending ? *Item2.Data : *Item1.Data;
  return Compare(a, b, Column, Column == 3 ? CompareText(a.FirstText, b.FirstText) : 0);
}

void Sort_Items(TItem_List& List, int Column) {
  // Entries of one set share their text, and so its sort key.
  std::unordered_map<const char*, std::string> sort_keys;
  std::vector<const std::string*> key_at;
  if (Column == 3) {
    for (std::size_t i = 0; i < List.Count(); ++i) {
      const std::string_view text = List[i].Data->FirstText.View();
      const auto [key, fresh] = sort_keys.try_emplace(text.data());
      if (fresh) key->second = Sort_Key(text);
      key_at.push_back(&key->second);
    }
  }
  List.Sort([&](std::uint32_t first, std::uint32_t second) {
    const std::uint32_t x = SortAscending ? first : second, y = SortAscending ? second : first;
    const int by_text = Column == 3 ? key_at[x]->compare(*key_at[y]) : 0;
    return Compare(*List[x].Data, *List[y].Data, Column, by_text) < 0;
  });
}

}  // namespace KTReminds
