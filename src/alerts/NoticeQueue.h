#pragma once

#include "alerts/AlertHistory.h"
#include "alerts/AlertNotice.h"
#include "base/Clock.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

class QWidget;

namespace vx {

class CAlertSoundPlayer;
class CAlertsNotice;

/// A notice on its way to the user.
struct SFiredNotice {
    SAlertNotice notice;
    SLocalTime firedAt;
    std::string id;         ///< Of its firing in the history.
    uint64_t watchlist = 0; ///< Which of the watchlists opened one after another the alert belongs to.
};

/// Shows notices one after another: the next one comes when the one before was closed. A sound that is not repeated is
/// heard first and the notice appears when it has ended; one that is repeated sounds until its notice is closed.
///
/// No notice appears while a menu is open or a mouse button is held; over other dialogs it does.
///
/// Owns    the notice shown; not the player, the owner of the notices or the parent, which outlive it
/// Thread  GUI thread only; nothing waits in a nested loop
class CNoticeQueue : public QObject {
    Q_OBJECT
public:
    using Ended = std::function<void(const SFiredNotice&, EFiringEnd, double newThreshold)>;

    /// owner: whom a notice posts its reset to. window: over which notices stand; may be null.
    CNoticeQueue(CAlertSoundPlayer& player, QObject& owner, QWidget* window, QObject* parent = nullptr);
    ~CNoticeQueue() override;

    /// Who hears what became of each notice.
    void SetEnded(Ended ended) { m_ended = std::move(ended); }
    /// Whether the alert of a notice can still be reset, asked as the notice appears; without, each can.
    void SetCanReset(std::function<bool(const SFiredNotice&)> canReset) { m_canReset = std::move(canReset); }
    /// Whether the program is the active one: if not, a notice leaves the keyboard where it is.
    void SetInUse(std::function<bool()> inUse) { m_inUse = std::move(inUse); }

    void Add(SFiredNotice notice);
    /// Plays nothing while muted; what plays stops.
    void SetMuted(bool muted);

    /// Those that were not shown yet.
    int Waiting() const { return static_cast<int>(m_waiting.size()); }
    CAlertsNotice* Shown() const { return m_shown; }

Q_SIGNALS:
    /// A notice is about to appear.
    void Opening();

private:
    void ShowNextSoon(int milliseconds = 0);
    void ShowNext();
    void Sound();
    void Announce();
    void OnFinished(int result);
    void ActivateWindowBelow();
    void DismissAll();

    CAlertSoundPlayer& m_player;
    QObject& m_owner;
    QPointer<QWidget> m_window;
    Ended m_ended;
    std::function<bool(const SFiredNotice&)> m_canReset;
    std::function<bool()> m_inUse;
    std::deque<SFiredNotice> m_waiting;
    SFiredNotice m_current;           ///< The one that is shown, or whose sound is heard.
    CAlertsNotice* m_shown = nullptr; ///< Deleted with its window, or here.
    QTimer m_next;
    bool m_heard = false;    ///< The current one's sound has begun, if it has one; it was not shown yet.
    bool m_sounding = false; ///< And must end first.
    bool m_muted = false;
};

} // namespace vx
