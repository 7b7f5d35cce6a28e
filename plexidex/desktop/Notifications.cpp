#include "Notifications.h"

#ifdef KT_HAS_DBUS
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#endif

namespace Plexidex {

// The interface org.freedesktop.Notifications, version 1.2; its body takes simple markup.
void Notify_Desktop([[maybe_unused]] const QString& title, [[maybe_unused]] const QString& text) {
#ifdef KT_HAS_DBUS
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  static constexpr quint32 replaces_none = 0;
  static constexpr qint32 default_time = -1;
  const auto service = QStringLiteral("org.freedesktop.Notifications");
  QDBusMessage call = QDBusMessage::createMethodCall(
      service, QStringLiteral("/org/freedesktop/Notifications"), service, QStringLiteral("Notify"));
  call << QStringLiteral("Plexidex") << replaces_none << QStringLiteral("plexidex") << title
       << text.toHtmlEscaped() << QStringList()
       << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("plexidex")}} << default_time;
  bus.send(call);
#endif
}

}  // namespace Plexidex
