#include "grid/GridAccessible.h"

#include "grid/GridCtrl.h"
#include "grid/QtText.h"

#include <QAccessibleWidget>

namespace vx {

namespace {

/// The control as a table; its value is the text of the focus cell, named by its column and row.
class CGridAccessible : public QAccessibleWidget {
public:
    explicit CGridAccessible(CGridCtrl* grid) : QAccessibleWidget(grid, QAccessible::Table), m_grid(grid) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value) return FocusText();
        return QAccessibleWidget::text(kind);
    }

private:
    QString FocusText() const {
        const CCellSource* source = m_grid->Source();
        const SGridCell focus = m_grid->FocusCell();
        if (source == nullptr || m_grid->RowCount() == 0 || m_grid->ColumnCount() == 0) return {};
        SCell cell;
        if (source->FillSpan(focus.row, cell)) return QtText(cell.Text());
        cell.Reset();
        source->FillHeader(focus.column, cell);
        const QString header = QtText(cell.Text());
        cell.Reset();
        source->FillCell(focus.row, focus.column, cell);
        return QStringLiteral("%1 %2: %3").arg(header).arg(focus.row).arg(QtText(cell.Text()));
    }

    CGridCtrl* m_grid;
};

QAccessibleInterface* MakeGridAccessible(const QString&, QObject* object) {
    auto* grid = qobject_cast<CGridCtrl*>(object);
    return grid != nullptr ? new CGridAccessible(grid) : nullptr;
}

} // namespace

void InstallGridAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeGridAccessible);
        return true;
    }();
    (void)installed;
}

void AnnounceFocusCell(CGridCtrl& grid) {
    if (!QAccessible::isActive()) return;
    const QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&grid);
    if (table == nullptr) return;
    QAccessibleValueChangeEvent event(&grid, table->text(QAccessible::Value));
    QAccessible::updateAccessibility(&event);
}

} // namespace vx
