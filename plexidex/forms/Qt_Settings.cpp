#include "Qt_Settings.h"

#include <QFile>
#include <QStandardPaths>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

QString Key(const std::string& section, const std::string& name) {
  return QStringLiteral("Common/") + To_Qt(section) + QLatin1Char('/') + To_Qt(name);
}

// A file is damaged when it holds what is neither a group nor a value: reading it would lose the rest, and
// the first value that is written all of it. Nothing at all is what a power cut leaves of a file.
bool Is_Damaged(const QString& name) {
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) return false;
  QByteArray content = file.readAll();
  if (content.isEmpty()) return true;
  if (content.startsWith("\xEF\xBB\xBF")) content.remove(0, 3);
  for (const QByteArray& line : content.split('\n')) {
    const QByteArray text = line.trimmed();
    const bool is_group = text.startsWith('[') && text.endsWith(']');
    const bool is_value = !text.startsWith('[') && text.indexOf('=') > 0;
    const bool is_nothing = text.isEmpty() || text.startsWith(';') || text.startsWith('#');
    if (text.contains('\0') || !(is_nothing || is_group || is_value)) return true;
  }
  return false;
}

std::string Set_Aside_If_Damaged(const QString& name) {
  if (!Is_Damaged(name)) return "";
  const QString kept = name + QStringLiteral(".damaged-") +
                       To_Qt(Kt_util_01::FormatDateTime("yyyy-mm-dd-hhnnss", Kt_util_01::Now()));
  if (!QFile::rename(name, kept))
    return "The settings in \"" + From_Qt(name) +
           "\" are damaged and cannot be set aside; what can be read of them counts.";
  return "The settings in \"" + From_Qt(name) + "\" were damaged; they are kept as \"" + From_Qt(kept) +
         "\", and all preferences are as at first.";
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

TQt_Settings::TQt_Settings(const QString& file)
    : damage(Set_Aside_If_Damaged(file)), settings(file, QSettings::IniFormat) {}

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
