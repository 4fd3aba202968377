// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/exchange/FindText.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace vx {

class CWatchlistDoc;
class CWatchlistGrid;

/// The bar below the grid in which a text is looked for. While it is typed the first place is shown; Enter moves to
/// the next one, Shift+Enter to the one before, Esc back to the grid.
///
/// Owns    nothing of document and grid, which outlive it
/// Thread  GUI thread only
class CFindBar : public QWidget {
    Q_OBJECT
public:
    CFindBar(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent);

    /// Shows the bar with the last text selected.
    void Open();
    /// Goes to the next (previous) place of the text; opens the bar when there is no text yet.
    void Next();
    void Previous();
    /// The watchlist is another: what was said of the last search is not true any more.
    void ForgetAnswer();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FindWhileTyping();
    void Show(const SFoundCell& found);
    void CloseBar();
    SFindOptions Options() const;
    std::string Text() const;

    CWatchlistDoc& m_doc;
    CWatchlistGrid& m_grid;
    QLineEdit* m_text;
    QCheckBox* m_matchCase;
    QCheckBox* m_wholeCell;
    QLabel* m_message;
};

} // namespace vx
