#pragma once

#include <QObject>
#include <QTimer>
#include <vector>

#include "Alert_Watch.h"
#include "Alert_Window.h"
#include "Notifications.h"

namespace Plexidex {

/// Has reminders go off while the program runs: looks what is due, shows it, plays its sound, and notifies
/// the desktop when no window of the program is in front.
class TAlert_Service : public QObject {
  Q_OBJECT

 public:
  /// The notifications must outlive it.
  explicit TAlert_Service(TNotifications& notifications);
  ~TAlert_Service() override;

  /// Begins to look, now and whenever something is due.
  void Start();
  /// Looks at once, as after an answer. Never while an update is open.
  void Look();
  /// Shows the window because somebody asks for it; says so when there is nothing to show.
  void Show_Window();
  TAlert_Window& Window() { return window; }
  int Count() const { return static_cast<int>(watch.Entries().size()); }

 signals:
  /// An entry may have been changed, or marked done.
  void Entries_Changed();
  /// How many wait is another number.
  void Count_Changed(int count);

 private:
  // What the desktop was told of, until it has been answered.
  struct TNotified {
    int Number;
    std::vector<Kt_data_01::TAlert> Alerts;
  };

  void Tick();
  void Notify();
  void Close_Answered();

  TAlert_Watch watch;
  TAlert_Window window;
  TNotifications& notifications;
  std::vector<TNotified> notified;
  QTimer timer;
  int told = 0;
  bool unreadable = false;
  std::int64_t minute = 0;  // for which the window says how late each is
};

}  // namespace Plexidex
