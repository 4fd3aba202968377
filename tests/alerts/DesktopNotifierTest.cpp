// SPDX-License-Identifier: MIT
// Notifications of the desktop, against a service on a bus of the test's own.

#include "alerts/ui/DesktopNotifier.h"
#include "support/EventLoop.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>

using namespace vx;
using namespace vx::test;

namespace {

const QString kName = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");

/// Takes notifications as a desktop does, and remembers the calls.
class CNotificationService : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == QStringLiteral("GetCapabilities")) {
            ++asked;
            connection.send(message.createReply(capabilities));
            return true;
        }
        calls.append(message);
        if (answers && message.member() == QStringLiteral("Notify")) connection.send(message.createReply(uint{77}));
        return true;
    }
    /// What the last notification says.
    QString Text() const { return calls.back().arguments()[4].toString(); }

    QList<QDBusMessage> calls;
    QStringList capabilities{QStringLiteral("body"), QStringLiteral("body-markup")};
    int asked = 0;
    bool answers = true;
};

class CDesktopNotifierTest : public testing::Test {
protected:
    void SetUp() override {
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (daemon.isEmpty()) GTEST_SKIP() << "dbus-daemon is not installed";
        m_bus.start(daemon,
                    {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        ASSERT_TRUE(m_bus.waitForStarted() && m_bus.waitForReadyRead());
        m_address = QString::fromLatin1(m_bus.readLine()).trimmed();
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("service"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        m_bus.kill();
        m_bus.waitForFinished();
    }
    QDBusConnection Connection(const char* name) {
        return QDBusConnection::connectToBus(m_address, QString::fromLatin1(name));
    }
    void StartService() {
        QDBusConnection connection = Connection("service");
        ASSERT_TRUE(connection.registerVirtualObject(kPath, &service));
        ASSERT_TRUE(connection.registerService(kName));
    }
    CNotificationService service;

private:
    QProcess m_bus;
    QString m_address;
};

} // namespace

TEST_F(CDesktopNotifierTest, ANotificationIsPlainTextAndTheNextOneTakesItsPlace) {
    StartService();
    CDesktopNotifier notifier(Connection("program"));
    notifier.Show(QStringLiteral("Norv Vx alert: <b>"),
                  QStringLiteral("<b>1 & 2</b>\n") + QString(5000, QLatin1Char('W')));
    ASSERT_TRUE(WaitUntil([&] { return service.calls.size() == 1; }));
    const QVariantList first = service.calls[0].arguments();
    EXPECT_EQ(first[3].toString(), QStringLiteral("Norv Vx alert: <b>"));
    EXPECT_TRUE(first[4].toString().startsWith(QStringLiteral("&lt;b&gt;1 &amp; 2&lt;/b&gt;\nWWW")));
    EXPECT_LT(first[4].toString().size(), 1100);

    TurnEventLoop(20);
    ASSERT_TRUE(WaitUntil([&] {
        notifier.Show(QStringLiteral("next"), {});
        return service.calls.back().arguments()[1].toUInt() == 77;
    }));
    QSignalSpy chosen(&notifier, &CDesktopNotifier::Chosen);
    QDBusMessage action = QDBusMessage::createSignal(kPath, kName, QStringLiteral("ActionInvoked"));
    action << uint{76} << QStringLiteral("default");
    Connection("service").send(action);
    action.setArguments({uint{77}, QStringLiteral("default")});
    Connection("service").send(action);
    ASSERT_TRUE(WaitUntil([&] { return !chosen.isEmpty(); }));
    EXPECT_EQ(chosen.size(), 1);
    notifier.Withdraw();
    ASSERT_TRUE(WaitUntil([&] { return service.calls.back().member() == QStringLiteral("CloseNotification"); }));
    EXPECT_EQ(service.calls.back().arguments(), QVariantList{uint{77}});
}

TEST_F(CDesktopNotifierTest, WithoutAServiceOrAnAnswerNothingIsHeldUp) {
    for (const QDBusConnection& bus : {Connection("program"), QDBusConnection(QStringLiteral("no such connection"))}) {
        CDesktopNotifier unheard(bus);
        unheard.Show(QStringLiteral("a"), QStringLiteral("b"));
        TurnEventLoop(5);
        unheard.Withdraw();
    }
    StartService();
    service.answers = false;
    CDesktopNotifier notifier(Connection("program"));
    for (int i = 0; i < 100; ++i) notifier.Show(QStringLiteral("a"), QString::number(i));
    EXPECT_EQ(service.asked, 0) << "nothing waited for the service, which answers in this thread";
    EXPECT_TRUE(WaitUntil([&] { return service.calls.size() == 1; }));
    EXPECT_EQ(service.Text(), QStringLiteral("99")) << "the latest, once the service has said what it shows";
}
