#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

namespace Plexidex {

/// What becomes of a name that was typed: nothing when it was saved; otherwise why it cannot be, or "" when
/// the user has been told already. Then the dialog stays open.
using TSave_Name = std::function<std::optional<std::string>(const std::string& name)>;

/// Lets the user enter or change the name of a thing, such as "folder". True when it was saved.
bool Enter_Name(QWidget* window, const QString& title, const QString& thing, const std::string& name,
                const TSave_Name& save);

}  // namespace Plexidex
