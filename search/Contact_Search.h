#pragma once

#include <cstdint>
#include <string>

#include "Kt_lists.h"
#include "Kt_tree.h"

namespace KTReminds {

/// Adds the contacts of a type and a book, or of the folder of the current search, that meet all its criteria
/// and that the user may see ("" is the current one), below a node of a tree, and sorts what is there by
/// name. Without criteria these are all. Nothing is added before the end. Deleted contacts are not found.
/// Elapsed is in milliseconds. Progress may be null; when it throws EAlready_Reported the search stops with
/// what it has found. False then, and after a failed read, which is reported and adds nothing.
bool SearchContacts(const std::string& Book, const std::string& User, Kt_data_01::TTree_Node& Parent,
                    Kt_data_01::TTree& Tree, std::int64_t& Elapsed, int ContactType,
                    Kt_data_01::TProgress_Bar* Progress = nullptr);

}  // namespace KTReminds
