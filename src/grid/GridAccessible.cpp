// SPDX-License-Identifier: MIT
#include "grid/GridAccessible.h"

#include "base/qt/QtText.h"
#include "grid/GridCellAccessible.h"
#include "grid/GridView.h"

#include <QAccessibleWidget>
#include <QHash>

namespace vx {

CFocusSpeech::CFocusSpeech(CGridView& grid) : m_grid(grid), m_pause(&grid) {
    m_pause.setObjectName(QStringLiteral("focusSpeechPause"));
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    QObject::connect(&m_pause, &QTimer::timeout, &grid, [this] { Say(); });
}

bool CFocusSpeech::IsHeard() const { return QAccessible::isActive() && m_grid.hasFocus(); }

void CFocusSpeech::Moved() {
    if (!IsHeard()) return;
    m_said = SpokenCell(m_grid, m_grid.FocusCell());
    m_pause.start(); // What was read just now is not talked over.
}

void CFocusSpeech::TextsChanged() {
    if (IsHeard() && !m_pause.isActive()) Say();
}

void CFocusSpeech::Say() {
    if (!IsHeard()) return;
    const QString text = SpokenCell(m_grid, m_grid.FocusCell());
    if (text == m_said) return;
    m_said = text;
    AnnounceCell(m_grid, m_grid.FocusCell(), QAccessible::NameChanged);
    m_pause.start();
}

namespace {

constexpr int kMaxListed = 1000; // cells in one answer

/// The control as a table. Its children are all cells, row by row, the header row and the row numbers included; the
/// table's own rows and columns leave those out and count from 0. In a row with one text the places of all columns but
/// the first have no child, and as cells of the table they are the first one.
///
/// Owns    the cells that were asked for, through the registry of interfaces. Assistive technology knows them by their
///         numbers, so that each stays as long as the grid has its row and its column
class CGridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit CGridAccessible(CGridView* grid) : QAccessibleWidget(grid, QAccessible::Table), m_grid(grid) {}
    ~CGridAccessible() override { ForgetCells(); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    int childCount() const override { return (m_grid->RowCount() + 1) * Stride(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        const SGridCell cell{index / Stride(), index % Stride()};
        return cell == OwnerOf(cell) ? CellInterface(cell) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* cell = dynamic_cast<const CGridCellAccessible*>(child);
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
    QString columnDescription(int column) const override { return QtText(m_grid->ShownText(0, column + 1)); }
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
                if (column == range.firstColumn || OwnerOf({row, column}).column == column)
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
    void modelChange(QAccessibleTableModelChangeEvent*) override { ForgetMissingCells(); }

    /// Of the child that shows a place of the grid.
    int IndexOf(const SGridCell& place) const {
        const SGridCell cell = OwnerOf(place);
        return cell.row * Stride() + cell.column;
    }

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
    SGridCell OwnerOf(const SGridCell& place) const {
        return {place.row, place.column > 1 && m_grid->IsSpan(place.row) ? 1 : place.column};
    }
    QAccessibleInterface* CellInterface(const SGridCell& place) const {
        const SGridCell cell = OwnerOf(place);
        const qint64 key = qint64{cell.row} << 32 | cell.column;
        const auto known = m_cells.constFind(key);
        if (known != m_cells.constEnd()) return QAccessible::accessibleInterface(*known);
        auto* made = new CGridCellAccessible(m_grid, cell);
        m_cells.insert(key, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    void ForgetCells() {
        for (const QAccessible::Id id : std::as_const(m_cells)) QAccessible::deleteAccessibleInterface(id);
        m_cells.clear();
    }
    void ForgetMissingCells() {
        m_cells.removeIf([this](const std::pair<const qint64&, QAccessible::Id&>& cell) {
            const bool there = cell.first >> 32 <= m_grid->RowCount() &&
                               static_cast<int>(cell.first & 0xFFFFFFFF) <= m_grid->ColumnCount();
            if (!there) QAccessible::deleteAccessibleInterface(cell.second);
            return !there;
        });
    }

    CGridView* m_grid;
    mutable QHash<qint64, QAccessible::Id> m_cells;
};

QAccessibleInterface* MakeGridAccessible(const QString&, QObject* object) {
    auto* grid = qobject_cast<CGridView*>(object);
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

QString SpokenPlace(const CGridView& grid, int row, int column) {
    const QString header = QtText(grid.ShownText(0, column));
    const QString name = QtText(grid.RowName(row));
    // The column that names the row is not read twice.
    return grid.ShownText(row, column) == grid.RowName(row) ? header : (name + QLatin1Char(' ') + header).trimmed();
}

void AnnounceCell(CGridView& grid, const SGridCell& cell, QAccessible::Event what) {
    if (!QAccessible::isActive() || grid.RowCount() == 0 || grid.ColumnCount() == 0) return;
    auto* table = dynamic_cast<CGridAccessible*>(QAccessible::queryAccessibleInterface(&grid));
    if (table == nullptr) return;
    QAccessibleEvent event(&grid, what);
    event.setChild(table->IndexOf(cell));
    QAccessible::updateAccessibility(&event);
}

void AnnounceFocusCell(CGridView& grid) {
    if (grid.hasFocus()) AnnounceCell(grid, grid.FocusCell(), QAccessible::Focus);
}

void AnnounceSelection(CGridView& grid, const SGridSelection& before, const SGridSelection& now) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&grid, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
    const SGridRange range = now.Range();
    if (!before.Range().IsOneCell() && !range.Has(before.reach.row, before.reach.column))
        AnnounceCell(grid, before.reach, QAccessible::SelectionRemove);
    // A focus cell that is selected alone is announced as the focus.
    if (!range.IsOneCell()) AnnounceCell(grid, now.reach, QAccessible::SelectionAdd);
}

void AnnounceShape(CGridView& grid) {
    if (!QAccessible::isActive()) return;
    QAccessibleTableModelChangeEvent event(&grid, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

} // namespace vx
