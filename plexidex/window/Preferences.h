#pragma once

#include <QWidget>
#include <string>

namespace Plexidex {

/// Lets the user change the preferences. True when they were saved; `database` is then the file that the user
/// wants to work with, which is not opened here.
bool Edit_Preferences(QWidget* window, std::string& database);

}  // namespace Plexidex
