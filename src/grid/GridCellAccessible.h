// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridSelection.h"

#include <QAccessible>
#include <QPointer>
#include <QString>

namespace vx {

class CGridView;

/// One cell of a grid as assistive technology sees it, header cells included. A row with one text across all columns
/// has one cell, that of column 1.
///
/// Owns    nothing; it is invalid once its grid, its row or its column is gone
class CGridCellAccessible : public QAccessibleInterface,
                            public QAccessibleTableCellInterface,
                            public QAccessibleActionInterface {
public:
    CGridCellAccessible(CGridView* grid, const SGridCell& cell);

    const SGridCell& Cell() const { return m_cell; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {Sibling(0, m_cell.column)}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {Sibling(m_cell.row, 0)}; }
    int columnIndex() const override { return m_cell.column - 1; }
    int rowIndex() const override { return m_cell.row - 1; }
    int columnExtent() const override;
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    bool IsHeading() const;
    bool IsCovered() const;
    QRect Whole() const;
    QRect Seen() const;
    QAccessibleInterface* Sibling(int row, int column) const;

    QPointer<CGridView> m_grid;
    SGridCell m_cell;
};

/// The whole name of a cell as it is read to the user: "IBM Last 123.45".
QString SpokenCell(const CGridView& grid, const SGridCell& at);

} // namespace vx
