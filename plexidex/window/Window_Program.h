#pragma once

#include <string>
#include <vector>

namespace Plexidex {

struct TWindow_Options {
  std::string Database;            // "" is the user's own
  std::string User;                // who one is, in a database with users; "" is the last one
  std::vector<std::string> Files;  // to be imported, after asking
  bool Hidden = false;             // in the notification area alone, where there is one
  /// A folder to write pictures of the windows into, instead of showing them; "" for none.
  std::string Screenshots;
};

/// Whether windows can be shown here.
bool Has_Display();

/// Opens the database, making it with a first book where there is none, and shows the main window until it is
/// closed. Returns the exit status; what goes wrong at the start is one sentence on standard error.
int Run_Window(int argc, char** argv, const TWindow_Options& options);

}  // namespace Plexidex
