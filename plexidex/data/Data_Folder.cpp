#include "Data_Folder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace Kt_data_01 {

std::string Default_Database() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::filesystem::path(value ? value : "");
  };
  std::filesystem::path folder;
#if defined(_WIN32)
  folder = variable("APPDATA");
#elif defined(__APPLE__)
  if (!variable("HOME").empty()) folder = variable("HOME") / "Library" / "Application Support";
#else
  folder = variable("XDG_DATA_HOME");
  // A relative path is to be ignored by the base directory rules.
  if (!folder.is_absolute()) folder = variable("HOME").empty() ? "" : variable("HOME") / ".local" / "share";
#endif
  if (folder.empty()) throw std::runtime_error("There is no user data folder; name a file with --database.");
  return (folder / "plexidex" / "plexidex.db").string();
}

}  // namespace Kt_data_01
