#pragma once

#include <QWidget>
#include <string>

namespace Plexidex {

/// Whether the current user is an administrator, or the database has no users; tells the user otherwise.
bool May_Administer(const std::string& caption);

/// Lets users be added, changed and removed, by administrators.
void Edit_Users(QWidget* window);
/// Lets passwords be asked for or not, and sets what everybody may do where nothing else is said; for
/// administrators.
void Edit_Security(QWidget* window);

}  // namespace Plexidex
