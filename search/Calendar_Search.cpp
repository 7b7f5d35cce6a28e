#include "Calendar_Search.h"

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "Current_Search.h"
#include "Entry_Lists.h"
#include "Entry_Rows.h"
#include "Entry_Walk.h"
#include "Event_Criteria.h"
#include "Kt_util_01.h"
#include "List_Building.h"
#include "Result_Order.h"
#include "Search_Pace.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr double Forever = std::numeric_limits<double>::infinity();

bool Is_About_All(int field) {
  return field == Search_Any_Date || field == Search_Any_Description;
}

bool Is_About_Holidays(int field) {
  return (field >= Search_Holiday_Date && field <= Search_Holiday_Country) || Is_About_All(field);
}

// The criteria for events, or for tasks, and the days on which they can be met.
struct TKind {
  TEntry_Type Type;
  int First_Field, Last_Field;
  bool Possible = false;
  double First_Day = -Forever, Last_Day = Forever;
  std::vector<const TMatcher*> Of_Master{}, Of_Occurrence{};

  void Take(const std::vector<TMatcher>& matchers) {
    const auto is_consulted = [this](const TMatcher& matcher) {
      const int field = matcher.Item().SearchType;
      return (field >= First_Field && field <= Last_Field) || Is_About_All(field);
    };
    Possible = !matchers.empty() && is_consulted(matchers.front());
    for (const TMatcher& matcher : matchers) {
      if (!is_consulted(matcher)) continue;
      const int field = matcher.Item().SearchType;
      (Is_Of_Master(field) ? Of_Master : Of_Occurrence).push_back(&matcher);
      if (Is_Of_Master(field) || field == Search_Calendar_Status || matcher.Days().Outside) continue;
      First_Day = std::max(First_Day, matcher.Days().First);
      Last_Day = std::min(Last_Day, matcher.Days().Last);
    }
    Possible = Possible && First_Day <= Last_Day;
  }
};

struct TText_Hash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

// Without its country, which the description has behind it in brackets.
std::string_view Name_Of_Holiday(const TEventKey& holiday) {
  const std::string_view text = holiday.Description, country = holiday.SecondText;
  constexpr std::size_t blank_and_brackets = 3;
  return country.empty() ? text : text.substr(0, text.size() - country.size() - blank_and_brackets);
}

class TCalendar_Search {
 public:
  TCalendar_Search(const TSearchRecord& criteria, const std::string& book, TItem_List& list,
                   TProgress_Bar* progress)
      : search(criteria), book(book), list(list), pace(progress) {
    matchers.reserve(search.Items.size());
    for (const TSearchItem& item : search.Items) matchers.emplace_back(item, now);
    for (TKind* kind : {&events_kind, &tasks_kind}) kind->Take(matchers);
    Set_Cache(contacts);
  }

  /// False when it was stopped.
  bool Run() {
    try {
      double first = Forever, last = -Forever;
      bool by_master = true;
      for (const TKind* kind : {&events_kind, &tasks_kind}) {
        if (!kind->Possible) continue;
        first = std::min(first, kind->First_Day);
        last = std::max(last, kind->Last_Day);
        by_master = by_master && !kind->Of_Master.empty();
      }
      constexpr double few_days = 400;
      if (first <= last) {
        if (by_master && last - first > few_days) {
          Walk_Masters();
        } else {
          Walk_Days(first, last);
        }
      }
      Add_Holidays();
      return true;
    } catch (const EAlready_Reported&) {
      return false;
    }
  }

 private:
  const TKind* Kind_Of(const TTable& master) const {
    const TEntry_Type type = Read_Entry_Type(master);
    for (const TKind* kind : {&events_kind, &tasks_kind}) {
      if (kind->Type == type && kind->Possible) return kind;
    }
    return nullptr;
  }

  // The kind of a master that meets all criteria about masters; null for another.
  const TKind* Kind_That_Meets(const TTable& master) {
    const TKind* kind = Kind_Of(master);
    const bool meets =
        kind && std::all_of(kind->Of_Master.begin(), kind->Of_Master.end(),
                            [&](const TMatcher* each) { return Meets_Master(*each, master, names); });
    return meets ? kind : nullptr;
  }

