#pragma once

#include <QMimeData>
#include <optional>
#include <string>
#include <vector>

namespace Plexidex {

/// Contacts and folders of a book on their way to a folder.
struct TDragged_Contacts {
  std::string Book;
  std::vector<std::string> Keys;
};
/// Owned by the caller; null without keys.
QMimeData* To_Mime(const TDragged_Contacts& dragged);
/// Nothing for what was dragged from elsewhere.
std::optional<TDragged_Contacts> From_Mime(const QMimeData* mime);

}  // namespace Plexidex
