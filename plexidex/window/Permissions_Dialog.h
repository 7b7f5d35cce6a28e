#pragma once

#include <string>

class QWidget;

namespace Plexidex {

/// Shows who may do what with a book, or with something in it: `kind` is one of KTAccess::TKind. What is
/// changed there is written at once.
void Edit_Permissions(QWidget* window, const std::string& book, const std::string& owner, int kind);

}  // namespace Plexidex
