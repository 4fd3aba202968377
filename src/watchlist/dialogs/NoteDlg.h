// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace vx {

class CWatchlistDoc;

/// The dialog in which the note of a row is written.
///
/// Shape   ";", ":" and "," are taken out of what was written; a note of which nothing remains is deleted
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CNoteDlg : public QDialog {
    Q_OBJECT
public:
    CNoteDlg(CWatchlistDoc& doc, QWidget* parent);

    /// Shows the row's note and lets the user change it, until the dialog is closed; whether OK closed it.
    bool Edit(int row);

    void accept() override;

private:
    std::string RowName() const;

    CWatchlistDoc& m_doc;
    QPlainTextEdit* m_text;
    int m_row = 0;
};

} // namespace vx
