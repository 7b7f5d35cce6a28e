#pragma once

#include <QObject>
#include <QStringList>

#include "Alert_Service.h"
#include "Single_Instance.h"
#include "Tray.h"

namespace Plexidex {

class TMain_Window;

/// Ties the main window to what the program is on the desktop besides: its reminders, its icon in the
/// notification area, and what another start of it asks for.
class TPresence : public QObject {
  Q_OBJECT

 public:
  /// All must outlive it.
  TPresence(TMain_Window& window, TSingle_Instance& instance, TNotifications& notifications);

  /// Whether the program goes on when the window is closed.
  bool Goes_On_Hidden() { return tray.Follow_Preferences(); }
  /// From now on reminders go off and other starts are answered.
  void Start();
  TTray& Tray() { return tray; }
  TAlert_Service& Alerts() { return alerts; }

 private:
  void Follow();

  TMain_Window& window;
  TAlert_Service alerts;
  TTray tray;
  TSingle_Instance& instance;
  QTimer follow;
};

/// Brings files in, each into a book that is asked for.
void Import_Files(TMain_Window& window, const QStringList& files);

}  // namespace Plexidex
