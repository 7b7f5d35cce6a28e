#include "Alert_Lock.h"

#include <filesystem>
#include <functional>

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#define KT_HAS_FLOCK 1
#endif

namespace Plexidex {

namespace {

// The same for all programs of the user, whether started in a session or by a timer: the environment of the
// one does not reach the other.
std::filesystem::path Runtime_Folder() {
  std::error_code error;
#ifdef KT_HAS_FLOCK
  const std::filesystem::path own = "/run/user/" + std::to_string(getuid());
  if (std::filesystem::is_directory(own, error) && access(own.c_str(), W_OK) == 0) return own;
  return "/tmp";
#else
  return std::filesystem::temp_directory_path(error);
#endif
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
  // A file that was cleaned away is locked by nobody else.
  struct stat now {};
  if (file >= 0 && held == path && fstat(file, &now) == 0 && now.st_nlink > 0) return true;
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
