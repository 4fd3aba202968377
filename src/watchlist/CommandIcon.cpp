#include "watchlist/CommandIcon.h"

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
    CCommandIconEngine(QString name, QByteArray svg) : m_name(std::move(name)), m_svg(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer renderer(Coloured(mode));
        renderer.render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString key = QStringLiteral("command-%1-%2x%3-%4")
                                .arg(m_name)
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
    QByteArray Coloured(QIcon::Mode mode) const {
        QByteArray svg = m_svg;
        return svg.replace("#000000", Colour(mode).name().toLatin1());
    }

    QString m_name;
    QByteArray m_svg;
};

} // namespace

QIcon CommandIcon(const char* name) {
    const QString plainName = QString::fromLatin1(name);
    QFile file(QStringLiteral(":/icons/%1.svg").arg(plainName));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new CCommandIconEngine(plainName, file.readAll()));
}

} // namespace vx
