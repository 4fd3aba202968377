#pragma once

#include "watchlist/edit/FormatCommands.h"

#include <QObject>

namespace vx {

class CCommands;
class CMainFrame;

/// Opens the dialogs of the board's look and of the notes.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CFormatDesk : public QObject {
    Q_OBJECT
public:
    CFormatDesk(CMainFrame& frame, CCommands& commands);

private:
    SFormatRange Selection() const;
    void EditCells();
    void EditNote();

    CMainFrame& m_frame;
};

} // namespace vx
