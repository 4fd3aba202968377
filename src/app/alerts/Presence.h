#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <cstdint>

namespace vx {

/// Knows whether the program is the active one, and since when it is not; until one of its windows becomes active for
/// the first time it is not. A window of the program that comes up by itself may be made the active one by the desktop:
/// then the user is back with the next key or move of the mouse.
///
/// Thread  GUI thread only
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
    /// Looks whether any window has the keyboard; call it a few times a second. The toolkit does not tell when the
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

} // namespace vx
