#pragma once

#include <string>

namespace Plexidex {

/// Held by the one program that shows a user's reminders of a database on this machine; it is free again when
/// that program ends, however it ends.
class TAlert_Lock {
 public:
  TAlert_Lock() = default;
  ~TAlert_Lock() { Release(); }
  TAlert_Lock(const TAlert_Lock&) = delete;
  TAlert_Lock& operator=(const TAlert_Lock&) = delete;

  /// True when this program holds it, from now on or already. Where files cannot be locked, every program
  /// does.
  bool Take(const std::string& database, const std::string& user);
  void Release() noexcept;

 private:
  std::string held;  // the file
  int file = -1;
};

/// The name of a file or socket that belongs to a purpose and a database: the same for all programs of the
/// user that have the database open, by whatever path.
std::string Private_Name(const std::string& purpose, const std::string& database);

}  // namespace Plexidex
