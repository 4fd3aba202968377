// SPDX-License-Identifier: MIT
#include "app/commands/CommandIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace vx {

namespace {

/// Draws a picture when, and as large as, it is needed; none is drawn at the start of the program.
class CCommandIconEngine final : public QIconEngine {
public:
    /// svgOff: of a command that can be checked and is not; empty for the same.
    CCommandIconEngine(QString name, QByteArray svg, QByteArray svgOff)
        : m_name(std::move(name)), m_svg(std::move(svg)), m_svgOff(std::move(svgOff)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        QSvgRenderer renderer(Coloured(mode, state));
        renderer.render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString key = QStringLiteral("command-%1-%2-%3x%4-%5")
                                .arg(m_name)
                                .arg(state)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(Colour(mode).rgba());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QIconEngine* clone() const override { return new CCommandIconEngine(*this); }

private:
    static QColor Colour(QIcon::Mode mode) {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Normal;
        return QGuiApplication::palette().color(group, QPalette::ButtonText);
    }
    QByteArray Coloured(QIcon::Mode mode, QIcon::State state) const {
        QByteArray svg = state == QIcon::Off && !m_svgOff.isEmpty() ? m_svgOff : m_svg;
        return svg.replace("#000000", Colour(mode).name().toLatin1());
    }

    QString m_name;
    QByteArray m_svg;
    QByteArray m_svgOff;
};

QByteArray ReadPicture(const QString& name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QIcon CommandIcon(const char* name) {
    const QString plainName = QString::fromLatin1(name);
    const QByteArray svg = ReadPicture(plainName);
    if (svg.isEmpty()) return {};
    return QIcon(new CCommandIconEngine(plainName, svg, ReadPicture(plainName + QStringLiteral("-off"))));
}

} // namespace vx
