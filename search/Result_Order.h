#pragma once

#include "Kt_lists.h"

namespace KTReminds {

/// By what the list of what a calendar search has found is sorted, and the direction: a column code as the
/// calendar views have it, 5 for the kind or 6 for the owner. It is the list's own, by date at first.
extern int ResultsSortKey;
extern bool ResultsSortAscending;

void Sort_Results(Kt_data_01::TItem_List& list);

}  // namespace KTReminds
