#include "grid/GridAccessible.h"

#include "grid/GridCtrl.h"
#include "grid/QtText.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <algorithm>

namespace vx {

namespace {

// Cells are made when they are asked for and kept, for assistive technology knows them by number; a list of 100,000
// rows that is read through starts anew from time to time.
constexpr int kMaxCells = 4096;
constexpr int kMaxListed = 1000; // cells in one answer

QString ShownQt(const CGridCtrl& grid, int row, int column) { return QtText(grid.ShownText(row, column)); }

/// The text of a cell as it is read to the user: arrows and dots have no sound of their own.
QString SpokenText(const CGridCtrl& grid, const SGridCell& at) {
    SCell cell;
    if (at.row > 0 && at.column > 0 && grid.Source() != nullptr && !grid.IsSpan(at.row))
        grid.Source()->FillCell(at.row, at.column, cell);
    if (!cell.tickTrend) return ShownQt(grid, at.row, at.column);
    QStringList words;
    for (const char c : cell.Text()) {
        const int symbol = CGridPainter::SymbolOf(static_cast<unsigned char>(c));
        if (symbol == kSymbolUp) words += CGridCtrl::tr("up");
        if (symbol == kSymbolDown) words += CGridCtrl::tr("down");
        if (symbol == kSymbolDot) words += CGridCtrl::tr("unchanged");
    }
    return words.join(QLatin1Char(' '));
}

/// One cell, header cells included.
///
/// Owns    nothing; it is invalid once its grid or its row is gone
class CCellAccessible : public QAccessibleInterface,
                        public QAccessibleTableCellInterface,
                        public QAccessibleActionInterface {
public:
    CCellAccessible(CGridCtrl* grid, const SGridCell& cell) : m_grid(grid), m_cell(cell) {}

    const SGridCell& Cell() const { return m_cell; }

    bool isValid() const override {
        return !m_grid.isNull() && m_cell.row <= m_grid->RowCount() && m_cell.column <= m_grid->ColumnCount();
    }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_grid); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override {
        if (m_cell.row == 0) return QAccessible::ColumnHeader;
        return m_cell.column == 0 ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QString text(QAccessible::Text kind) const override {
        if (!isValid()) return {};
        if (kind == QAccessible::Name) return Name();
        if (kind == QAccessible::Value) return SpokenText(*m_grid, m_cell);
        if (kind != QAccessible::Description || m_grid->Source() == nullptr || m_cell.column == 0) return {};
        return QtText(m_cell.row == 0 ? m_grid->Source()->HeaderTip(m_cell.column)
                                      : m_grid->Source()->CellTip(m_cell.row, m_cell.column));
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect seen = m_grid->Geometry().VisibleCellRect(m_cell.row, m_cell.column);
        const QRect place = seen.isEmpty() ? m_grid->Geometry().CellRect(m_cell.row, m_cell.column) : seen;
        return {m_grid->viewport()->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid) return state;
        state.invisible =
            m_grid->ColumnWidth(m_cell.column) == 0 || m_grid->IsRowHidden(m_cell.row) || !m_grid->isVisible();
        state.offscreen = m_grid->Geometry().VisibleCellRect(m_cell.row, m_cell.column).isEmpty();
        if (role() != QAccessible::Cell) return state;
        state.focusable = state.selectable = true;
        state.focused = m_grid->hasFocus() && m_grid->FocusCell() == m_cell;
        state.selected = isSelected();
        state.editable = m_grid->MayEdit(m_cell.row, m_cell.column);
        state.readOnly = !state.editable;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
        if (type == QAccessible::ActionInterface && role() == QAccessible::Cell)
            return static_cast<QAccessibleActionInterface*>(this);
        return nullptr;
    }

    bool isSelected() const override { return isValid() && m_grid->SelectedRange().Has(m_cell.row, m_cell.column); }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {Sibling(0, m_cell.column)}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {Sibling(m_cell.row, 0)}; }
    int columnIndex() const override { return m_cell.column - 1; }
    int rowIndex() const override { return m_cell.row - 1; }
    int columnExtent() const override { return isValid() && m_grid->IsSpan(m_cell.row) ? m_grid->ColumnCount() : 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override {
        QStringList names{setFocusAction()};
        if (isValid() && m_grid->MayEdit(m_cell.row, m_cell.column)) names += pressAction();
        return names;
    }
    void doAction(const QString& name) override {
        if (!isValid()) return;
        m_grid->setFocus();
        m_grid->SetFocusCell(m_cell.row, m_cell.column);
        if (name == pressAction()) m_grid->BeginEdit(m_cell.row, m_cell.column);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QString Name() const {
        const QString text = SpokenText(*m_grid, m_cell);
        if (role() != QAccessible::Cell || m_grid->IsSpan(m_cell.row)) return text;
        return (SpokenPlace(*m_grid, m_cell.row, m_cell.column) + QLatin1Char(' ') + text).trimmed();
    }
    QAccessibleInterface* Sibling(int row, int column) const {
        return isValid() ? parent()->child(row * (m_grid->ColumnCount() + 1) + column) : nullptr;
    }

    QPointer<CGridCtrl> m_grid;
    SGridCell m_cell;
};

/// The control as a table. Its children are all cells, row by row, the header row and the row numbers included; the
/// table's own rows and columns leave those out and count from 0.
///
/// Owns    the cells that were asked for, through the registry of interfaces
class CGridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit CGridAccessible(CGridCtrl* grid) : QAccessibleWidget(grid, QAccessible::Table), m_grid(grid) {}
    ~CGridAccessible() override { ForgetCells(); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    int childCount() const override { return (m_grid->RowCount() + 1) * Stride(); }
    QAccessibleInterface* child(int index) const override {
        return index < 0 || index >= childCount() ? nullptr : CellInterface({index / Stride(), index % Stride()});
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* cell = dynamic_cast<const CCellAccessible*>(child);
        return cell != nullptr && cell->isValid() ? IndexOf(cell->Cell()) : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const SGridCell at = m_grid->CellAt(m_grid->viewport()->mapFromGlobal(QPoint(x, y)));
        return at.row < 0 || at.column < 0 ? nullptr : CellInterface(at);
    }
    QAccessibleInterface* focusChild() const override {
        const bool any = m_grid->RowCount() > 0 && m_grid->ColumnCount() > 0;
        return any && m_grid->hasFocus() ? CellInterface(m_grid->FocusCell()) : nullptr;
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override {
        const bool there = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
        return there ? CellInterface({row + 1, column + 1}) : nullptr;
    }
    int columnCount() const override { return m_grid->ColumnCount(); }
    int rowCount() const override { return m_grid->RowCount(); }
    QString columnDescription(int column) const override { return ShownQt(*m_grid, 0, column + 1); }
    QString rowDescription(int row) const override { return QtText(m_grid->RowName(row + 1)); }

    int selectedCellCount() const override {
        const SGridRange range = Selected();
        return m_grid->Geometry().ShownRowsIn(range.firstRow, range.lastRow) *
               (range.lastColumn - range.firstColumn + 1);
    }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        const SGridRange range = Selected();
        const CGridGeometry& geometry = m_grid->Geometry();
        for (int row = geometry.NextShownRow(range.firstRow); row <= range.lastRow && cells.size() < kMaxListed;
             row = geometry.NextShownRow(row + 1))
            for (int column = range.firstColumn; column <= range.lastColumn && cells.size() < kMaxListed; ++column)
                cells += CellInterface({row, column});
        return cells;
    }
    int selectedColumnCount() const override { return static_cast<int>(selectedColumns().size()); }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    QList<int> selectedColumns() const override {
        const SGridRange range = Selected();
        return m_grid->WholeColumnsSelected() ? Numbers(range.firstColumn, range.lastColumn) : QList<int>();
    }
    QList<int> selectedRows() const override {
        const SGridRange range = Selected();
        QList<int> rows = m_grid->WholeRowsSelected() ? Numbers(range.firstRow, range.lastRow) : QList<int>();
        if (!m_grid->Geometry().HiddenRows().empty())
            rows.removeIf([this](int row) { return m_grid->IsRowHidden(row + 1); });
        return rows;
    }
    bool isColumnSelected(int column) const override {
        return m_grid->WholeColumnsSelected() && Selected().HasColumn(column + 1);
    }
    bool isRowSelected(int row) const override { return m_grid->WholeRowsSelected() && Selected().HasRow(row + 1); }
    bool selectRow(int row) override {
        if (row < 0 || row >= rowCount()) return false;
        m_grid->SelectRange({row + 1, row + 1, 1, columnCount()});
        return true;
    }
    bool selectColumn(int column) override {
        if (column < 0 || column >= columnCount()) return false;
        m_grid->SelectRange({1, rowCount(), column + 1, column + 1});
        return true;
    }
    bool unselectRow(int) override { return false; } // a cell is always selected
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { ForgetCells(); }

    int IndexOf(const SGridCell& cell) const { return cell.row * Stride() + cell.column; }

private:
    int Stride() const { return m_grid->ColumnCount() + 1; }
    SGridRange Selected() const {
        const bool any = m_grid->RowCount() > 0 && m_grid->ColumnCount() > 0;
        return any ? m_grid->SelectedRange() : SGridRange{1, 0, 1, 0};
    }
    static QList<int> Numbers(int first, int last) {
        QList<int> numbers;
        for (int i = first; i <= last; ++i) numbers += i - 1;
        return numbers;
    }
    QAccessibleInterface* CellInterface(const SGridCell& cell) const {
        const qint64 key = qint64{cell.row} << 32 | cell.column;
        const auto known = m_cells.constFind(key);
        if (known != m_cells.constEnd()) return QAccessible::accessibleInterface(*known);
        if (m_cells.size() >= kMaxCells) ForgetCells();
        auto* made = new CCellAccessible(m_grid, cell);
        m_cells.insert(key, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    void ForgetCells() const {
        for (const QAccessible::Id id : m_cells) QAccessible::deleteAccessibleInterface(id);
        m_cells.clear();
    }

    CGridCtrl* m_grid;
    mutable QHash<qint64, QAccessible::Id> m_cells;
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

QString SpokenPlace(const CGridCtrl& grid, int row, int column) {
    const QString header = ShownQt(grid, 0, column);
    const QString name = QtText(grid.RowName(row));
    // The column that names the row is not read twice.
    return grid.ShownText(row, column) == grid.RowName(row) ? header : (name + QLatin1Char(' ') + header).trimmed();
}

void AnnounceFocusCell(CGridCtrl& grid) {
    if (!QAccessible::isActive() || !grid.hasFocus() || grid.RowCount() == 0 || grid.ColumnCount() == 0) return;
    auto* table = dynamic_cast<CGridAccessible*>(QAccessible::queryAccessibleInterface(&grid));
    if (table == nullptr) return;
    QAccessibleEvent event(&grid, QAccessible::Focus);
    event.setChild(table->IndexOf(grid.FocusCell()));
    QAccessible::updateAccessibility(&event);
}

void AnnounceSelection(CGridCtrl& grid) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&grid, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

void AnnounceShape(CGridCtrl& grid) {
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent event(&grid, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

} // namespace vx
