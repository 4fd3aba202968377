#include "alerts/DesktopNotifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace vx {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kAction = QStringLiteral("default");

QDBusMessage Call(const char* method) {
    return QDBusMessage::createMethodCall(kService, kPath, kService, QString::fromLatin1(method));
}

} // namespace

CDesktopNotifier::CDesktopNotifier(const QDBusConnection& bus, QObject* parent) : QObject(parent), m_bus(bus) {
    if (m_bus.isConnected())
        m_bus.connect(QString(), kPath, kService, QStringLiteral("ActionInvoked"), this,
                      SLOT(OnActionInvoked(uint, QString)));
}

void CDesktopNotifier::Show(const QString& title, const QString& text) {
    if (!m_bus.isConnected()) return;
    constexpr uchar kUrgent = 2;
    constexpr int kUntilClosed = 0;
    QDBusMessage call = Call("Notify");
    const QVariantMap hints = {{QStringLiteral("urgency"), QVariant::fromValue(kUrgent)},
                               {QStringLiteral("category"), QStringLiteral("alert")}};
    call << QStringLiteral("Zantrel Watchlist") << m_id << QStringLiteral("dialog-information")
         << title.left(kMostCharacters) << text.left(kMostCharacters).toHtmlEscaped()
         << QStringList{kAction, tr("Show")} << hints << kUntilClosed;
    m_withdrawn = false;
    ++m_calls;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &CDesktopNotifier::OnReply);
}

void CDesktopNotifier::OnReply(QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<uint> reply = *call;
    call->deleteLater();
    --m_calls;
    if (reply.isError()) return;
    m_id = reply.value();
    if (m_withdrawn && m_calls == 0) Withdraw();
}

void CDesktopNotifier::Withdraw() {
    m_withdrawn = true;
    if (m_id == 0) return;
    QDBusMessage call = Call("CloseNotification");
    call << std::exchange(m_id, 0U);
    m_bus.send(call);
}

void CDesktopNotifier::OnActionInvoked(uint id, const QString& action) {
    if (id == m_id && action == kAction) Q_EMIT Chosen();
}

} // namespace vx
