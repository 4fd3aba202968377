// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>
#include <stdexcept>

// What tests of windows share: waiting without sleeping, widgets by their names, and looking at what was painted.

namespace vx {

/// Processes events until the condition holds; false when it still does not after the time given.
inline bool WaitFor(const std::function<bool()>& condition, int milliseconds = 5000) {
    return QTest::qWaitFor(condition, milliseconds);
}

/// Delivers everything that is pending, deferred repaints included.
inline void ProcessAll() {
    QApplication::processEvents();
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

/// A widget as it would be painted at a scale of the screen; pixels are device pixels.
inline QImage GrabImage(QWidget& widget, double scale = 1) {
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    image.setDevicePixelRatio(1);
    return image;
}

/// How many pixels of a part of an image have exactly this colour.
inline int CountColor(const QImage& image, const QRect& part, QRgb color) {
    int count = 0;
    const QRect seen = part.intersected(image.rect());
    for (int y = seen.top(); y <= seen.bottom(); ++y)
        for (int x = seen.left(); x <= seen.right(); ++x) count += image.pixel(x, y) == color ? 1 : 0;
    return count;
}

namespace test {

/// The widget of a name in a window; without one the test ends.
template <class T> T& Named(const QWidget& window, const char* name) {
    T* found = window.findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(name);
    return *found;
}
inline void Click(const QWidget& window, const char* name) {
    auto& button = Named<QAbstractButton>(window, name);
    const QPoint mark(8, button.height() / 2); // A check box takes clicks on its mark and text only.
    QTest::mouseClick(&button, Qt::LeftButton, {}, mark);
}
inline void ClickStandard(const QWidget& window, QDialogButtonBox::StandardButton button = QDialogButtonBox::Ok) {
    QTest::mouseClick(window.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}
/// The text of a label, a line or a button.
inline std::string TextOf(const QWidget& window, const char* name) {
    return Named<QWidget>(window, name).property("text").toString().toStdString();
}

/// Hands the next modal dialog of a kind over as soon as it is open; what it runs must close the dialog.
template <class Dialog> void WhenOpen(std::function<void(Dialog&)> act) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        act(*dialog);
    });
    timer->start(1);
}

} // namespace test

} // namespace vx
