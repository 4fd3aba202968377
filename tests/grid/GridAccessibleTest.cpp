// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"

#include <QAccessible>

using namespace vx;

namespace {

/// Columns Symbol, Last ...; row 6 is a heading, row 9 can be edited.
class CSpokenGrid : public CNorvGridCtrl {
public:
    using CNorvGridCtrl::CNorvGridCtrl;
    bool MayEdit(int row, int) const override { return row == 9; }
};

class CGridAccessibleTest : public GridTestOf<CSpokenGrid> {
protected:
    void SetUp() override {
        source.header = [](int column, SCell& cell) {
            cell.SetText(column == 1 ? "Symbol" : column == 2 ? "Last" : "");
        };
        source.cell = [](int row, int column, SCell& cell) {
            if (row == 3)
                cell.SetText(column == 1 ? "IBM" : column == 2 ? "123.45" : column == 3 ? "\xAD\xAF\xB7" : "");
            cell.tickTrend = column == 3;
        };
        MakeHeading("Banks");
        source.headerTip = "Last price";
        GridTestOf::SetUp();
        root = QAccessible::queryAccessibleInterface(&grid);
        table = root->tableInterface();
    }
    QString Name(int row, int column) { return table->cellAt(row - 1, column - 1)->text(QAccessible::Name); }

    QAccessibleInterface* root = nullptr;
    QAccessibleTableInterface* table = nullptr;
};

} // namespace

TEST_F(CGridAccessibleTest, CellsAreReadByRowColumnAndText) {
    EXPECT_EQ(root->role(), QAccessible::Table);
    EXPECT_EQ(table->rowCount(), 100);
    EXPECT_EQ(table->columnCount(), 10);
    EXPECT_EQ(Name(3, 2) + Name(3, 1) + Name(4, 2) + Name(3, 3),
              QStringLiteral("IBM Last 123.45Symbol IBMLastIBM up down unchanged"));
    QAccessibleInterface* cell = table->cellAt(2, 1);
    QAccessibleInterface* header = cell->tableCellInterface()->columnHeaderCells().value(0);
    EXPECT_EQ(header->text(QAccessible::Name), QStringLiteral("Last"));
    EXPECT_EQ(header->text(QAccessible::Description), QStringLiteral("Last price"));
    EXPECT_EQ(root->child(root->indexOfChild(cell)), cell);
    EXPECT_EQ(root->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    EXPECT_EQ(table->cellAt(100, 0), nullptr);
    EXPECT_EQ(root->child(101 * 11), nullptr);
    EXPECT_TRUE(table->cellAt(80, 1)->state().offscreen);
}

TEST_F(CGridAccessibleTest, AHeadingIsOneCellAcrossAllColumns) {
    QAccessibleInterface* heading = table->cellAt(5, 0);
    EXPECT_EQ(heading->text(QAccessible::Name), QStringLiteral("Banks"));
    EXPECT_EQ(heading->tableCellInterface()->columnExtent(), 10);
    int read = 0;
    for (int column = 1; column <= 10; ++column) {
        EXPECT_EQ(table->cellAt(5, column - 1), heading);
        if (QAccessibleInterface* child = root->child(6 * 11 + column)) read += child == heading ? 1 : 100;
    }
    EXPECT_EQ(read, 1);
    grid.SetFocusCell(6, 4);
    EXPECT_EQ(root->focusChild(), heading);
    EXPECT_EQ(table->selectedCells(), QList<QAccessibleInterface*>{heading});

    // A row that becomes a heading: what was handed out of it is covered by its first cell.
    QAccessibleInterface* covered = table->cellAt(6, 2);
    MakeHeading("Oil", 7);
    EXPECT_EQ(table->cellAt(6, 2)->text(QAccessible::Name), QStringLiteral("Oil"));
    EXPECT_TRUE(covered->text(QAccessible::Name).isEmpty() && covered->state().invisible);
}

TEST_F(CGridAccessibleTest, FocusAndSelectionCanBeAskedAndSet) {
    grid.SetFocusCell(3, 2);
    EXPECT_EQ(root->focusChild(), table->cellAt(2, 1));
    EXPECT_TRUE(table->cellAt(2, 1)->state().focused && table->cellAt(2, 1)->state().selected);
    EXPECT_FALSE(table->cellAt(2, 2)->state().selected);
    table->selectColumn(4);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 5, 5}));
    EXPECT_EQ(table->selectedColumns(), QList<int>{4});
    EXPECT_FALSE(table->selectRow(100));
    QAccessibleInterface* cell = table->cellAt(8, 0);
    EXPECT_TRUE(cell->state().editable && !table->cellAt(2, 0)->state().editable);
    cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(grid.EditedCell(), (SGridCell{9, 1}));
    EXPECT_TRUE(grid.IsEditing());
}

TEST_F(CGridAccessibleTest, ACellLivesAsLongAsItsRow) {
    grid.SetRowCount(100'000);
    QAccessibleInterface* first = table->cellAt(0, 1);
    const QAccessible::Id id = QAccessible::uniqueId(first);
    for (int row = 0; row < 100'000; row += 10)
        ASSERT_EQ(root->indexOfChild(table->cellAt(row, 1)), (row + 1) * 11 + 2);
    EXPECT_EQ(table->cellAt(0, 1), first);
    EXPECT_EQ(QAccessible::accessibleInterface(id), first);
    grid.SelectRange({1, 100'000, 1, 10});
    EXPECT_LE(table->selectedCells().size(), 1000);
    grid.SetRowCount(10);
    EXPECT_EQ(QAccessible::accessibleInterface(id), first) << "rows came and went elsewhere";
    grid.SetRowCount(0);
    EXPECT_FALSE(first->isValid());
    EXPECT_EQ(first->text(QAccessible::Name), QString());
    EXPECT_EQ(root->focusChild(), nullptr);
}
