#pragma once

#include "Sqlite_Engine.h"

namespace Plexidex {

/// How the window's database is opened: while another program is writing to it, a change waits for as long as
/// the user does, who is shown for what and can cancel.
Kt_data_01::TSqlite_Options Window_Options();

}  // namespace Plexidex
