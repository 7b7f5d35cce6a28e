#pragma once

#include <QWidget>
#include <string>

namespace Plexidex {

/// Makes a user of the open database the current one, where it has users. Asks for name and password where
/// it wants them, and otherwise, unless this user's choice is remembered, who one is. False when the user
/// leaves that; nobody is the current user then. `name` is who one wants to be, "" the last time's.
bool Begin_Session(QWidget* window, const std::string& name = {});
/// Asks in any case. False, and all as before, when the user cancels.
bool Log_In_Again(QWidget* window);
/// The next session begins as the current user. For one who has become a user without being asked.
void Remember_User();

}  // namespace Plexidex
