// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/edit/FormatCommands.h"

#include <QObject>

namespace vx {

struct SFrameContext;

/// Opens the dialogs of formats and notes.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CFormatDialogs : public QObject {
    Q_OBJECT
public:
    explicit CFormatDialogs(const SFrameContext& context);

private:
    SFormatRange Selection() const;
    void EditCells();
    void EditNote();

    const SFrameContext& m_context;
};

} // namespace vx
