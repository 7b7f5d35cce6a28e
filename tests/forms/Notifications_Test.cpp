// Without QtDBus there are no notifications.
#ifdef QT_DBUS_LIB

#include "Notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>

#include "Alert_Service.h"
#include "Editor_Fixture.h"

namespace {

using namespace Plexidex;

/// A desktop's service, spoken to without a bus between. It keeps what it was asked for.
struct TDesktop : QDBusVirtualObject {
  explicit TDesktop(const QStringList& capabilities) : capabilities(capabilities) {
    connect(&server, &QDBusServer::newConnection, this, [this](const QDBusConnection& from) {
      bus.emplace(from);
      bus->registerVirtualObject(Path, this);
    });
    QDBusConnection::connectToPeer(server.address(), Connection);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bus.has_value(); }));
  }
  ~TDesktop() override { QDBusConnection::disconnectFromPeer(Connection); }

  QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& from) override {
    const QVariantList given = call.arguments();
    if (call.member() == QLatin1String("GetCapabilities")) {
      Asked << QStringLiteral("capabilities");
      return from.send(call.createReply(capabilities));
    }
    if (call.member() == QLatin1String("CloseNotification")) {
      Asked << QStringLiteral("close %1").arg(given.value(0).toUInt());
      return from.send(call.createReply());
    }
    Asked << QStringLiteral("%1: %2 [%3]")
                 .arg(given.value(3).toString(), given.value(4).toString(),
                      given.value(5).toStringList().join(QLatin1Char(' ')));
    return from.send(call.createReply(++last));
  }
  /// What it was asked for since.
  std::string Told(int count = 1) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Asked.size() >= count; })) << "asked for too little";
    Settle();
    return std::exchange(Asked, {}).join(QLatin1Char('|')).toStdString();
  }
  void Click(uint id) {
    bus->send(QDBusMessage::createSignal(Path, QStringLiteral("org.freedesktop.Notifications"),
                                         QStringLiteral("ActionInvoked"))
              << id << QStringLiteral("default"));
  }

  static inline const QString Connection = QStringLiteral("desktop"),
                              Path = QStringLiteral("/org/freedesktop/Notifications");
  QStringList Asked;

 private:
  QDBusServer server;
  std::optional<QDBusConnection> bus;
  const QStringList capabilities;
  uint last = 6;
};

using Notifications_Test = TEditor_Fixture;

TEST_F(Notifications_Test, Are_Shown_As_The_Desktop_Can_Show_Them) {
  const QString text = QStringLiteral("Tea & <cake>");
  for (const auto& [capabilities, body, actions] : {std::array{"body", "Tea & <cake>", ""},
                                                    {"body body-markup", "Tea &amp; &lt;cake&gt;", ""},
                                                    {"actions body", "Tea & <cake>", "default Show"}}) {
    TDesktop desktop(QString::fromLatin1(capabilities).split(QLatin1Char(' ')));
    TNotifications notifications(TDesktop::Connection);
    int clicks = 0;
    notifications.Show(QStringLiteral("A"), text, [&] { ++clicks; });
    const int second = notifications.Show(QStringLiteral("B"), text, [&] { clicks += 10; });
    const std::string shown = std::string(": ") + body + " [" + actions + "]";
    EXPECT_EQ(desktop.Told(3), "capabilities|A" + shown + "|B" + shown);
    desktop.Click(8);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 10; }));
    notifications.Close(second);
    EXPECT_EQ(desktop.Told(), "close 8");
    desktop.Click(8);
    notifications.Close(notifications.Show(QStringLiteral("C"), text, {}));
    EXPECT_EQ(desktop.Told(2), "C" + shown + "|close 9") << "closed before it was there";
    EXPECT_EQ(clicks, 10);
  }
}

TEST_F(Notifications_Test, Of_Reminders_Open_Their_Window_And_Go_With_The_Answer) {
  TNew_Event event = New_Event("Tea", Monday + 0.75);
  event.Alarm.On = true;
  event.Alarm.Offset = 0;
  Write(event);
  TDesktop desktop({QStringLiteral("actions")});
  TNotifications notifications(TDesktop::Connection);
  TAlert_Service service(notifications);
  service.Look();
  seams.Clock.Value = Monday + 0.75;
  service.Look();
  EXPECT_EQ(desktop.Told(2), "capabilities|Reminder: 1/15/2024 6:00 PM  Tea -- now [default Show]");
  service.Window().close();
  desktop.Click(7);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&service.Window()));
  Act(&service.Window(), "Dismiss");
  EXPECT_EQ(desktop.Told(), "close 7");
}

}  // namespace

#endif
