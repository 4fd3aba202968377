// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"
#include "watchlist/edit/CopyText.h"

#include <QString>

class QMimeData;

namespace vx {

/// A text that was copied. marks: whether this program's grid wrote it.
struct SPastedText {
    QString text;
    EAnnotationMarks marks = EAnnotationMarks::No;
};

/// Copies, cuts and pastes, and takes texts that are dropped on the grid.
///
/// What is copied goes out as a text for everybody, and once more as a text that tells headings from symbols, for
/// grids of this program.
///
/// Thread  GUI thread only
class CClipboardCommands : public CCommandGroup {
    Q_OBJECT
public:
    CClipboardCommands(const SFrameContext& context, QObject* parent);

private:
    void Copy();
    void Cut();
    void CutShownRows();
    void Paste();
    void Drop(const QMimeData& dropped, int row, int column);
    void PasteAt(const SPastedText& pasted, int row, int column);
};

} // namespace vx
