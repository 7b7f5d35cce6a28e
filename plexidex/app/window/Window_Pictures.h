#pragma once

#include <string>

class QWidget;

namespace Plexidex {

/// Shows the main window and each editor in turn and writes a picture of each into a folder, which is made.
/// Nothing is saved. Returns an exit status; a picture that cannot be written is one sentence on standard
/// error.
int Write_Pictures(QWidget& main_window, const std::string& folder);

}  // namespace Plexidex
