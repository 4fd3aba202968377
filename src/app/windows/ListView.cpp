#include "app/windows/ListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

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

} // namespace vx
