#pragma once

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QWidget>
#include <QtTest/QTest>
#include <functional>

// What tests of windows share: waiting without sleeping, and looking at what was painted.

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

} // namespace vx
