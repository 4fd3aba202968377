// SPDX-License-Identifier: MIT
#include "app/frame/StatusPanes.h"

#include "base/qt/QtText.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace vx {

namespace {

constexpr int kSaidMs = 5000;
constexpr int kMarginPx = 6;

/// Takes as much room as its widest text, and less where a narrow window has no more.
class CPane : public QLabel {
public:
    explicit CPane(const QString& widest) : m_widest(widest) {
        setTextFormat(Qt::PlainText);
        setContentsMargins(kMarginPx, 0, kMarginPx, 0);
    }
    QSize sizeHint() const override {
        QFont bold = font(); // As the feed's state is while the values are not live.
        bold.setBold(true);
        const QFontMetrics metrics(bold);
        const int text = std::max(metrics.horizontalAdvance(m_widest), metrics.horizontalAdvance(this->text()));
        return {text + 2 * kMarginPx, QLabel::sizeHint().height()};
    }
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
        style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter, palette(), isEnabled(), shown,
                              foregroundRole());
    }

private:
    QString m_widest;
};

void ShowText(QLabel* pane, const QString& text) {
    if (pane->text() != text) pane->setText(text);
}

} // namespace

CStatusPanes::CStatusPanes(QWidget* parent) : QStatusBar(parent) {
    setObjectName(QStringLiteral("statusBar"));
    m_status = new QLabel(QString::fromLatin1(kReadyText));
    m_status->setObjectName(QStringLiteral("paneStatus"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setMinimumWidth(fontMetrics().horizontalAdvance(QString::fromLatin1(kReservedText)));
    m_status->setContentsMargins(kMarginPx, 0, kMarginPx, 0);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // A long text does not widen the window.
    addWidget(m_status, 1);
    m_statusText = m_status->text();
    m_said.setObjectName(QStringLiteral("saidTimer"));
    m_said.setSingleShot(true);
    connect(&m_said, &QTimer::timeout, this, &CStatusPanes::ShowStatus);
    m_feed = AddPane("paneFeed", QStringLiteral("Feed: connection ended"),
                     QStringLiteral("The state that the feed client last reported, or how long it has been silent"));
    m_clock = AddPane("paneClock", QStringLiteral("00/00/00 00:00:00"), QStringLiteral("Market time"));
    m_age = AddPane("paneAge", QStringLiteral("Data: 000 min ago"),
                    QStringLiteral("Age of the last quote or trade received"));
}

QLabel* CStatusPanes::AddPane(const char* name, const QString& widest, const QString& tip) {
    auto* pane = new CPane(widest);
    pane->setObjectName(QString::fromLatin1(name));
    pane->setToolTip(tip);
    addPermanentWidget(pane);
    return pane;
}

void CStatusPanes::SetStatus(const QString& text) {
    m_statusText = text;
    if (!m_said.isActive()) ShowStatus();
}

void CStatusPanes::ShowStatus() {
    ShowText(m_status, m_statusText);
    m_status->setToolTip({});
}

void CStatusPanes::Say(std::string_view text) {
    const QString shown = QtText(text);
    ShowText(m_status, shown);
    m_status->setToolTip(PlainTipText(shown)); // It may be longer than the pane.
    m_said.start(kSaidMs);
}

void CStatusPanes::ShowProgress(const QString& text) {
    m_said.stop();
    SetStatus(text);
}

void CStatusPanes::SetClock(const QString& text) { ShowText(m_clock, text); }

void CStatusPanes::SetFeed(const QString& state, const QString& age, bool live) {
    ShowText(m_feed, state);
    ShowText(m_age, age);
    if (live == m_live) return;
    m_live = live;
    QFont font = m_feed->font();
    font.setBold(!live);
    m_feed->setFont(font);
}

} // namespace vx
