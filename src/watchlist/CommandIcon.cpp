#include "watchlist/CommandIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <array>

namespace vx {

namespace {

// Sizes in device pixels: tool bars and menus at 100, 150, 200 and 300 %.
constexpr std::array kSizes = {16, 20, 24, 32, 40, 48, 64};

QPixmap Picture(const QByteArray& svg, int size) {
    QSvgRenderer renderer(svg);
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, size, size));
    return pixmap;
}

} // namespace

QIcon CommandIcon(const char* name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray source = file.readAll();
    const QPalette palette = QGuiApplication::palette();
    const auto coloured = [&](QPalette::ColorGroup group) {
        QByteArray svg = source;
        return svg.replace("#000000", palette.color(group, QPalette::ButtonText).name().toLatin1());
    };
    const QByteArray normal = coloured(QPalette::Normal);
    const QByteArray disabled = coloured(QPalette::Disabled);
    QIcon icon;
    for (const int size : kSizes) {
        icon.addPixmap(Picture(normal, size), QIcon::Normal);
        icon.addPixmap(Picture(disabled, size), QIcon::Disabled);
    }
    return icon;
}

} // namespace vx
