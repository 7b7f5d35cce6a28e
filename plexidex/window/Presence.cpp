#include "Presence.h"

#include "Database.h"
#include "KTReminds.h"
#include "Kt_forms.h"
#include "Main_Window.h"
#include "Transfer.h"

namespace Plexidex {

using namespace Kt_forms;

TPresence::TPresence(TMain_Window& window, TSingle_Instance& instance, TNotifications& notifications)
    : window(window), alerts(notifications), instance(instance) {
  window.Install_Background([this] { return Goes_On_Hidden(); });
  connect(&tray, &TTray::Open_Wanted, &window, &TMain_Window::Come_Forward);
  connect(&tray, &TTray::Quit_Wanted, &window, &TMain_Window::Quit);
  // Whoever was logged in may be gone since.
  connect(&tray, &TTray::New_Event_Wanted, &window, [&window] {
    if (window.Look_At_Session(false) || window.Come_Forward()) window.New_Entry(false);
  });
  connect(&tray, &TTray::Reminders_Wanted, &alerts, [this, &window] {
    if (window.Look_At_Session(false) || window.Come_Forward()) alerts.Show_Window();
  });
  connect(&window, &TMain_Window::Reminders_Wanted, &alerts, &TAlert_Service::Show_Window);
  connect(&tray, &TTray::Entry_Wanted, &window,
          [&window](bool task, const QString& key, const QString& owner, const QString& book, bool hidden) {
            if (!window.Look_At_Session(false)) return static_cast<void>(window.Come_Forward());
            window.Open_Entry(task, From_Qt(key), From_Qt(owner), From_Qt(book), hidden);
          });
  connect(&window, &TMain_Window::User_Changed, &alerts, [this] {
    alerts.Look();
    tray.Refresh();
  });
  connect(&alerts, &TAlert_Service::Count_Changed, &tray, &TTray::Set_Count);
  connect(&alerts, &TAlert_Service::Count_Changed, &window, &TMain_Window::Show_Waiting);
  connect(&alerts, &TAlert_Service::Entries_Changed, &window, [&window] { Look_At_Rows(&window); });
  connect(&instance, &TSingle_Instance::Called, &window, [&window](const QStringList& files) {
    if (window.Come_Forward()) Import_Files(window, files);
  });
  // The preferences and the database may become others.
  connect(&follow, &QTimer::timeout, this, &TPresence::Follow);
}

void TPresence::Start() {
  constexpr int every_msecs = 3'000;
  Follow();
  follow.start(every_msecs);
  alerts.Start();
}

void TPresence::Follow() {
  tray.Follow_Preferences();
  if (Kt_data_01::Shared_Database().Is_Open()) instance.Answer_For(Kt_data_01::Shared_Database().Path());
}

void Import_Files(TMain_Window& window, const QStringList& files) {
  for (const QString& file : files) {
    if (Import_Into_Chosen_Book(&window, file)) window.Refresh();
  }
}

}  // namespace Plexidex
