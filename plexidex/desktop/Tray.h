#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <string>

namespace Plexidex {

/// The program's icon in the notification area, where the desktop has one: it stands there while the user
/// wants the program to go on without its window.
class TTray : public QObject {
  Q_OBJECT

 public:
  TTray();

  /// Shows or removes the icon as the preferences say. True when it is shown.
  bool Follow_Preferences();
  /// How many reminders wait.
  void Set_Count(int count);
  /// Shows another user's day.
  void Refresh();
  QMenu& Menu() { return menu; }

 signals:
  void Open_Wanted();
  void New_Event_Wanted();
  void Reminders_Wanted();
  void Quit_Wanted();
  void Entry_Wanted(bool task, const QString& key, const QString& owner, const QString& book,
                    bool is_private);

 private:
  void Fill_Menu();
  void Add_Today();

  QSystemTrayIcon icon;
  QMenu menu;
  int count = 0;
};

}  // namespace Plexidex
