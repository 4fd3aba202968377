#include "alerts/AlertsNotice.h"

#include "alerts/AlertMessages.h"
#include "alerts/AlertTexts.h"
#include "alerts/ResetAlert.h"
#include "grid/QtText.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFrame>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr int kTextWidth = 430;
constexpr int kMostTextHeight = 260;
constexpr int kSpare = 8; // Beside and below the text, so that no scroll bar comes.

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
    const QRect room(0, 0, kTextWidth, kMostTextHeight);
    const QRect needed = box->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::TextWrapAnywhere, text);
    box->setMinimumSize(kTextWidth + kSpare, std::min(needed.height(), kMostTextHeight) + kSpare);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored); // Such a box asks for more than its text needs.
    return box;
}

} // namespace

CAlertsNotice::CAlertsNotice(SAlertNotice notice, const SLocalTime& firedAt, QObject& owner, QWidget* parent)
    : QDialog(parent), m_notice(std::move(notice)), m_owner(owner) {
    setObjectName(QStringLiteral("alertsNotice"));
    setWindowTitle(QtText(NoticeTitle(m_notice)));
    setModal(true);
    auto* text = MakeText(QtText(NoticeBody(m_notice, firedAt)), this);
    text->setObjectName(QStringLiteral("noticeText"));
    text->setAccessibleName(windowTitle());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text, 1);
    MakeButtons();
}

void CAlertsNotice::MakeButtons() {
    auto* buttons = new QDialogButtonBox;
    m_reset = buttons->addButton(m_notice.isNews ? tr("&Read Story") : tr("&Reset..."), QDialogButtonBox::ActionRole);
    m_dismissAll = buttons->addButton(tr("Dismiss &All"), QDialogButtonBox::ActionRole);
    m_dismiss = buttons->addButton(tr("&Dismiss"), QDialogButtonBox::RejectRole);
    m_reset->setObjectName(QStringLiteral("reset"));
    SetResettable(true);
    m_dismissAll->setObjectName(QStringLiteral("dismissAll"));
    m_dismissAll->setToolTip(tr("Close this notice and those that wait behind it; the alert history keeps them"));
    m_dismissAll->hide();
    m_dismiss->setObjectName(QStringLiteral("dismiss"));
    m_dismiss->setToolTip(tr("Close this notice; the alert stays disarmed"));
    m_reset->setAutoDefault(false);
    m_dismissAll->setAutoDefault(false);
    layout()->addWidget(buttons);
    m_dismiss->setDefault(true); // Only a button that stands in its dialog stays the default one.
    m_dismiss->setFocus();
    connect(m_reset, &QPushButton::clicked, this, &CAlertsNotice::OnReset);
    connect(m_dismissAll, &QPushButton::clicked, this, &CAlertsNotice::DismissAll);
    connect(m_dismiss, &QPushButton::clicked, this, &QDialog::reject);
    for (QObject* receiver : {static_cast<QObject*>(this), static_cast<QObject*>(m_reset),
                              static_cast<QObject*>(m_dismissAll), static_cast<QObject*>(m_dismiss)})
        receiver->installEventFilter(this);
}

void CAlertsNotice::SetWaiting(int count) {
    m_dismissAll->setVisible(count > 0);
    m_dismissAll->setText(tr("Dismiss &All (%1 more)").arg(count));
}

void CAlertsNotice::SetResettable(bool resettable) {
    m_reset->setEnabled(resettable);
    m_reset->setToolTip(resettable ? tr("Arm the alert again, with another value if you wish")
                                   : tr("The alert is not in the open watchlist"));
}

void CAlertsNotice::showEvent(QShowEvent* event) {
    m_shown.start();
    m_lastKey.start();
    QDialog::showEvent(event);
}

bool CAlertsNotice::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride ||
                       type == QEvent::Shortcut;
    if (isKey && IsGuarded()) {
        if (type == QEvent::KeyPress) m_lastKey.start();
        event->accept();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool CAlertsNotice::IsGuarded() const {
    return m_shown.isValid() && !m_lastKey.hasExpired(kKeyGuardMs) && !m_shown.hasExpired(kMostKeyGuardMs);
}

void CAlertsNotice::OnReset() {
    auto* dialog = new CResetAlert(m_notice, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        m_newThreshold = dialog->NewThreshold();
        QCoreApplication::postEvent(
            &m_owner, new CResetAlertMessage(FormatResetRecord(m_notice.symbol, m_notice.index, m_newThreshold)));
        accept();
    });
    dialog->show();
}

} // namespace vx
