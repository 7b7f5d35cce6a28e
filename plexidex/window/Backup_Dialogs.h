#pragma once

#include <QWidget>
#include <string>

namespace Plexidex {

/// Asks for a file and copies the shared database into it.
void Back_Up_With_Dialog(QWidget* window);

/// Asks which backup is to take the place of the shared database, and whether it is meant; "" if not.
std::string Ask_What_To_Restore(QWidget* window);

/// From now on makes the daily backups, of whatever database is the shared one, as long as the owner lives. A
/// failure is told once a day.
void Start_Daily_Backups(QObject* owner);

}  // namespace Plexidex
