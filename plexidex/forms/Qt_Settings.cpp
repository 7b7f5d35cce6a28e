#include "Qt_Settings.h"

#include <QStandardPaths>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

QString Key(const std::string& section, const std::string& name) {
  return QStringLiteral("Common/") + To_Qt(section) + QLatin1Char('/') + To_Qt(name);
}

#ifndef Q_OS_WIN
QString User_File() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/Corvane/Plexidex 2000.ini");
}
#endif

}  // namespace

#ifdef Q_OS_WIN
TQt_Settings::TQt_Settings()
    : settings(QStringLiteral("HKEY_CURRENT_USER\\Software\\Corvane\\Plexidex 2000"),
               QSettings::NativeFormat) {}
#else
TQt_Settings::TQt_Settings() : TQt_Settings(User_File()) {}
#endif

TQt_Settings::TQt_Settings(const QString& file) : settings(file, QSettings::IniFormat) {}

bool TQt_Settings::Read(const std::string& section, const std::string& name, std::string& value) {
  const QVariant found = settings.value(Key(section, name));
  if (!found.isValid()) return false;
  value = From_Qt(found.toString());
  return true;
}

void TQt_Settings::Write(const std::string& section, const std::string& name, const std::string& value) {
  settings.setValue(Key(section, name), To_Qt(value));
  settings.sync();
  const bool failed = settings.status() != QSettings::NoError;
  if (failed && !told) {
    Kt_util_01::Raise_Notice("The settings cannot be written to \"" + From_Qt(settings.fileName()) +
                             "\"; they last until the program ends.");
  }
  told = failed;
}

}  // namespace Kt_forms
