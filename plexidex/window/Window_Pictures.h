#pragma once

#include <string>

namespace Plexidex {

class TMain_Window;

/// Shows the main window with each of its pages, and each dialog, in turn and writes a picture of each into a
/// folder, which is made. Nothing is saved. Returns an exit status; a picture that cannot be written is one
/// sentence on standard error.
int Write_Pictures(TMain_Window& main_window, const std::string& folder);

}  // namespace Plexidex
