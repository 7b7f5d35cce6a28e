#pragma once

#include <QWidget>

#include "Sheet.h"

namespace Plexidex {

// Each reads what is to be printed, with a progress dialog where that takes a while, and says in one sentence
// what fails.

/// Asks for a printer, or a file, and prints.
void Print_With_Dialog(QWidget* window, const TSheet_Request& request);
/// Shows the pages, from where they can be printed.
void Preview_Print(QWidget* window, const TSheet_Request& request);
/// Asks for a file and writes the pages to it.
void Save_As_Pdf(QWidget* window, const TSheet_Request& request);

}  // namespace Plexidex
