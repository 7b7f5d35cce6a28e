#pragma once

#include <string>

#include "Event_Record.h"
#include "Kt_lists.h"

namespace KTReminds {

/// Which tasks a list shows. Overdue and Outstanding are not marked complete; In_Progress is a status. Stored
/// in the settings: never renumber.
enum class TTask_Filter : int { All = 1, Overdue = 2, In_Progress = 3, Completed = 4, Outstanding = 5 };
/// Of a stored number; All for another one.
TTask_Filter Task_Filter_Of(std::int64_t number);
/// What a list says above its tasks.
std::string Task_Caption(TTask_Filter filter);
std::string Task_Results_Caption(std::size_t found);

/// Clears a list and fills it with the tasks that the user may see, of a contact, or of the whole book where
/// the owner is its calendar record or nobody, sorted by Sort_Tasks; their first text is the name of their
/// status. A task that recurs is shown once: by its first date that is not marked complete, or the last one.
/// After a failed read, which is reported, the list is empty.
void Build_Task_List(const TOwner& owner, TTask_Filter filter, Kt_data_01::TItem_List& list);

}  // namespace KTReminds
