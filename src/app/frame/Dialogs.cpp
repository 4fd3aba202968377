// SPDX-License-Identifier: MIT
#include "app/frame/Dialogs.h"

#include "app/frame/ProgramName.h"
#include "base/Clock.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>

namespace vx {

namespace {

// What a window manager draws around a window, when none of ours says.
constexpr QMargins kUsualFrame{4, 28, 4, 4};

QSize RoomFor(const QWidget& dialog) {
    const QWidget* frame = dialog.parentWidget() ? dialog.parentWidget()->window() : nullptr;
    const QMargins margins = frame && frame->windowHandle() ? frame->windowHandle()->frameMargins() : kUsualFrame;
    return dialog.screen()->availableGeometry().marginsRemoved(margins).size() - QSize(2, 2);
}

bool FitsInto(const QSize& size, const QSize& room) { return size.boundedTo(room) == size; }

} // namespace

CDialogFit::CDialogFit(QDialog& dialog) : QObject(&dialog), m_dialog(dialog) { dialog.installEventFilter(this); }

// Before the dialog looks for its place.
bool CDialogFit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && !event->spontaneous()) Fit();
    return QObject::eventFilter(watched, event);
}

void CDialogFit::Fit() {
    const QSize room = RoomFor(m_dialog);
    const QSize least = m_dialog.minimumSizeHint().expandedTo(m_dialog.minimumSize());
    if (!FitsInto(least, room)) MakeScroll();
    if (!FitsInto(m_dialog.size(), room)) m_dialog.resize(m_dialog.size().boundedTo(room));
}

void CDialogFit::MakeScroll() {
    auto* layout = qobject_cast<QVBoxLayout*>(m_dialog.layout());
    if (!layout || layout->count() < 2) return; // A dialog of the toolkit.
    const QMargins margins = layout->contentsMargins();
    QLayoutItem* bottom = layout->takeAt(layout->count() - 1);
    // All stay in the dialog meanwhile, or Tab would go through them in another order.
    auto* content = new QWidget(&m_dialog);
    layout->setSizeConstraint(QLayout::SetDefaultConstraint);
    layout->setContentsMargins(0, 0, 0, 0);
    content->setLayout(layout);
    auto* area = new QScrollArea(&m_dialog);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    // By itself it follows the keyboard only from one of its controls to the next, not from the buttons below it.
    connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        if (now && area->widget()->isAncestorOf(now)) area->ensureWidgetVisible(now);
    });
    auto* outer = new QVBoxLayout(&m_dialog);
    outer->setContentsMargins(margins);
    outer->addWidget(area, 1);
    outer->addItem(bottom);
    m_dialog.setMinimumSize(0, 0);
    m_dialog.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const QSize whole = content->sizeHint() + QSize(area->verticalScrollBar()->sizeHint().width(),
                                                    outer->spacing() + bottom->sizeHint().height());
    m_dialog.resize(whole.grownBy(margins));
}

CStrayKeyGuard::CStrayKeyGuard() { qApp->installEventFilter(this); }

bool CStrayKeyGuard::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool opens = type == QEvent::Show && qobject_cast<QMessageBox*>(watched);
    const bool isKey = type == QEvent::KeyPress || type == QEvent::ShortcutOverride || type == QEvent::Shortcut;
    if (!opens && !(isKey && m_holds)) return false;
    const int64_t nowMs = CClock::Instance().MonotonicMs();
    m_holds = opens || nowMs - m_lastMs < kQuietMs;
    if (type != QEvent::Shortcut) m_lastMs = nowMs;
    return isKey && m_holds && qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

namespace {

constexpr int kSteps = 1000;
constexpr qint64 kLookMs = 25;

} // namespace

CWorkProgressBox::CWorkProgressBox(QWidget* parent, QString label, QString cancel)
    : m_parent(parent), m_label(std::move(label)), m_cancel(std::move(cancel)) {
    m_age.start();
    m_shown.start();
}

CWorkProgressBox::~CWorkProgressBox() = default;

bool CWorkProgressBox::Step(size_t done, size_t total) {
    if (!m_dialog && m_age.hasExpired(kShowAfterMs)) {
        m_dialog = std::make_unique<QProgressDialog>(QString(), m_cancel, 0, kSteps, m_parent);
        auto* label = new QLabel(m_label);
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignCenter);
        m_dialog->setLabel(label);
        m_dialog->setObjectName(QStringLiteral("workProgress"));
        m_dialog->setWindowTitle(QString::fromLatin1(kProgramName));
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setAutoReset(false);
        m_dialog->setMinimumDuration(0);
        m_dialog->show();
    }
    if (!m_dialog) return true;
    if (!m_shown.hasExpired(kLookMs)) return !m_dialog->wasCanceled();
    m_shown.restart();
    m_dialog->setMaximum(total == 0 ? 0 : kSteps);
    m_dialog->setValue(total == 0 ? 0 : static_cast<int>(std::min(done, total) * kSteps / total));
    QCoreApplication::processEvents();
    return !m_dialog->wasCanceled();
}

namespace {

QMessageBox::Icon IconOf(EBoxIcon icon) {
    switch (icon) {
    case EBoxIcon::None:
        return QMessageBox::NoIcon;
    case EBoxIcon::Stop:
        return QMessageBox::Critical;
    case EBoxIcon::Exclamation:
        return QMessageBox::Warning;
    case EBoxIcon::Question:
        return QMessageBox::Question;
    case EBoxIcon::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(EBoxButtons buttons) {
    switch (buttons) {
    case EBoxButtons::Ok:
        return QMessageBox::Ok;
    case EBoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case EBoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case EBoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

EBoxAnswer AnswerOf(int button, EBoxButtons buttons) {
    switch (button) {
    case QMessageBox::Yes:
        return EBoxAnswer::Yes;
    case QMessageBox::No:
        return EBoxAnswer::No;
    case QMessageBox::Ok:
        return EBoxAnswer::Ok;
    default:
        break;
    }
    if (buttons == EBoxButtons::Ok) return EBoxAnswer::Ok;
    return buttons == EBoxButtons::YesNo ? EBoxAnswer::No : EBoxAnswer::Cancel;
}

} // namespace

void InstallQtMessageBoxes(QWidget* parent) {
    SetMessageBoxHandler([guarded = QPointer<QWidget>(parent)](const SMessageBox& box) {
        QWidget* const over = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : guarded.data();
        QMessageBox window(over);
        window.setObjectName(QStringLiteral("messageBox"));
        window.setTextFormat(Qt::PlainText);
        window.setText(QtText(box.text));
        // Without a title the toolkit would show the name of the executable file.
        window.setWindowTitle(box.caption.empty() ? QString::fromLatin1(kProgramName) : QtText(box.caption));
        window.setIcon(IconOf(box.icon));
        window.setStandardButtons(ButtonsOf(box.buttons));
        return AnswerOf(window.exec(), box.buttons);
    });
}

} // namespace vx
