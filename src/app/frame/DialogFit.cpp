#include "app/frame/DialogFit.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

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

} // namespace vx
