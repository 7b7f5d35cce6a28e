#pragma once

#include <QString>

namespace Plexidex {

/// Shows a notification of the desktop for a while. Does nothing where there is no such service; what
/// becomes of it is not waited for.
void Notify_Desktop(const QString& title, const QString& text);

}  // namespace Plexidex
