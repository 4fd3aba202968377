#pragma once

#include <QTreeView>

namespace vx {

/// A flat list of rows with columns that says what to do while it is empty, and that keeps its place while rows arrive
/// above those the user looks at.
///
/// Thread  GUI thread only
class CListView : public QTreeView {
    Q_OBJECT
public:
    /// name: object name; label: what assistive technology calls the list.
    CListView(const QString& name, const QString& label, QWidget* parent);

    /// Shown, as plain text, in place of rows while there are none.
    void SetEmptyText(const QString& text);
    const QString& EmptyText() const { return m_emptyText; }
    /// Widths in logical pixels; the last column takes what is left. Call it when the model is set.
    void SetColumnWidths(std::initializer_list<int> widths);

    /// How many rows are scrolled out at the top.
    int FirstShownRow() const;
    /// Rows have come above the others: a list that is scrolled shows the same rows as before, one at its top stays
    /// there.
    void StayBelow(int rowsOnTop);

Q_SIGNALS:
    /// Double click on a row.
    void RowDoubleClicked(const QModelIndex& index);
    /// Enter while something is selected, on the current row.
    void RowEntered(const QModelIndex& index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_emptyText;
};

} // namespace vx
