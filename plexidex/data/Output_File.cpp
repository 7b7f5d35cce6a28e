#include "Output_File.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Database_Files.h"
#include "Kt_util_01.h"

#if defined(__unix__) || defined(__APPLE__)
#define KT_POSIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Kt_data_01 {

namespace {

namespace fs = std::filesystem;

constexpr auto Mark = ".new-";

#ifdef KT_POSIX

constexpr std::size_t Key_Length = 36;
constexpr mode_t Own = S_IRUSR | S_IWUSR;

// Removes what was being written to take this file's place by programs that are gone.
void Remove_Leftovers(const fs::path& target) {
  const std::string beginning = target.filename().string() + Mark;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(target.parent_path(), ignored)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(beginning) || name.size() != beginning.size() + Key_Length) continue;
    const int file = ::open(entry.path().c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) continue;
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) fs::remove(entry.path(), ignored);
    ::close(file);
  }
}

bool Sync(const fs::path& file_or_folder) {
  const int file = ::open(file_or_folder.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool synced = ::fsync(file) == 0;
  ::close(file);
  return synced;
}

#endif

[[noreturn]] void Fail_To_Write(const std::string& path, const std::string& why) {
  throw EOutput_Error("\"" + path + "\" cannot be written: " + why + ".");
}

}  // namespace

void Put_In_Place(const std::string& whole, const std::string& path) {
#ifdef KT_POSIX
  if (!Sync(whole)) Fail_To_Write(path, std::strerror(errno));
#endif
  std::error_code error;
  fs::rename(whole, path, error);
  if (error) Fail_To_Write(path, error.message());
#ifdef KT_POSIX
  Sync(fs::absolute(path, error).parent_path());
#endif
}

TOutput_File::TOutput_File(const std::string& path) : path(path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::status_known(status)) Fail(error.message());
  if (fs::is_directory(status)) Fail("it is a folder");
  if (Would_Overwrite_Database(path)) Fail("it belongs to a database");
  in_place = fs::exists(status) && !fs::is_regular_file(status);
  target = in_place ? path : fs::weakly_canonical(path, error).string();
  if (error) Fail(error.message());
  written = in_place ? path : target + Mark + Kt_util_01::Get_GUID();
  if (!in_place) Create();
  stream.open(written, std::ios::binary);
  if (stream) return;
  const std::string why = std::strerror(errno);
  Drop();
  Fail(why);
}

void TOutput_File::Create() {
#ifdef KT_POSIX
  Remove_Leftovers(target);
  struct stat created = {};
  do {
    if (file >= 0) ::close(file);
    file = ::open(written.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, Own);
    if (file < 0) Fail(std::strerror(errno));
    // Before it was locked another program may have taken it for a leftover.
  } while (::flock(file, LOCK_EX) == 0 && ::fstat(file, &created) == 0 && created.st_nlink == 0);
#endif
}

TOutput_File::~TOutput_File() {
  Drop();
}

void TOutput_File::Drop() noexcept {
  std::error_code ignored;
  if (!in_place && !written.empty()) fs::remove(written, ignored);
#ifdef KT_POSIX
  if (file >= 0) ::close(file);
#endif
}

void TOutput_File::Keep() {
  if (!stream.flush()) {
    // Why is asked for by writing again; what went wrong has left errno long ago.
    stream.clear();
    errno = 0;
    stream << '\n' << std::flush;
    Fail(errno != 0 ? std::strerror(errno) : "not all of it was taken");
  }
  stream.close();
  if (in_place) return;
  std::error_code error;
  // Who may read the file stays as it was.
  if (const auto status = fs::status(target, error); fs::exists(status))
    fs::permissions(written, status.permissions(), error);
  Put_In_Place(written, target);
  written.clear();
}

void TOutput_File::Fail(const std::string& why) const {
  Fail_To_Write(path, why);
}

}  // namespace Kt_data_01
