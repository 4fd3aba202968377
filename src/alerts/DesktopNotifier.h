#pragma once

#include <QDBusConnection>
#include <QObject>

class QDBusPendingCallWatcher;

namespace vx {

/// Shows a notification of the desktop, one at a time: a new one takes the place of the one before.
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

    /// Both are shown as they stand, whatever they hold.
    void Show(const QString& title, const QString& text);
    void Withdraw();

Q_SIGNALS:
    /// The user chose the notification.
    void Chosen();

private Q_SLOTS:
    void OnActionInvoked(uint id, const QString& action);

private:
    void OnReply(QDBusPendingCallWatcher* call);

    QDBusConnection m_bus;
    uint m_id = 0; ///< Of the notification shown; 0 for none.
    int m_calls = 0;
    bool m_withdrawn = false; ///< Before the service had answered.
};

} // namespace vx
