#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace Plexidex {

/// Lets the user change the preferences. When they were saved, the database file that the user wants to work
/// with, which can be opened but is not opened here; `database` is the one in use.
std::optional<std::string> Edit_Preferences(QWidget* window, const std::string& database);

/// Puts a database first among those that the preferences offer as recently opened.
void Remember_Database(const std::string& path);

}  // namespace Plexidex
