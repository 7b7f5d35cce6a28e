#pragma once

#include <QSettings>

#include "Kt_util_01.h"

namespace Kt_forms {

/// The user's settings: the registry on Windows, an INI file elsewhere.
class TQt_Settings : public Kt_util_01::TSettings_Store {
 public:
  /// Where the user's settings lie, under "Corvane" and "Plexidex 2000", group "Common".
  TQt_Settings();
  /// In a file of one's own. One that is damaged is given another name beside it, and settings begin anew.
  explicit TQt_Settings(const QString& file);

  /// A sentence for the user when the file was damaged; otherwise "".
  const std::string& Damage() const { return damage; }

  bool Read(const std::string& section, const std::string& name, std::string& value) override;
  /// Tells the user once when the settings cannot be written.
  void Write(const std::string& section, const std::string& name, const std::string& value) override;

 private:
  std::string damage;  // looked for before the file is read
  QSettings settings;
  bool told = false;  // that the settings cannot be written
};

}  // namespace Kt_forms
