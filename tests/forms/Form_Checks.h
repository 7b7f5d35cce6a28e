#pragma once

#include <QPalette>
#include <QWidget>
#include <string>

/// What is wrong with a form that is shown, one line each: a visible control smaller than its text needs, an
/// input or button without an accessible name, a mnemonic that two visible controls claim, a minimum height
/// that does not fit a screen of 768 pixels. "" when nothing is.
std::string Make_Checks(QWidget* form);

/// While it lives, the program has a palette of light texts on dark grounds, or the one that it had.
struct TPalette_Scope {
  explicit TPalette_Scope(bool dark);
  ~TPalette_Scope();

 private:
  const QPalette before;
};
