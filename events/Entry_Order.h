#pragma once

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

/// The order of days on paper and in a terminal: by day, and within it holidays first, then all-day entries,
/// tasks without a time, and the others by time.
bool Comes_Before(const Kt_data_01::TEventKey& a, const Kt_data_01::TEventKey& b);

}  // namespace KTReminds
