#pragma once

#include "watchlist/edit/FormatCommands.h"

#include <QObject>

namespace vx {

struct SBoardContext;

/// Opens the dialogs of the board's look and of the notes.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CFormatDesk : public QObject {
    Q_OBJECT
public:
    explicit CFormatDesk(const SBoardContext& context);

private:
    SFormatRange Selection() const;
    void EditCells();
    void EditNote();

    const SBoardContext& m_context;
};

} // namespace vx
