#pragma once

#include <map>
#include <string>

#include "Kt_util_01.h"

namespace Kt_util_01 {

/// Settings in a text file of sections and "name=value" lines. Any text is kept as it is; what could not
/// stand on a line is written as "\xHH". Lines that say nothing are dropped by the next write. A missing file
/// is empty.
class TIni_Settings : public TSettings_Store {
 public:
  /// Throws std::runtime_error when the file is there and cannot be read.
  explicit TIni_Settings(const std::string& path);

  bool Read(const std::string& section, const std::string& name, std::string& value) override;

  /// Writes the file at once, through a temporary one beside it, so that it is always whole. What another
  /// process wrote meanwhile is kept. Creates the folder if need be. Throws std::runtime_error when the file
  /// cannot be read or written; it is then unchanged.
  void Write(const std::string& section, const std::string& name, const std::string& value) override;

 private:
  using TValues = std::map<std::string, std::map<std::string, std::string>>;

  static TValues Load(const std::string& path);
  void Save(const TValues& values) const;

  std::string m_Path;
  TValues m_Values;
};

}  // namespace Kt_util_01
