// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertsNotice.h"

#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/ResetAlert.h"
#include "base/qt/QtText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vx {

CResetAlertMessage::CResetAlertMessage(std::string record, SFiredAlert of)
    : QEvent(kResetAlertMessage), m_record(std::move(record)), m_of(std::move(of)) {}

CAlertFiredMessage::CAlertFiredMessage(A_INFO alert, uint64_t watchlist)
    : QEvent(kAlertFiredMessage), m_alert(std::move(alert)), m_watchlist(watchlist),
      m_firedAt(CClock::Instance().Now()), m_firedMs(QDateTime::currentMSecsSinceEpoch()) {}

CAlertFiredMessage::CAlertFiredMessage(std::string record, A_INFO alert, uint64_t watchlist)
    : CAlertFiredMessage(std::move(alert), watchlist) {
    m_record = std::move(record);
}

CAlertFiredMessage::CAlertFiredMessage(SAlertRecord news, A_INFO alert, uint64_t watchlist)
    : CAlertFiredMessage(std::move(alert), watchlist) {
    m_news = std::move(news);
}

SFiredAlert CAlertFiredMessage::Fired() const {
    return {m_news ? *m_news : ReadAlertRecord(m_record), m_alert, m_firedAt, {}, m_watchlist};
}

namespace {

// Minimised it would be out of sight and still keep the other windows shut.
constexpr Qt::WindowFlags kWindow =
    Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

constexpr int kTextWidth = 430;
constexpr int kMostTextHeight = 260;
constexpr int kSpare = 8;      // Beside and below the text, so that no scroll bar comes.
constexpr int kPlacedMs = 400; // By then a window manager has put a new window where it wants it.

/// Text that can be selected and wraps wherever it must, in the colours of the window around it.
QPlainTextEdit* MakeText(const QString& text, QWidget* parent) {
    auto* box = new QPlainTextEdit(parent);
    box->setPlainText(text);
    box->setReadOnly(true);
    box->setFrameShape(QFrame::NoFrame);
    box->setTabChangesFocus(true);
    box->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    box->viewport()->setAutoFillBackground(false);
    box->document()->setDocumentMargin(0);
    box->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int mostHeight = std::min(kMostTextHeight, parent->screen()->availableGeometry().height() / 2);
    const QRect room(0, 0, kTextWidth, mostHeight);
    const QRect needed = box->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::TextWrapAnywhere, text);
    box->setMinimumSize(kTextWidth + kSpare, std::min(needed.height(), mostHeight) + kSpare);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored); // Such a box asks for more than its text needs.
    return box;
}

QPushButton* AddButton(QDialogButtonBox& box, const QString& text, const char* name,
                       QDialogButtonBox::ButtonRole role) {
    QPushButton* button = box.addButton(text, role);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

CAlertsNotice::CAlertsNotice(SFiredAlert fired, QObject& owner, QWidget* parent)
    : QDialog(parent, kWindow), m_fired(std::move(fired)), m_owner(owner) {
    setObjectName(QStringLiteral("alertsNotice"));
    setWindowTitle(QtText(NoticeTitle(m_fired.record)));
    setAttribute(Qt::WA_ShowWithoutActivating);
    new QVBoxLayout(this);
    MakeTexts();
    MakeButtons();
}

void CAlertsNotice::MakeTexts() {
    if (!m_fired.record.headline.empty()) {
        auto* headline = new QLabel(QtText(ShownLine(m_fired.record.headline, kMostHeadlineBytes)));
        headline->setObjectName(QStringLiteral("headline"));
        headline->setTextFormat(Qt::PlainText);
        headline->setTextInteractionFlags(Qt::TextSelectableByMouse);
        headline->setWordWrap(true);
        headline->setMaximumWidth(kTextWidth + kSpare);
        QFont bold = headline->font();
        bold.setBold(true);
        headline->setFont(bold);
        layout()->addWidget(headline);
    }
    auto* text = MakeText(QtText(NoticeBody(m_fired.record, m_fired.firedAt)), this);
    text->setObjectName(QStringLiteral("noticeText"));
    text->setAccessibleName(windowTitle());
    static_cast<QVBoxLayout*>(layout())->addWidget(text, 1);
    text->setFocus();
}

void CAlertsNotice::MakeButtons() {
    auto* box = new QDialogButtonBox;
    m_arm = AddButton(*box, QStringLiteral("Ar&m this alert"), "arm", QDialogButtonBox::ActionRole);
    m_reset = AddButton(*box, m_fired.record.isNews ? QStringLiteral("&Read Story") : QStringLiteral("&Reset..."),
                        "reset", QDialogButtonBox::ActionRole);
    m_dismissAll = AddButton(*box, QStringLiteral("Dismiss &All"), "dismissAll", QDialogButtonBox::ActionRole);
    m_dismissAll->setToolTip(QStringLiteral("Close this notice and all that wait; the alert history keeps them"));
    m_dismissAll->hide();
    m_dismiss = AddButton(*box, QStringLiteral("&Dismiss"), "dismiss", QDialogButtonBox::RejectRole);
    m_dismiss->setToolTip(QStringLiteral("Close this notice; the alert stays disarmed (Esc)"));
    layout()->addWidget(box);
    SetTarget({});
    connect(m_arm, &QPushButton::clicked, this, [this] { done(Armed); });
    connect(m_reset, &QPushButton::clicked, this, &CAlertsNotice::OnReset);
    connect(m_dismissAll, &QPushButton::clicked, this, &CAlertsNotice::DismissAll);
    connect(m_dismiss, &QPushButton::clicked, this, &QDialog::reject);
}

void CAlertsNotice::SetWaiting(int count) {
    m_dismissAll->setVisible(count > 0);
    m_dismissAll->setText(QStringLiteral("Dismiss &All (%1 more)").arg(count));
}

void CAlertsNotice::SetTarget(SNoticeTarget target) {
    m_target = std::move(target);
    const QString gone = QStringLiteral("The alert is not in the open watchlist");
    m_arm->setEnabled(m_target.canArm);
    m_arm->setToolTip(
        m_target.canArm
            ? QStringLiteral("Arm the alert that fired again, as it is: it fires with the next value that meets it")
            : gone);
    m_reset->setEnabled(m_target.canReset);
    m_reset->setToolTip(!m_target.canReset ? gone
                        : m_target.resetsFired
                            ? QStringLiteral("Arm the alert again, with another value if you wish")
                            : QStringLiteral("Arm the first alert of the symbol, with another value if you wish"));
}

std::optional<QPoint> CAlertsNotice::MovedTo() const {
    const QPoint place = frameGeometry().topLeft();
    return m_openedAt && *m_openedAt != place ? std::optional(place) : std::nullopt;
}

void CAlertsNotice::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QTimer::singleShot(kPlacedMs, this, [this] {
        if (!m_openedAt) m_openedAt = frameGeometry().topLeft();
    });
}

void CAlertsNotice::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (button && isEnter)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

void CAlertsNotice::done(int result) {
    m_hadKeyboard = isActiveWindow() || result == WasReset;
    QDialog::done(result);
}

void CAlertsNotice::OnReset() {
    auto* dialog = new CResetAlert(m_fired.record, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    dialog->ShowTarget(m_target.resetLine, m_target.resetsFired, m_target.taken);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        std::string record = FormatResetRecord(m_fired.record.symbol, m_fired.record.index, dialog->NewThreshold());
        QCoreApplication::postEvent(&m_owner, new CResetAlertMessage(std::move(record), m_fired));
        accept();
    });
    dialog->show();
}

} // namespace vx
