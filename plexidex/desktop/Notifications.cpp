#include "Notifications.h"

#ifdef KT_HAS_DBUS
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>
#endif

// The interface org.freedesktop.Notifications, version 1.2.
namespace Plexidex {

#ifdef KT_HAS_DBUS

namespace {

QString Path() {
  return QStringLiteral("/org/freedesktop/Notifications");
}

QString Service() {
  return QStringLiteral("org.freedesktop.Notifications");
}

QDBusMessage Call(const QString& method) {
  return QDBusMessage::createMethodCall(Service(), Path(), Service(), method);
}

QDBusConnection Bus(const QString& name) {
  return name.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(name);
}

void Send_Close(const QString& connection, uint id) {
  Bus(connection).send(Call(QStringLiteral("CloseNotification")) << id);
}

}  // namespace

TNotifications::TNotifications(const QString& connection) : connection(connection) {
  QDBusConnection bus = Bus(connection);
  // Of whichever service: to learn whose name it is the bus would be waited for.
  bus.connect({}, Path(), Service(), QStringLiteral("ActionInvoked"), this, SLOT(Take_Action(uint, QString)));
  bus.connect({}, Path(), Service(), QStringLiteral("NotificationClosed"), this,
              SLOT(Take_Closed(uint, uint)));
}

void TNotifications::Ask(const QDBusMessage& call, const std::function<void(const QDBusMessage&)>& then) {
  auto* watcher = new QDBusPendingCallWatcher(Bus(connection).asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [then](QDBusPendingCallWatcher* done) {
    done->deleteLater();
    then(done->reply());
  });
}

void TNotifications::Ask_For_Capabilities() {
  asking = true;
  Ask(Call(QStringLiteral("GetCapabilities")), [this](const QDBusMessage& reply) {
    asking = false;
    if (reply.type() != QDBusMessage::ReplyMessage) return shown.clear();  // there is no service
    capabilities = reply.arguments().value(0).toStringList();
    for (const auto& [number, each] : shown) Send(number);
  });
}

int TNotifications::Show(const QString& title, const QString& text, const std::function<void()>& clicked) {
  ++last;
  if (!Bus(connection).isConnected()) return last;
  shown[last] = {title, text, clicked};
  if (capabilities) {
    Send(last);
  } else if (!asking) {
    Ask_For_Capabilities();
  }
  return last;
}

void TNotifications::Send(int number) {
  static constexpr quint32 replaces_none = 0;
  static constexpr qint32 default_time = -1;
  const TShown& one = shown.at(number);
  const bool has_markup = capabilities->contains(QStringLiteral("body-markup"));
  QStringList actions;
  if (capabilities->contains(QStringLiteral("actions"))) actions << QStringLiteral("default") << tr("Show");
  Ask(Call(QStringLiteral("Notify"))
          << QStringLiteral("Plexidex") << replaces_none << QStringLiteral("plexidex") << one.Title
          << (has_markup ? one.Text.toHtmlEscaped() : one.Text) << actions
          << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("plexidex")}} << default_time,
      [this, number](const QDBusMessage& reply) {
        const uint id = reply.arguments().value(0).toUInt();
        const auto found = shown.find(number);
        if (reply.type() != QDBusMessage::ReplyMessage) {
          shown.erase(number);
        } else if (found == shown.end()) {
          Send_Close(connection, id);  // it was closed meanwhile
        } else {
          found->second.Id = id;
        }
      });
}

void TNotifications::Close(int number) {
  const auto found = shown.find(number);
  if (found == shown.end()) return;
  if (found->second.Id != 0) Send_Close(connection, found->second.Id);
  shown.erase(found);
}

#else

TNotifications::TNotifications(const QString& connection) : connection(connection) {}

int TNotifications::Show(const QString& /*title*/, const QString& /*text*/,
                         const std::function<void()>& /*clicked*/) {
  return ++last;
}

void TNotifications::Close(int /*number*/) {}

#endif

void TNotifications::Take_Action(uint id, const QString& /*action*/) {
  for (const auto& [number, each] : shown) {
    if (each.Id != id) continue;
    const auto clicked = each.Clicked;  // which may close it
    return clicked();
  }
}

void TNotifications::Take_Closed(uint id, uint /*reason*/) {
  std::erase_if(shown, [id](const auto& each) { return each.second.Id == id; });
}

}  // namespace Plexidex
