#include "Window_Program.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QTimer>
#include <clocale>
#include <iostream>

#include "Books.h"
#include "Clip_Sounds.h"
#include "Data_Folder.h"
#include "Database.h"
#include "Editor_Rules.h"
#include "Host_Dialog.h"
#include "KTReminds.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Login.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Message_Prompts.h"
#include "Notifications.h"
#include "Presence.h"
#include "Qt_Settings.h"
#include "Rights.h"
#include "Sample_Calendar.h"
#include "Single_Instance.h"
#include "Transfer.h"
#include "User_Formats.h"
#include "Users.h"
#include "Waiting.h"
#include "Welcome.h"
#include "Window_Pictures.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

// No exception may leave an event handler: here the last ones are turned into a report.
class TApplication : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (...) {
      Kt_data_01::FailRead("Window_Program:notify");
      return false;
    }
  }
};

std::string Chosen_Database(const TWindow_Options& options) {
  if (!options.Database.empty()) return options.Database;
  const std::string preferred = Kt_util_01::Read_String("General", "Database", "");
  return preferred.empty() ? Kt_data_01::Default_Database() : preferred;
}

// There is always a book to write into at the start.
void Make_First_Book(const std::string& name) {
  if (!Kt_data_01::List_Books().empty() ||
      !Kt_data_01::Access_Allowed(Kt_data_01::Whole_Database, Kt_data_01::Access_Create))
    return;
  Update_Host("Window_Program:Make_First_Book [KT_Books/KT_Contacts]", [&] {
    // Another program may have been faster.
    if (Kt_data_01::List_Books().empty()) Kt_data_01::Create_Book(name);
  });
}

// Brings in what the user wants to begin with. The window is shown already, so that it is clear what for.
void Fill_First_Book(TMain_Window& window, const TFirst_Book& first) {
  if (!first.Calendar_File.empty()) Import_With_Progress(&window, first.Name, To_Qt(first.Calendar_File));
  try {
    if (first.Sample) Fill_With_Sample(first.Name, Kt_util_01::Today());
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Welcome", e.what());
  }
  if (first.Sample || !first.Calendar_File.empty()) window.Refresh();
}

// False when the user leaves before saying who it is.
bool Enter(const TWindow_Options& options) {
  if (options.Screenshots.empty()) return Begin_Session(nullptr, options.User);
  if (Kt_data_01::DB_Permissions && !Kt_data_01::Enter_As(Kt_data_01::Database_Owner()))
    throw std::runtime_error("Pictures are taken only of a database that asks for no password.");
  return true;
}

int Show_Windows(const TWindow_Options& options, TNotifications& notifications) {
  const std::string database = Chosen_Database(options);
  QStringList files;
  for (const std::string& file : options.Files) files << To_Qt(file);
  TSingle_Instance instance;
  if (options.Screenshots.empty()) {
    if (TSingle_Instance::Call(database, files)) return 0;
    instance.Answer_For(database);  // already while somebody logs in
  }
  TFirst_Book first;
  const bool ask = options.Screenshots.empty() && !QFile::exists(To_Qt(database));
  if (ask) {
    const auto chosen = Welcome(database);
    if (!chosen) return 0;
    first = *chosen;
  }
  Kt_data_01::Open_Database(database, Kt_data_01::TDatabase::TMode::Create_If_Missing, Window_Options());
  if (!Enter(options)) return 0;
  Make_First_Book(first.Name);
  KTReminds::Remove_Abandoned_Events();
  TMain_Window window;
  if (!options.Screenshots.empty()) return Write_Pictures(window, options.Screenshots);
  // A dialog that is closed while the window is hidden does not end the program.
  QApplication::setQuitOnLastWindowClosed(false);
  QObject::connect(&window, &TMain_Window::Closed, qApp, &QApplication::quit, Qt::QueuedConnection);
  TPresence presence(window, instance, notifications);
  if (options.Hidden && Kt_util_01::Read_Bool("General", "Tray", false)) {
    // At login the program may come before the notification area does.
    constexpr int enough_msecs = 15'000;
    QTimer::singleShot(enough_msecs, &window, [&] {
      if (!presence.Goes_On_Hidden()) window.show();
    });
  } else {
    window.show();
  }
  Fill_First_Book(window, first);
  Import_Files(window, files);
  presence.Start();
  return QApplication::exec();
}

}  // namespace

bool Has_Display() {
#if defined(__linux__)
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
  return true;
#endif
}

int Run_Window(int argc, char** argv, const TWindow_Options& options) {
  if (!options.Screenshots.empty() && !Has_Display()) qputenv("QT_QPA_PLATFORM", "offscreen");
  TApplication application(argc, argv);
  // Numbers are written for the user by the program's own routines, and for everything else with a dot.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName(QStringLiteral("Plexidex"));
  QGuiApplication::setDesktopFileName(QStringLiteral("plexidex"));
  QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/plexidex.svg")));
  Reserve_Messages();
  TNotifications notifications;
  TMessage_Prompts prompts([&](const QString& text) {
    notifications.Show(QStringLiteral("Plexidex"), text, [] {
      for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* main = qobject_cast<TMain_Window*>(window)) main->Come_Forward();
    });
  });
  TQt_Settings settings;
  TClip_Sounds sounds;
  Kt_util_01::Install_Prompts(&prompts);
  Kt_util_01::Install_Settings(&settings);
  Kt_util_01::Apply_User_Formats();
  if (!settings.Damage().empty() && options.Screenshots.empty())
    Kt_util_01::Raise_Error("User Preferences", settings.Damage());
  if (options.Screenshots.empty()) Kt_util_01::Install_Sounds(&sounds);
  Kt_util_01::CurrentDate = Kt_util_01::Today();
  KTReminds::Load_Package();
  int status = 1;
  try {
    status = Show_Windows(options, notifications);
  } catch (const std::exception& e) {
    std::cerr << e.what() << std::endl;
    if (options.Screenshots.empty()) Kt_util_01::Raise_Error("Plexidex", e.what());
  }
  KTReminds::Unload_Package();
  Kt_data_01::Close_Database();
  Kt_util_01::Install_Sounds(nullptr);
  Kt_util_01::Install_Settings(nullptr);
  Kt_util_01::Install_Prompts(nullptr);
  return status;
}

}  // namespace Plexidex
