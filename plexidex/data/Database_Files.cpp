#include "Database_Files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "Database.h"
#include "Kt_data_01.h"

namespace Kt_data_01 {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Side_Files[] = {"-wal", "-shm", "-journal"};

bool Begins_Like_A_Database(const fs::path& path) {
  constexpr std::string_view magic = "SQLite format 3";
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return false;
  char head[magic.size()] = {};
  return std::ifstream(path, std::ios::binary).read(head, sizeof head) &&
         std::string_view(head, sizeof head) == magic;
}

bool Is_Same_File(const fs::path& one, const fs::path& other) {
  std::error_code ignored;
  return fs::equivalent(one, other, ignored);
}

}  // namespace

bool Is_Database_Path(const std::string& path) {
  const auto refuse = [&path](const std::string& why) {
    throw EOpen_Error("\"" + path + "\" cannot be opened as a database: " + why + ".");
  };
  if (path == ":memory:") refuse("a database must be a file");
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return false;
  if (!fs::status_known(status)) refuse(error.message());
  if (fs::is_directory(status)) refuse("it is a folder");
  if (!fs::is_regular_file(status)) refuse("it is not a regular file");
  if (!std::ifstream(path, std::ios::binary)) refuse(std::strerror(errno));
  return true;
}

bool Would_Overwrite_Database(const std::string& path) {
  std::error_code ignored;
  const fs::path target = fs::weakly_canonical(path, ignored);
  const std::string& open = Shared_Database().Path();
  if (!open.empty() && Is_Same_File(open, path)) return true;
  for (const std::string_view side : Side_Files) {
    if (!open.empty() && Is_Same_File(open + std::string(side), path)) return true;
    const std::string name = target.string();
    if (name.ends_with(side) && Begins_Like_A_Database(name.substr(0, name.size() - side.size())))
      return true;
  }
  return Begins_Like_A_Database(path);
}

}  // namespace Kt_data_01
