#include "Entry_Order.h"

#include <string>
#include <tuple>
#include <unordered_map>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

int SortKey = 2;
bool SortAscending = true;

namespace {

constexpr int Priority_Of_Type_1 = 10;

int Effective_Priority(const TEventKey& entry) {
  return entry.EventType == TEntry_Type::Other ? Priority_Of_Type_1 : entry.Priority;
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

// Where an entry stands within its day.
int Rank(const TEventKey& entry) {
  if (entry.Is_Holiday()) return 0;
  if (!entry.Timeless) return 3;
  return entry.Is_Task() ? 2 : 1;
}

auto Position(const TEventKey& entry) {
  return std::tuple(Whole_Day(entry.EventDate), Rank(entry),
                    entry.Timeless ? 0 : Msec_Of_Day(entry.EventDate));
}

}  // namespace

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

bool Comes_Before(const TEventKey& a, const TEventKey& b) {
  return Position(a) < Position(b);
}

}  // namespace KTReminds
