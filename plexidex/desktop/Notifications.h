#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>

class QDBusMessage;

namespace Plexidex {

/// Notifications of the desktop. Where there is no such service they do nothing. Nothing is waited for.
class TNotifications : public QObject {
  Q_OBJECT

 public:
  /// Over an open connection to the bus, by its name; "" is that of the session.
  explicit TNotifications(const QString& connection = {});

  /// Shows one for a while, with plain texts. A click on it calls `clicked`, where the desktop tells of
  /// clicks. A number to close it by, which is never 0.
  int Show(const QString& title, const QString& text, const std::function<void()>& clicked);
  /// Takes one away, if it is still there; its clicks count no more.
  void Close(int number);

 private slots:
  void Take_Action(uint id, const QString& action);
  void Take_Closed(uint id, uint reason);

 private:
  struct TShown {
    QString Title, Text;
    std::function<void()> Clicked;
    uint Id = 0;  // the service's, 0 until it has answered
  };

  void Ask(const QDBusMessage& call, const std::function<void(const QDBusMessage&)>& then);
  void Ask_For_Capabilities();
  void Send(int number);

  const QString connection;
  std::map<int, TShown> shown;
  std::optional<QStringList> capabilities;  // of the service, once it has told them
  bool asking = false;
  int last = 0;
};

}  // namespace Plexidex
