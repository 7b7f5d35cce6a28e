#pragma once

#include <optional>
#include <string>

namespace Plexidex {

/// What a first start shall begin with.
struct TFirst_Book {
  std::string Name = "My Calendar";
  bool Sample = false;
  std::string Calendar_File;  // "" for none
};

/// Asks what a new database in `file` shall hold; nothing is made yet. Nothing when the user leaves.
std::optional<TFirst_Book> Welcome(const std::string& file);

}  // namespace Plexidex
