// SPDX-License-Identifier: MIT
#include "alerts/ui/InputGate.h"

#include "base/Clock.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWindow>

#include <algorithm>

namespace vx {

namespace {

constexpr int64_t kNeverMs = int64_t{1} << 40;

int64_t NowMs() { return CClock::Instance().MonotonicMs(); }

bool IsKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride ||
           type == QEvent::Shortcut || type == QEvent::InputMethod;
}

// The override comes before the press of the same key, and alone when the key is a shortcut.
bool IsKeyPress(const QEvent& event) {
    if (event.type() != QEvent::InputMethod)
        return event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    const auto& input = static_cast<const QInputMethodEvent&>(event);
    return !input.commitString().isEmpty() || !input.preeditString().isEmpty();
}

// Moving over a window changes nothing in it, and shows its tips.
bool IsPointer(const QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent&>(event).buttons() != Qt::NoButton;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
        return true;
    default:
        return false;
    }
}

bool IsDrop(QEvent::Type type) { return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop; }

// What the program closes itself it may close.
bool IsCloseByDesktop(const QEvent& event) { return event.type() == QEvent::Close && event.spontaneous(); }

bool IsTurnedTo(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

// Of a window of the platform the widget in it; null for one of the toolkit's own, such as what is drawn under a drag.
const QObject* ReceiverOf(const QObject* watched) {
    if (!watched->isWindowType()) return watched;
    const auto* window = static_cast<const QWindow*>(watched);
    return window->handle() ? QWidget::find(window->winId()) : nullptr;
}

} // namespace

CInputGate::CInputGate(QObject* parent) : QObject(parent), m_lastKey(NowMs() - kNeverMs) {
    qApp->installEventFilter(this);
}

int64_t CInputGate::QuietMs() const { return NowMs() - m_lastKey; }

bool CInputGate::IsEditing() {
    const QWidget* focus = QApplication::focusWidget();
    if (const auto* line = qobject_cast<const QLineEdit*>(focus)) return !line->isReadOnly();
    if (const auto* plain = qobject_cast<const QPlainTextEdit*>(focus)) return !plain->isReadOnly();
    if (const auto* rich = qobject_cast<const QTextEdit*>(focus)) return !rich->isReadOnly();
    return qobject_cast<const QAbstractSpinBox*>(focus) != nullptr;
}

void CInputGate::Shut(QWidget& notice) {
    m_notice = &notice;
    m_guarded = true;
    m_guardedSince = NowMs();
}

bool CInputGate::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (!m_notice) {
        if (IsKeyPress(*event)) m_lastKey = NowMs();
        return false;
    }
    if (IsKey(type) || IsPointer(*event) || IsDrop(type) || IsCloseByDesktop(*event)) return Refuses(watched, *event);
    NoteWindow(watched, type);
    return false;
}

bool CInputGate::IsInside(const QObject* object) const {
    for (; object; object = object->parent())
        if (object == m_notice) return true;
    return false;
}

bool CInputGate::Refuses(const QObject* watched, QEvent& event) {
    const bool isKey = IsKey(event.type());
    const QObject* object = ReceiverOf(watched);
    if (!object) return false;
    if (IsInside(object)) {
        const auto* widget = qobject_cast<const QWidget*>(object);
        if (!widget || widget->window() != m_notice || !IsGuarded()) return false;
        // The window manager's own key closes a window, and a click on its frame does.
        if (!isKey && !(IsCloseByDesktop(event) && QuietMs() < kKeyGuardMs)) return false;
    } else if (IsTurnedTo(event)) {
        Q_EMIT Refused();
    }
    if (IsKeyPress(event)) m_lastKey = NowMs(); // One that acts on the notice holds no other notice back.
    event.setAccepted(isKey);                   // An override that nobody takes is looked up among the shortcuts.
    return true;
}

bool CInputGate::IsGuarded() {
    if (NowMs() - std::max(m_lastKey, m_guardedSince) >= kKeyGuardMs) m_guarded = false;
    return m_guarded;
}

void CInputGate::NoteWindow(const QObject* watched, QEvent::Type type) {
    if (!watched->isWidgetType()) return;
    const auto* widget = static_cast<const QWidget*>(watched);
    if (!widget->isWindow()) return;
    switch (type) {
    case QEvent::WindowActivate:
        if (widget == m_notice) {
            m_guarded = true;
            m_guardedSince = NowMs();
        } else if (!IsInside(widget)) {
            Q_EMIT Refused();
        }
        break;
    case QEvent::Show:
    case QEvent::Hide:
        if (widget->isModal() && !IsInside(widget)) Q_EMIT ModalChanged();
        break;
    default:
        break;
    }
}

} // namespace vx
