#pragma once

#include <QMainWindow>
#include <QTimer>
#include <string>

class QLabel;

namespace Plexidex {

/// Asks for a file and copies the shared database into it.
void Back_Up_With_Dialog(QWidget* window);

/// Asks which backup is to take the place of the shared database, and whether it is meant; "" if not.
std::string Ask_What_To_Restore(QWidget* window);

/// Makes the daily backups, of whatever database is the shared one. While they fail the status bar of a
/// window says so, and they are tried again every hour; each fault is told once.
class TDaily_Backups : public QObject {
  Q_OBJECT

 public:
  /// A child of the window.
  explicit TDaily_Backups(QMainWindow* window);

  /// Makes today's backup now, if it is wanted and not there.
  void Look();
  /// The same when the last one has failed, as what it failed of may be another now.
  void Try_Again();
  /// Another database is used from now on.
  void Start_Anew();

 private:
  void Forget_Failure();

  QMainWindow* window;
  QLabel* failed;
  QTimer timer;
  std::string told;  // the fault that was told last, as far as it is always the same
};

}  // namespace Plexidex
