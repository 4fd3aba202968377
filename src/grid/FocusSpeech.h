#pragma once

#include "grid/GridSelection.h"

#include <QString>
#include <QTimer>

namespace vx {

class CGridCtrl;

/// Announces to assistive technology when the focus cell shows another text: the newest, and not more often than once
/// in kPauseMs, so that a busy price does not talk without end.
///
/// Shape   costs nothing while there is no assistive technology, or the keyboard is not in the grid
/// Owns    nothing of the grid, which outlives it
/// Thread  GUI thread only
class CFocusSpeech {
public:
    static constexpr int kPauseMs = 2000;

    explicit CFocusSpeech(CGridCtrl& grid);

    /// Another cell has the focus, and was announced as that.
    void Moved();
    /// Texts of cells may be others than before.
    void TextsChanged();

private:
    void Say();
    bool IsHeard() const;

    CGridCtrl& m_grid;
    QTimer m_pause; ///< Runs after each announcement.
    QString m_said;
};

} // namespace vx
