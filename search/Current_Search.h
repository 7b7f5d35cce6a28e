#pragma once

#include <memory>
#include <string>

#include "Search_Record.h"

namespace KTReminds {

/// The search that the pages are editing; null until Clear_Search or Load_Filter_Settings makes it. Freed
/// with the package. Nothing may change it while a search runs.
extern std::unique_ptr<TSearchRecord> CurrentSearch;

/// Empties the current search, which is there afterwards.
void Clear_Search();
/// Replaces the current search by a stored filter, or by an empty search when there is none of that name.
/// False, with the search unchanged, when the filter was refused.
bool Load_Filter_Settings(const std::string& Book, const std::string& Name, bool Global);

}  // namespace KTReminds
