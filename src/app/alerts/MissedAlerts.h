// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/FiredAlert.h"
#include "base/Clock.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

class QStatusBar;
class QToolButton;

namespace vx {

class CDesktopNotifier;

/// Knows whether the program is the active one, and since when it is not; until one of its windows becomes active for
/// the first time it is not. A window of the program that comes up by itself may be made the active one by the desktop:
/// then the user is back with the next key or move of the mouse.
class CPresence : public QObject {
    Q_OBJECT
public:
    explicit CPresence(QObject* parent = nullptr);

    bool IsHere() const { return m_awaySinceMs == 0; }
    /// Milliseconds since 1970 UTC; 0 while the program is the active one.
    int64_t AwaySinceMs() const { return m_awaySinceMs; }
    /// The program became the active one, or another one did.
    void SetHere(bool here);
    /// A window comes up that the user did not ask for.
    void NoteOwnWindow();
    /// Looks whether any window has the keyboard; call it a few times a second. The toolkit does not report when the
    /// window that had it was closed and no other one got it.
    void Poll();

Q_SIGNALS:
    void Returned();

protected:
    /// Of the application, while the user's next move decides.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr int kOwnWindowMs = 1000;

    void OnState(Qt::ApplicationState state);

    int64_t m_awaySinceMs = 0;
    bool m_hadFocus = true; ///< At the last poll.
    QElapsedTimer m_ownWindow;
};

/// Reports alerts that fire while another program is active: a notification of the desktop, which sums up what
/// fired since the user left, and a button in the status bar that stays until the history was looked at.
class CMissedAlerts : public QObject {
    Q_OBJECT
public:
    /// Alerts that fire so close to each other are one notification.
    static constexpr int kGatherMs = 200;
    static constexpr size_t kMostNamed = 5;

    explicit CMissedAlerts(QStatusBar& bar, QObject* parent = nullptr);
    ~CMissedAlerts() override;

    /// An alert fired while the user was away.
    void Add(const SAlertRecord& notice, const SLocalTime& firedAt);
    /// The user is back: the notification goes, the button stays.
    void OnReturn();
    /// The user has seen them.
    void Clear();
    int Count() const { return m_count; }

    /// Decides for each notification whether it is urgent; without this none is.
    void SetUrgent(std::function<bool()> urgent) { m_urgent = std::move(urgent); }
    /// Replaces the notifier of the session's.
    void UseNotifier(std::unique_ptr<CDesktopNotifier> notifier);

Q_SIGNALS:
    /// The user wants to see the program.
    void Called();
    /// The user wants to see what was missed.
    void Asked();

private:
    void Notify();
    void Notify(const QString& title, const QString& text);
    void ShowCount();

    QToolButton* m_button;
    QTimer m_gather;
    std::unique_ptr<CDesktopNotifier> m_notifier;
    std::function<bool()> m_urgent;
    std::deque<std::string> m_titles; ///< Since the user left, the latest first.
    std::string m_body;               ///< Of the latest.
    int m_firedAway = 0;              ///< Since the user left.
    int m_count = 0;                  ///< Since the history was looked at.
};

} // namespace vx
