#pragma once

#include <string>

namespace Plexidex {

/// What a first start shall begin with.
struct TFirst_Book {
  std::string Name = "My Calendar";
  bool Sample = false;
  std::string Calendar_File;  // "" for none
};

/// Asks what a new database in `file` shall hold; nothing is made yet. False when the user leaves.
bool Welcome(const std::string& file, TFirst_Book& first);

}  // namespace Plexidex
