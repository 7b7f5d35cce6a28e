#pragma once

namespace KTReminds {

/// Gets the module ready for a host: the calendar views and the tasks start sorted by date, ascending. To be
/// called once the host's seams are installed and before any other entry point. Does nothing while the module
/// is loaded.
void Load_Package();

/// Frees what the module keeps between calls. To be called when its pages and editors are closed, before the
/// host's seams go. Does nothing while the module is not loaded. It may be loaded again, and then starts
/// afresh.
void Unload_Package();

}  // namespace KTReminds
