// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace vx {

class CWatchlistDoc;

/// Asks for a symbol and finds its row.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CGoToSymbolDlg : public QDialog {
    Q_OBJECT
public:
    CGoToSymbolDlg(CWatchlistDoc& doc, QWidget* parent);

    /// The row that was found when the dialog was accepted.
    int Row() const { return m_row; }

    /// Stays open, and says so, when the symbol is in no row.
    void accept() override;

private:
    CWatchlistDoc& m_doc;
    QLineEdit* m_symbol;
    QLabel* m_message;
    int m_row = 0;
};

} // namespace vx