  bool Has_Alarm() { return alarms.FindKey({occurrences.Text(Occurrence_Columns().Key)}); }
  bool Shows_Alarm() {
    return Has_Alarm() && events.FindKey({occurrences.Text(Occurrence_Columns().Event)}) &&
           !Is_Hidden(events);
  }

  bool Meets_Occurrence(const TKind& kind) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    return std::all_of(kind.Of_Occurrence.begin(), kind.Of_Occurrence.end(), [&](const TMatcher* each) {
      if (each->Item().SearchType != Search_Calendar_Status)
        return each->Date(occurrences.DateTime(column.EventDate));
      switch (each->Item().Action) {
        case Action_Calendar_Alarm:
          return Shows_Alarm();
        case Action_Calendar_No_Alarm:
          return !Shows_Alarm();
        case Action_Calendar_Outstanding:
          return !occurrences.Boolean(column.Actioned);
        case Action_Calendar_Complete:
          return occurrences.Boolean(column.Actioned);
        default:
          return false;
      }
    });
  }

  bool Asks_For_Alarms() const {
    return std::any_of(matchers.begin(), matchers.end(), [](const TMatcher& each) {
      return each.Item().SearchType == Search_Calendar_Status &&
             each.Item().Action <= Action_Calendar_No_Alarm;
    });
  }

  // The occurrences of some days, each with its master.
  void Walk_Days(double first, double last) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    constexpr double rounding = 0.5 / static_cast<double>(Msecs_Per_Day);
    TWalk_Range range = last < Forever ? Day_Of({}, true, last) : All_Of({}, true);
    range.From = first > -Forever ? first - rounding : All_Of({}, true).From;
    occurrences.Set_Index("BookandDate");
    occurrences.SetRange({book, range.From}, {book, range.To});
    Set_Cache(occurrences);
    occurrences.Prefetch(column.Event, events);
    if (Asks_For_Alarms()) occurrences.Prefetch(column.Key, alarms);
    if (pace.Is_Shown()) pace.Begin(occurrences.Record_Count());
    std::unordered_map<std::string, const TKind*, TText_Hash, std::equal_to<>> kinds;
    const auto show = [this] {
      if (ResultsSortKey == 2 && ResultsSortAscending) list.Show_So_Far();
    };
    for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
      pace.Step(show);
      const std::string_view event = occurrences.Text(column.Event);
      auto known = kinds.find(event);
      if (known == kinds.end()) {
        const TKind* kind = events.FindKey({event}) ? Kind_That_Meets(events) : nullptr;
        known = kinds.emplace(std::string(event), kind).first;
      }
      if (known->second && Meets_Occurrence(*known->second) && events.FindKey({event})) Add_Entry();
    }
  }

  // The masters of all books, and the occurrences of those that meet the criteria about masters.
  void Walk_Masters() {
    const bool only_titles = std::all_of(matchers.begin(), matchers.end(), [](const TMatcher& each) {
      const int field = each.Item().SearchType;
      return !Is_Of_Master(field) || field == Search_Calendar_Description ||
             field == Search_Task_Description || field == Search_Any_Description;
    });
    TTable masters =
        only_titles ? TTable(Events_Table, {"Title", "User", "Private", "EventType"}) : Searched_Events("");
    const TField key = Event_Columns().Key;
    Set_Cache(masters);
    if (pace.Is_Shown()) pace.Begin(masters.Record_Count());
    std::vector<std::string> found;
    for (masters.First(); !masters.Eof(); masters.Next()) {
      pace.Step();
      if (Kind_That_Meets(masters)) found.emplace_back(masters.Text(key));
    }
    occurrences.Set_Index("Event");
    pace.Begin(static_cast<std::int64_t>(found.size()));
    for (const std::string& event : found) {
      pace.Step();
      if (events.FindKey({event})) Add_Entries_Of(event, *Kind_Of(events));
    }
  }

  void Add_Entries_Of(const std::string& event, const TKind& kind) {
    occurrences.SetRange({event}, {event});
    for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
      pace.Pass(0);
      if (occurrences.Text(Occurrence_Columns().Book) == book && Meets_Occurrence(kind)) Add_Entry();
    }
  }

  // That at which the cursors stand, if the user may see it.
  void Add_Entry() {
    if (!Is_Visible(contacts, occurrences.Text(Occurrence_Columns().Contact))) return;
    auto entry = Entry_At(occurrences, events, contacts);
    if (!entry->Done && entry->User == User_Key()) entry->Alarm = Has_Alarm();
    if (entry->Is_Task()) {
      const auto status = static_cast<TTask_Status>(events.Integer(Event_Columns().Status));
      TText& name = status_names[status];
      if (name.Empty()) name = TText(Task_Status_Name(status));
      entry->FirstText = name;
    }
    Add(std::move(entry));
  }

  void Add_Holidays() {
    std::vector<const TMatcher*> asked;
    for (const TMatcher& matcher : matchers) {
      if (Is_About_Holidays(matcher.Item().SearchType)) asked.push_back(&matcher);
    }
    if (asked.empty()) return;
    const int year = Decode_Date(now).Year;
    TEventKey_List holidays;
    Build_Holidays_Data(holidays, static_cast<TDateTime>(Day_From_Date(year - 1, 1, 1)),
                        static_cast<TDateTime>(Day_From_Date(year + 2, 12, 31)));
    for (auto& holiday : holidays) {
      const auto meets = [&](const TMatcher* each) {
        switch (each->Item().SearchType) {
          case Search_Holiday_Country:
            return each->Text(holiday->SecondText);
          case Search_Holiday_Description:
          case Search_Any_Description:
            return each->Text(Name_Of_Holiday(*holiday));
          default:
            return each->Date(holiday->EventDate);
        }
      };
      if (std::any_of(asked.begin(), asked.end(), meets)) Add(std::move(holiday));
    }
  }

  void Add(std::unique_ptr<TEventKey> entry) {
    static const TText kinds[] = {"Event", "Task", "Holiday"};
    const TText kind = kinds[entry->Is_Holiday() ? 2 : entry->Is_Task() ? 1 : 0];
    const TText title = entry->Private ? TText(Row_Text(*entry)) : entry->Description;
    const TText date = FormatDateTime(entry->Timeless ? "ddddd" : "ddddd t", entry->EventDate);
    TText& owner = owners[entry->User.Str()];
    if (owner.Empty()) owner = TText(names.Of(entry->User));
    TList_Item& item = Add_Item(list, std::move(entry));
    item.Caption = title;
    item.SubItems = {date, title, kind, owner};
  }

  const TSearchRecord search;  // a copy: messages are serviced meanwhile
  const std::string& book;
  TItem_List& list;
  TSearch_Pace pace;
  const TDateTime now = Now();
  std::vector<TMatcher> matchers;
  TKind events_kind{TEntry_Type::Event, Search_Calendar_Date, Search_Calendar_Priority};
  TKind tasks_kind{TEntry_Type::Task, Search_Task_Description, Search_Task_Priority};
  const TSnapshot snapshot;
  TTable occurrences{Events_Data, {"Key", "Contact", "Book", "Event", "Actioned", "EventDate"}};
  TTable events = Searched_Events("Key"), contacts = Entry_Contacts();
  TTable alarms{Alarms_Table, "Key", {"Key"}};
  TUser_Names names;
  std::map<std::string, TText> owners;
  std::map<TTask_Status, TText> status_names;
};

}  // namespace

bool SearchCalendar(const std::string& Book, TItem_List& List, std::int64_t& Elapsed,
                    TProgress_Bar* Progress) {
  auto start = TSearch_Pace::TSteady::now();
  bool done = false;
  Rebuild_Lists({&List}, "Search_Engine:SearchCalendar [KT_Events/KT_Events_Data/KT_Contacts]", [&] {
    if (CurrentSearch) {
      CurrentSearch->PreProcess_Criteria(Book);
      start = TSearch_Pace::TSteady::now();
      done = TCalendar_Search(*CurrentSearch, Book, List, Progress).Run();
      Sort_Results(List);
    } else {
      done = true;
    }
  });
  Elapsed = TSearch_Pace::Milliseconds_Since(start);
  return done;
}

}  // namespace KTReminds
