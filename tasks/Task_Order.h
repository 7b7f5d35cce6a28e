#pragma once

#include "Kt_lists.h"

namespace KTReminds {

/// By what the lists of tasks are sorted, and the direction: 0 start date, 1 date due, 2 description, 3
/// status, 4 percentage, 5 priority. At first by the date due, ascending.
inline constexpr int Task_Column_Due = 1;
extern int TaskSortKey;
extern bool TaskSortAscending;

/// Sorts a list of tasks, whose first texts are the names of their status. Ties go by date due and then
/// status, but those of the dates and of the description by status alone; what is equal keeps its order.
void Sort_Tasks(Kt_data_01::TItem_List& list);

}  // namespace KTReminds
