// SPDX-License-Identifier: MIT
#include "alerts/ui/DesktopNotifier.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
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
    if (!m_bus.isConnected()) return;
    m_bus.connect(QString(), kPath, kService, QStringLiteral("ActionInvoked"), this,
                  SLOT(OnActionInvoked(uint, QString)));
    auto* watcher = new QDBusServiceWatcher(kService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &CDesktopNotifier::ForgetService);
}

void CDesktopNotifier::Show(const QString& title, const QString& text, bool urgent) {
    if (!m_bus.isConnected()) return;
    m_withdrawn = false;
    const SNotification notification{title, text, urgent};
    if (m_readsMarkup) return Send(notification);
    m_unsent = notification;
    if (!std::exchange(m_asked, true)) AskCapabilities();
}

void CDesktopNotifier::AskCapabilities() {
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(Call("GetCapabilities"), kAnswerMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &CDesktopNotifier::OnCapabilities);
}

// Asking may have started the service, which is another one then.
void CDesktopNotifier::OnCapabilities(QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<QStringList> reply = *call;
    call->deleteLater();
    m_asked = false;
    m_readsMarkup = !reply.isError() && reply.value().contains(QStringLiteral("body-markup"));
    if (const auto unsent = std::exchange(m_unsent, std::nullopt)) Send(*unsent);
    if (reply.isError()) m_readsMarkup.reset(); // It may answer next time.
}

void CDesktopNotifier::ForgetService() {
    m_readsMarkup.reset();
    m_id = 0;
}

void CDesktopNotifier::Send(const SNotification& notification) {
    constexpr uchar kNormal = 1;
    constexpr uchar kUrgent = 2;
    constexpr int kUntilClosed = 0;
    const QString text = notification.text.left(kMostCharacters);
    QVariantMap hints = {{QStringLiteral("urgency"), QVariant::fromValue(notification.urgent ? kUrgent : kNormal)},
                         {QStringLiteral("category"), QStringLiteral("alert")}};
    if (const QString entry = QGuiApplication::desktopFileName(); !entry.isEmpty())
        hints.insert(QStringLiteral("desktop-entry"), entry);
    QDBusMessage call = Call("Notify");
    call << QStringLiteral("Zantrel Watchlist") << m_id << QStringLiteral("dialog-information")
         << notification.title.left(kMostCharacters) << (*m_readsMarkup ? text.toHtmlEscaped() : text)
         << QStringList{kAction, QStringLiteral("Show")} << hints << kUntilClosed;
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
    m_unsent.reset();
    if (m_id == 0) return;
    QDBusMessage call = Call("CloseNotification");
    call << std::exchange(m_id, 0U);
    m_bus.send(call);
}

void CDesktopNotifier::OnActionInvoked(uint id, const QString& action) {
    if (id == m_id && action == kAction) Q_EMIT Chosen();
}

} // namespace vx
