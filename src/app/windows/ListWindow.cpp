// SPDX-License-Identifier: MIT
#include "app/windows/ListWindow.h"

#include "data/record/SymbolKey.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QShowEvent>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr int kEmptyTextMargin = 16;
constexpr int kRowPadding = 3; ///< Above and below the text.

/// Rows with some air between them.
class CRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 2 * kRowPadding);
    }
};

} // namespace

CListView::CListView(const QString& name, const QString& label, QWidget* parent) : QTreeView(parent) {
    setObjectName(name);
    setAccessibleName(label);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setTabKeyNavigation(false);
    setItemDelegate(new CRowDelegate(this));
    header()->setMinimumSectionSize(24);
    connect(this, &QTreeView::doubleClicked, this, &CListView::RowDoubleClicked);
}

void CListView::SetEmptyText(const QString& text) {
    if (text == m_emptyText) return;
    m_emptyText = text;
    viewport()->update();
}

void CListView::SetColumnWidths(std::initializer_list<int> widths) {
    int column = 0;
    for (const int width : widths) header()->resizeSection(column++, width);
    header()->setStretchLastSection(true);
}

int CListView::FirstShownRow() const { return verticalScrollBar()->value(); }

void CListView::StayBelow(int rowsOnTop) {
    QScrollBar* bar = verticalScrollBar();
    if (rowsOnTop <= 0 || bar->value() == 0) return;
    executeDelayedItemsLayout();
    bar->setValue(bar->value() + rowsOnTop);
}

void CListView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (m_emptyText.isEmpty() || !model() || model()->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect room =
        viewport()->rect().adjusted(kEmptyTextMargin, kEmptyTextMargin, -kEmptyTextMargin, -kEmptyTextMargin);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
}

void CListView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) return QTreeView::keyPressEvent(event);
    event->accept(); // Not for the dialog's default button.
    if (selectionModel() && selectionModel()->hasSelection()) Q_EMIT RowEntered(currentIndex());
}

QDialogButtonBox& AddBottomRow(QDialog& window, QVBoxLayout& layout, QLabel& state,
                               QDialogButtonBox::StandardButtons buttons) {
    auto* box = new QDialogButtonBox(buttons);
    for (QAbstractButton* button : box->buttons()) static_cast<QPushButton*>(button)->setAutoDefault(false);
    QObject::connect(box, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    state.setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout;
    row->addWidget(&state, 1);
    row->addWidget(box);
    layout.addLayout(row);
    return *box;
}

void TabThrough(std::initializer_list<QWidget*> widgets) {
    QWidget* before = nullptr;
    for (QWidget* widget : widgets)
        if (QWidget* last = std::exchange(before, widget)) QWidget::setTabOrder(last, widget);
}

namespace {

constexpr int kMargin = 28; ///< To the edges of the parent window.
/// The parent's status bar, which stays in sight, and the window's own title bar.
constexpr int kBarsHeight = 40;

} // namespace

CRowWindow::CRowWindow(CWatchlistDoc& doc, CWatchlistGrid& grid, Qt::Corner corner, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_grid(grid), m_corner(corner) {
    setSizeGripEnabled(true);
    m_beat.setInterval(kBeatMs);
    connect(&m_beat, &QTimer::timeout, this, [this] { Refresh(); });
    connect(&grid, &CGridCtrl::FocusCellChanged, this, [this] {
        if (isVisible()) Refresh();
    });
}

void CRowWindow::MoveToCorner() {
    if (std::exchange(m_placed, true) || !parentWidget()) return;
    const QRect room =
        parentWidget()->window()->geometry().adjusted(kMargin, kMargin, -kMargin, -kMargin - kBarsHeight);
    const bool left = m_corner == Qt::TopLeftCorner || m_corner == Qt::BottomLeftCorner;
    const bool top = m_corner == Qt::TopLeftCorner || m_corner == Qt::TopRightCorner;
    move(left ? room.left() : std::max(room.left(), room.right() - width()),
         top ? room.top() : std::max(room.top(), room.bottom() - height()));
}

void CRowWindow::ShowInFront() {
    MoveToCorner();
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
    Refresh();
}

std::string CRowWindow::FocusSymbol() const { return std::string(FeedSymbol(m_doc.RowSymbol(m_grid.FocusCell().row))); }

void CRowWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_beat.start();
    Refresh();
}

void CRowWindow::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    m_beat.stop();
    if (!event->spontaneous()) Closed(); // Minimised, it is still open.
}

} // namespace vx
