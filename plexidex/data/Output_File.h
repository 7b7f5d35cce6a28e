#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

namespace Kt_data_01 {

/// A file that cannot be written: one sentence for the user.
class EOutput_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Brings a whole file to the disk and gives it a name, in place of what has that name; the other one is
/// then gone. Throws EOutput_Error.
void Put_In_Place(const std::string& whole, const std::string& path);

/// A new file beside another one, whose place it takes when it is complete; until then that one stays as it
/// was. Only the user can read it, unless it replaces a file that others may read. What a program that was
/// killed left beside the same file is removed. A device or a pipe is written to itself.
class TOutput_File {
 public:
  /// Throws EOutput_Error, also where a database or a file of one would be overwritten.
  explicit TOutput_File(const std::string& path);
  /// Leaves nothing behind unless the file was kept.
  ~TOutput_File();
  TOutput_File(const TOutput_File&) = delete;
  TOutput_File& operator=(const TOutput_File&) = delete;

  std::ostream& Stream() { return stream; }
  /// Brings all of it to the disk and puts it into its place. Throws EOutput_Error.
  void Keep();

 private:
  [[noreturn]] void Fail(const std::string& why) const;
  void Create();
  void Drop() noexcept;

  const std::string path;
  bool in_place = false;
  std::string target, written;
  int file = -1;  // holds the lock that tells others that somebody still writes
  std::ofstream stream;
};

}  // namespace Kt_data_01
