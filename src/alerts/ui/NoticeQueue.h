// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"
#include "alerts/rules/FiredAlert.h"
#include "alerts/ui/InputGate.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QTimer>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace vx {

class CAlertSoundPlayer;
class CAlertsNotice;
class CSettings;
struct SNoticeTarget;

// Where a notice opens. All places and sizes are those of windows with their frames, in logical pixels.

/// The place of a notice that the user has not moved yet: beside the main window where the screen has room, else in a
/// corner, always whole on the screen and, where possible, not over the middle of the main window.
///
/// Shape   screen: what windows may cover of the screen that the main window is on; an empty window gives a corner
QPoint FirstNoticePlace(const QSize& notice, const QRect& window, const QRect& screen);

/// The place nearest to `wanted` at which the whole notice is on the screen; its upper left corner where the screen is
/// too small.
QPoint BroughtInside(const QPoint& wanted, const QSize& notice, const QRect& screen);

/// A remembered place as it is kept in the settings.
///
/// Shape   "left,top"; nothing for every other text
std::optional<QPoint> ReadNoticePlace(std::string_view text);
std::string NoticePlaceText(const QPoint& place);

/// Shows notices one after another: the next one comes when the one before was closed. A sound that is not repeated is
/// heard first, at once, and the notice appears when it has ended; one that is repeated sounds from the moment its
/// notice appears until it is closed.
///
/// No notice appears while a menu is open, a mouse button is held or keys are being typed: it waits until none was
/// pressed for kQuietMs, and for kEditQuietMs while a text is being edited. The user continues the edit when the
/// notice is closed. A notice belongs to the topmost modal window, takes the keyboard only while the program is the
/// active one, and keeps input from all other windows.
///
/// Owns    the notice shown
/// Thread  GUI thread only; nothing waits in a nested loop
class CNoticeQueue : public QObject {
    Q_OBJECT
public:
    static constexpr int kQuietMs = 2000;
    static constexpr int kEditQuietMs = 5000;

    using Ended = std::function<void(const SFiredAlert&, EFiringEnd)>;

    /// owner: a notice posts its reset to it. window: notices belong to it; may be null. settings: they keep the place
    /// that the user moved a notice to.
    CNoticeQueue(CAlertSoundPlayer& player, QObject& owner, QWidget* window, CSettings& settings,
                 QObject* parent = nullptr);
    ~CNoticeQueue() override;

    /// Who hears what became of each notice.
    void SetEnded(Ended ended) { m_ended = std::move(ended); }
    /// What can be done about an alert, asked as its notice appears; without, everything.
    void SetTarget(std::function<SNoticeTarget(const SFiredAlert&)> target) { m_target = std::move(target); }
    /// Whether the program is the active one: if not, a notice leaves the keyboard where it is.
    void SetInUse(std::function<bool()> inUse) { m_inUse = std::move(inUse); }

    void Add(SFiredAlert notice);
    /// Plays nothing while muted; what plays stops.
    void SetMuted(bool muted);

    /// Those that were not shown yet.
    int Waiting() const { return static_cast<int>(m_waiting.size()); }
    CAlertsNotice* Shown() const { return m_shown; }
    /// The one that is shown, or whose sound is heard; of no meaning without.
    const SFiredAlert& Current() const { return m_current; }

Q_SIGNALS:
    /// A notice, the current one, is about to appear.
    void Opening();

private:
    bool MayPlay(bool looping) const;
    bool IsUserBusy() const;
    void ShowNextSoon(int milliseconds = 0);
    void ShowNext();
    void TakeNext();
    void Announce();
    void Place();
    void BelongToTopmost();
    void ComeBack();
    void ActivateBelow();
    void OnFinished(int result);
    void DismissAll();

    CAlertSoundPlayer& m_player;
    QObject& m_owner;
    QPointer<QWidget> m_window;
    CSettings& m_settings;
    Ended m_ended;
    std::function<SNoticeTarget(const SFiredAlert&)> m_target;
    std::function<bool()> m_inUse;
    std::deque<SFiredAlert> m_waiting;
    SFiredAlert m_current;
    CAlertsNotice* m_shown = nullptr; ///< Deleted with its window, or here.
    QPointer<QWidget> m_below;        ///< The active window before; null while the user was elsewhere.
    CInputGate m_gate;
    QTimer m_next;
    bool m_taken = false;    ///< There is a current one that was not shown yet.
    bool m_sounding = false; ///< And its sound must end first.
    bool m_muted = false;
};

} // namespace vx
