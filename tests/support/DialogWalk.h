// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTextBrowser>
#include <QtTest/QTest>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace vx::test {

/// Goes through a window by Tab, as a user without a mouse does, looks for texts that are cut, and says what is wrong.
class CDialogWalk {
public:
    explicit CDialogWalk(QWidget& window) : m_window(window) { Walk(); }

    /// A sentence for each fault; empty when all is well.
    const std::vector<std::string>& Faults() const { return m_faults; }
    size_t Stops() const { return m_stops.size(); }

private:
    static constexpr int kMostStops = 100;
    static constexpr int kSeenPx = 40; ///< At least, of a large control in an area that scrolls.

    void Walk() {
        m_window.activateWindow();
        QApplication::processEvents();
        QWidget* first = m_window.focusWidget();
        if (!first) return Say("nothing has the keyboard");
        QWidget* at = first;
        do {
            m_stops.insert(at);
            const QImage before = Picture();
            QWidget* const next = Leave(*at);
            if (next == at) return m_stops.size() == 1 ? LookAtControls() : Say("Tab stays in " + Name(*at));
            LookAtStop(*next, before);
            at = next;
        } while (at != first && !m_stops.contains(at) && m_stops.size() < kMostStops);
        if (at != first) Say("Tab does not come back to " + Name(*first));
        LookAtControls();
        LookAtAccessKeys();
        LookAtTexts();
    }

    // The stop behind one; of a text with links each link comes first.
    QWidget* Leave(QWidget& stop) {
        int more = qobject_cast<QTextBrowser*>(&stop) ? kMostStops : 0;
        do {
            QTest::keyClick(&stop, Qt::Key_Tab);
            QApplication::processEvents();
        } while (m_window.focusWidget() == &stop && more-- > 0);
        return m_window.focusWidget();
    }

    QImage Picture() { return m_window.grab().toImage(); }

    void LookAtStop(QWidget& stop, const QImage& before) {
        const QRect seen = stop.visibleRegion().boundingRect();
        if (seen.height() < std::min(stop.height(), kSeenPx) || seen.width() < std::min(stop.width(), kSeenPx))
            Say(Name(stop) + " is out of sight");
        const double scale = before.devicePixelRatio();
        const QRect place(stop.mapTo(&m_window, seen.topLeft()) * scale, seen.size() * scale);
        if (Picture().copy(place) == before.copy(place)) Say(Name(stop) + " does not show that it has the keyboard");
    }

    // Part of another control, which takes the keyboard for it.
    bool IsPart(const QWidget& widget) const {
        for (const QWidget* parent = widget.parentWidget(); parent && parent != &m_window;
             parent = parent->parentWidget())
            if (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent) ||
                qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QAbstractItemView*>(parent))
                return true;
        return widget.focusProxy() != nullptr;
    }
    // Of choices that exclude each other Tab reaches the one made, and arrow keys the others.
    static bool IsOtherChoice(const QWidget& widget) {
        const auto* choice = qobject_cast<const QRadioButton*>(&widget);
        return choice && !choice->isChecked();
    }

    void LookAtControls() {
        for (QWidget* control : m_window.findChildren<QWidget*>())
            if (control->window() == &m_window && control->isVisible() && control->isEnabled() &&
                (control->focusPolicy() & Qt::TabFocus) && !IsPart(*control) && !IsOtherChoice(*control) &&
                !m_stops.contains(control))
                Say("Tab does not reach " + Name(*control));
    }

    void LookAtAccessKeys() {
        std::set<QString> taken;
        const auto take = [&](const QWidget& widget, const QString& text) {
            const QString key = QKeySequence::mnemonic(text).toString();
            if (widget.isVisible() && !key.isEmpty() && !taken.insert(key).second)
                Say(key.toStdString() + " of \"" + text.toStdString() + "\" is taken");
        };
        for (const auto* button : m_window.findChildren<QAbstractButton*>()) take(*button, button->text());
        for (const auto* label : m_window.findChildren<QLabel*>())
            if (label->buddy()) take(*label, label->text());
        for (const auto* box : m_window.findChildren<QGroupBox*>()) take(*box, box->title());
    }

    // Not in a window that would be larger if the screen were.
    void LookAtTexts() {
        const QSize room = m_window.screen()->availableSize() - QSize(40, 60);
        if (m_window.size().boundedTo(room) != m_window.size()) return;
        const auto look = [&](const QWidget& widget, const QString& text, bool wraps) {
            if (!widget.isVisible() || text.isEmpty()) return;
            const bool isCut = wraps ? widget.heightForWidth(widget.width()) > widget.height()
                                     : widget.sizeHint().width() > widget.width();
            if (isCut) Say("the text of " + Name(widget) + " is cut: " + text.toStdString());
        };
        for (const auto* button : m_window.findChildren<QAbstractButton*>()) look(*button, button->text(), false);
        for (const auto* label : m_window.findChildren<QLabel*>()) look(*label, label->text(), label->wordWrap());
    }

    static std::string Name(const QWidget& widget) {
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        return widget.metaObject()->className() + (" \"" + widget.objectName().toStdString()) +
               (button ? " " + button->text().toStdString() : std::string()) + "\"";
    }
    void Say(const std::string& fault) { m_faults.push_back(fault); }

    QWidget& m_window;
    std::set<QWidget*> m_stops;
    std::vector<std::string> m_faults;
};

} // namespace vx::test
