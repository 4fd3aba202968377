// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <cstdint>

class QWidget;

namespace vx {

/// Watches the keys that are typed into the program's windows, and shuts these windows while a notice is up: keys,
/// buttons, wheel, drops, and the desktop's wish to close them reach only the notice and what was opened from it. The
/// windows stay open, painted and up to date, and so does what is being edited in them.
///
/// The notice itself takes no key of any kind until none was pressed for kKeyGuardMs since it came up, and since it
/// last became the active window: the user is typing into something else.
///
/// Shape   one for the program; costs a look at the type of each event
/// Owns    nothing of the notice
class CInputGate : public QObject {
    Q_OBJECT
public:
    static constexpr int kKeyGuardMs = 2000;

    explicit CInputGate(QObject* parent = nullptr);

    /// How long ago the last key was pressed in one of the windows; a very long time when none ever was.
    int64_t QuietMs() const;
    /// Whether the keyboard is with a text that can be edited.
    static bool IsEditing();

    /// Shuts every window but this one, and those whose parent it is, until Open.
    void Shut(QWidget& notice);
    void Open() { m_notice.clear(); }

Q_SIGNALS:
    /// The user turned to a window that is shut.
    void Refused();
    /// A modal window came up or went: the toolkit refuses input to what does not belong to the topmost one.
    void ModalChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsInside(const QObject* object) const;
    bool Refuses(const QObject* watched, QEvent& event);
    bool IsGuarded();
    void NoteWindow(const QObject* watched, QEvent::Type type);

    QPointer<QWidget> m_notice;
    bool m_guarded = false;     ///< The notice takes no keys yet.
    int64_t m_guardedSince = 0; ///< Milliseconds of the monotonic clock, as below.
    int64_t m_lastKey;
};

} // namespace vx
