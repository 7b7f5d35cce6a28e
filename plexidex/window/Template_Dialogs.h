#pragma once

#include <QWidget>
#include <string>

#include "Templates.h"

namespace Plexidex {

/// Lets the user add, change and remove the templates of a book. Each change is kept at once.
void Edit_Templates(QWidget* window, const std::string& book);
/// Lets the user change one, or enter one that has no key yet. Its key, "" while it has none.
std::string Edit_Template(QWidget* window, const Kt_data_01::TTemplate& edited);

}  // namespace Plexidex
