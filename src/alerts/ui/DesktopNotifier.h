// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <optional>

class QDBusPendingCallWatcher;

namespace vx {

/// Shows a notification of the desktop, one at a time: a new one takes the place of the one before. The service is
/// first asked what it can do, once as long as it runs.
///
/// Errors  none: without a bus or a service nothing is shown
/// Thread  GUI thread only; nothing waits for an answer
/// Source  the desktop notifications interface, org.freedesktop.Notifications
class CDesktopNotifier : public QObject {
    Q_OBJECT
public:
    /// Of a longer text the rest is left out.
    static constexpr int kMostCharacters = 1000;

    explicit CDesktopNotifier(const QDBusConnection& bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

    /// A service that does not say in this time what it can do is taken for one that shows plain text.
    static constexpr int kAnswerMs = 2000;

    /// Both are shown as they stand, whatever they hold.
    void Show(const QString& title, const QString& text, bool urgent = false);
    void Withdraw();

Q_SIGNALS:
    /// The user chose the notification.
    void Chosen();

private Q_SLOTS:
    void OnActionInvoked(uint id, const QString& action);

private:
    struct SNotification {
        QString title;
        QString text;
        bool urgent = false;
    };

    void AskCapabilities();
    void OnCapabilities(QDBusPendingCallWatcher* call);
    void Send(const SNotification& notification);
    void OnReply(QDBusPendingCallWatcher* call);
    void ForgetService();

    QDBusConnection m_bus;
    std::optional<bool> m_readsMarkup;     ///< Nothing while the service was not asked.
    std::optional<SNotification> m_unsent; ///< The latest, until it has answered.
    bool m_asked = false;
    uint m_id = 0; ///< Of the notification shown; 0 for none.
    int m_calls = 0;
    bool m_withdrawn = false; ///< Before the service had answered.
};

} // namespace vx
