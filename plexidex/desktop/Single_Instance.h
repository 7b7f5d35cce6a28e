#pragma once

#include <QObject>
#include <QStringList>
#include <string>

class QLocalServer;

namespace Plexidex {

/// Lets a second start of the program on the same database, by the same user, speak to the first one.
class TSingle_Instance : public QObject {
  Q_OBJECT

 public:
  TSingle_Instance() = default;

  /// Asks the program that has the database open to show its window and to take files; false when there is
  /// none.
  static bool Call(const std::string& database, const QStringList& files);
  /// Answers for a database from now on, and for no other.
  void Answer_For(const std::string& database);

 signals:
  /// Another start wants the window to be shown, and these files to be brought in.
  void Called(const QStringList& files);

 private:
  void Take_Call();

  QLocalServer* server = nullptr;
};

}  // namespace Plexidex
