#include "Login_Start.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <stdexcept>

#include "Kt_forms.h"
#include "Output_File.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

QString Folder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/autostart");
}

QString Entry_File() {
  return Folder() + QStringLiteral("/plexidex.desktop");
}

// As a desktop entry quotes an argument, and then its value.
QString Quoted(QString path) {
  for (const char* each : {"\\", "\"", "`", "$"}) {
    const QString character = QString::fromLatin1(each);
    path.replace(character, QLatin1Char('\\') + character);
  }
  path.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
  path.replace(QLatin1Char('%'), QStringLiteral("%%"));
  return QLatin1Char('"') + path + QLatin1Char('"');
}

}  // namespace

bool Starts_At_Login() {
  QFile file(Entry_File());
  if (!file.open(QIODevice::ReadOnly)) return false;
  // A desktop's own settings switch an entry off instead of removing it.
  for (const QByteArray& line : file.readAll().split('\n')) {
    const QByteArray text = line.trimmed().toLower().replace(' ', "");
    if (text == "hidden=true" || text == "x-gnome-autostart-enabled=false") return false;
  }
  return true;
}

std::string Login_Start_Fault(bool start) {
  if (start == Starts_At_Login()) return {};
  if (start && !QDir().mkpath(Folder())) return "The folder \"" + From_Qt(Folder()) + "\" cannot be made.";
  return QFileInfo(Folder()).isWritable() ? ""
                                          : "The folder \"" + From_Qt(Folder()) + "\" cannot be written to.";
}

void Set_Start_At_Login(bool start) {
  if (start == Starts_At_Login()) return;
  if (const std::string fault = Login_Start_Fault(start); !fault.empty()) throw std::runtime_error(fault);
  if (!start) {
    if (!QFile::remove(Entry_File()))
      throw std::runtime_error("\"" + From_Qt(Entry_File()) + "\" cannot be removed.");
    return;
  }
  Kt_data_01::TOutput_File file(From_Qt(Entry_File()));
  file.Stream() << "[Desktop Entry]\nType=Application\nName=Plexidex\nComment=Reminders of your calendar\n"
                << "Exec=" << From_Qt(Quoted(QCoreApplication::applicationFilePath())) << " --tray\n"
                << "Icon=plexidex\nTerminal=false\n";
  file.Keep();
}

}  // namespace Plexidex
