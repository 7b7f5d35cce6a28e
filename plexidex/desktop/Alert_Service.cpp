#include "Alert_Service.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_forms;

TAlert_Service::TAlert_Service(TNotifications& notifications) : notifications(notifications) {
  timer.setSingleShot(true);
  connect(&timer, &QTimer::timeout, this, &TAlert_Service::Tick);
  connect(&window, &TAlert_Window::Answered, this, [this] {
    Look();
    emit Entries_Changed();
  });
}

// Nobody is left to hear a click.
TAlert_Service::~TAlert_Service() {
  for (const TNotified& each : notified) notifications.Close(each.Number);
}

void TAlert_Service::Start() {
  Tick();
}

void TAlert_Service::Show_Window() {
  Look();
  if (Count() > 0) return window.Come_Forward();
  Kt_util_01::Raise_Info("Reminders", watch.Is_Elsewhere()
                                          ? "Another program shows the reminders of this database now."
                                          : "No reminder waits for an answer.");
}

void TAlert_Service::Tick() {
  Look();
  timer.start(watch.Wait());
}

void TAlert_Service::Look() {
  bool news = false;
  try {
    news = watch.Look();
    unreadable = false;
  } catch (const std::exception& e) {
    // Said once: a dialog every few seconds would take the keyboard.
    if (!std::exchange(unreadable, true))
      Kt_util_01::Raise_Notice(std::string("The reminders cannot be read: ") + e.what());
  }
  const std::int64_t now = Kt_util_01::To_Msecs(Kt_util_01::Now()) / 60'000;
  if (!news) {
    if (window.isVisible() && now != minute) window.Update_Lateness();
    minute = now;
    return;
  }
  minute = now;
  window.Set_Entries(watch.Entries());
  if (Count() != told) emit Count_Changed(told = Count());
  Close_Answered();
  if (watch.News().empty()) return;
  window.Appear();
  Play_Alert_Sound(watch.News().front().Sound);
  if (!QApplication::activeWindow()) Notify();
}

void TAlert_Service::Notify() {
  constexpr std::size_t most = 3;
  QStringList lines;
  TNotified news;
  for (const TAlert_Entry& entry : watch.News()) {
    if (news.Alerts.size() < most) lines << To_Qt(Alert_Text(entry, Kt_util_01::Now()));
    news.Alerts.push_back(entry.Alert);
  }
  if (news.Alerts.size() > most) lines << tr("%1 more...").arg(news.Alerts.size() - most);
  news.Number = notifications.Show(tr("Reminder"), lines.join(QLatin1Char('\n')), [this] { Show_Window(); });
  notified.push_back(std::move(news));
}

void TAlert_Service::Close_Answered() {
  const auto waits = [this](const Kt_data_01::TAlert& alert) {
    return std::any_of(watch.Entries().begin(), watch.Entries().end(), [&](const TAlert_Entry& entry) {
      return entry.Key() == alert.Occurrence && entry.Alert.Due == alert.Due;
    });
  };
  std::erase_if(notified, [&](const TNotified& each) {
    if (std::any_of(each.Alerts.begin(), each.Alerts.end(), waits)) return false;
    notifications.Close(each.Number);
    return true;
  });
}

}  // namespace Plexidex
