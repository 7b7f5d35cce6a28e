#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Kt_lists.h"

namespace KTReminds {

/// The column code by which the calendar views sort (see CustomSortProc) and the direction; shared by all of
/// them.
extern int SortKey;
extern bool SortAscending;

/// Negative, 0 or positive, by a column code: 0 done, 1 alarm, 2 date and then priority, 3 first text
/// ignoring case, 4 priority, where an entry of type 1 counts as 10. Ties other than by 2 go by date. Any
/// other code makes all equal. Reversed when SortAscending is false.
int CustomSortProc(const Kt_data_01::TList_Item& Item1, const Kt_data_01::TList_Item& Item2, int Column);

/// Sorts a list whose items all carry data as CustomSortProc orders them; equal items keep their order.
void Sort_Items(Kt_data_01::TItem_List& List, int Column);
/// The same in a direction of its own.
void Sort_Items(Kt_data_01::TItem_List& list, int column, bool ascending);

/// As a list sorted by priority counts it.
int Effective_Priority(const Kt_data_01::TEventKey& entry);

/// The places of one text of a list's items in the order of these texts, the same for texts that differ in
/// case only. Texts that items share are compared once.
std::vector<std::int64_t> Places_Of_Texts(const Kt_data_01::TItem_List& list,
                                          Kt_data_01::TText Kt_data_01::TEventKey::*text_of);

/// Sorts a list by what `key_of` gives for the item at a position; equal items keep their order, whatever the
/// direction.
template <class TKey_Of>
void Sort_By(Kt_data_01::TItem_List& list, bool ascending, TKey_Of key_of) {
  struct TPlace {
    decltype(key_of(std::size_t{})) Key;
    std::uint32_t Before;
  };
  std::vector<TPlace> places(list.Count());
  for (std::uint32_t i = 0; i < places.size(); ++i) places[i] = {key_of(i), i};
  std::sort(places.begin(), places.end(), [ascending](const TPlace& a, const TPlace& b) {
    if (a.Key != b.Key) return (a.Key < b.Key) == ascending;
    return a.Before < b.Before;
  });
  std::vector<std::uint32_t> order(places.size());
  for (std::size_t i = 0; i < places.size(); ++i) order[i] = places[i].Before;
  list.Reorder(order);
}

/// The order of days on paper and in a terminal: by day, and within it holidays first, then all-day entries,
/// tasks without a time, and the others by time.
bool Comes_Before(const Kt_data_01::TEventKey& a, const Kt_data_01::TEventKey& b);

}  // namespace KTReminds
