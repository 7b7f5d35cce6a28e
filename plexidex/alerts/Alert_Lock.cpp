#include "Alert_Lock.h"

#include <cstdlib>
#include <filesystem>
#include <functional>

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#define KT_HAS_FLOCK 1
#endif

namespace Plexidex {

namespace {

// Of this user and session, emptied when it ends.
std::filesystem::path Runtime_Folder() {
  const char* named = std::getenv("XDG_RUNTIME_DIR");
  std::error_code error;
  if (named && *named && std::filesystem::is_directory(named, error)) return named;
  return std::filesystem::temp_directory_path(error);
}

}  // namespace

std::string Private_Name(const std::string& purpose, const std::string& database) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::weakly_canonical(database, error);
  std::string name = "plexidex-" + purpose + "-" +
                     std::to_string(std::hash<std::string>()(error ? database : path.string()));
#ifdef KT_HAS_FLOCK
  name += "-" + std::to_string(getuid());
#endif
  return name;
}

bool TAlert_Lock::Take(const std::string& database, const std::string& user) {
#ifdef KT_HAS_FLOCK
  const std::string path = (Runtime_Folder() / (Private_Name("alerts", database) + "-" + user)).string();
  if (file >= 0 && held == path) return true;
  Release();
  constexpr int for_the_user_alone = 0600;
  file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, for_the_user_alone);
  if (file < 0) return true;
  if (flock(file, LOCK_EX | LOCK_NB) == 0) {
    held = path;
    return true;
  }
  Release();
  return false;
#else
  held = database + user;
  return true;
#endif
}

void TAlert_Lock::Release() noexcept {
#ifdef KT_HAS_FLOCK
  if (file >= 0) close(file);
#endif
  file = -1;
  held.clear();
}

}  // namespace Plexidex
