#pragma once

#include <cstdint>
#include <string>

#include "Kt_lists.h"

namespace KTReminds {

/// The texts of a found entry's item, in order; its caption is its title. Those of a private entry say so.
enum class TFound_Column { Date, Title, Kind, Owner };

/// Clears a list and fills it with the events and tasks of a book, and the holidays, that meet the current
/// search, sorted as Sort_Results does; without criteria with none. An event or task must meet all criteria,
/// and one that is not about its kind counts only if it is the first: then none is found. A holiday must meet
/// one of those about it. Tasks have the name of their status as first text. Elapsed is in milliseconds.
/// Progress may be null; when it throws EAlready_Reported the search stops with what it has found. False
/// then, and after a failed read, which is reported and leaves the list empty.
bool SearchCalendar(const std::string& Book, Kt_data_01::TItem_List& List, std::int64_t& Elapsed,
                    Kt_data_01::TProgress_Bar* Progress = nullptr);

}  // namespace KTReminds
