#include "Alert_Service.h"

#include <QApplication>
#include <utility>

#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Notifications.h"

namespace Plexidex {

using namespace Kt_forms;

TAlert_Service::TAlert_Service() {
  timer.setSingleShot(true);
  connect(&timer, &QTimer::timeout, this, &TAlert_Service::Tick);
  connect(&window, &TAlert_Window::Answered, this, [this] {
    Look();
    emit Entries_Changed();
  });
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
    if (!std::exchange(unreadable, true)) {
      Kt_util_01::Raise_Notice(std::string("The reminders cannot be read: ") + e.what());
      Notify_Desktop(tr("Reminders cannot be read"), QString::fromUtf8(e.what()));
    }
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
  if (watch.News().empty()) return;
  window.Appear();
  Play_Alert_Sound(watch.News().front().Sound);
  if (QApplication::activeWindow()) return;
  constexpr std::size_t most = 3;
  QStringList lines;
  for (std::size_t i = 0; i < watch.News().size() && i < most; ++i)
    lines << To_Qt(Alert_Text(watch.News()[i], Kt_util_01::Now()));
  if (watch.News().size() > most) lines << tr("%1 more...").arg(watch.News().size() - most);
  Notify_Desktop(tr("Reminder"), lines.join(QLatin1Char('\n')));
}

}  // namespace Plexidex
