#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "Navigation_Tree.h"

namespace Plexidex {

/// The names by which a setting knows what is shown at the start, and what the user is told; the first is the
/// default.
std::vector<std::pair<std::string, QString>> Start_Pages();
std::string Chosen_Start_Page();
void Choose_Start_Page(const std::string& name);

/// Selects the node to begin with; false when nothing is chosen or remembered that is there.
bool Select_Start_Node(TNavigation_Tree& tree);
/// So that the next start may begin there.
void Remember_Node(const TNode& node);

}  // namespace Plexidex
