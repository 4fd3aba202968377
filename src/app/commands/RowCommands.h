// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

namespace vx {

struct SRowGroup;

/// Inserts, deletes, hides and moves rows; the selection goes along with what it held.
///
/// Thread  GUI thread only
class CRowCommands : public CCommandGroup {
    Q_OBJECT
public:
    CRowCommands(const SFrameContext& context, QObject* parent);

    /// Empty rows before the selected ones, as many as they are.
    void Insert();
    /// The selected rows go, after a question while auto sort is on.
    void Delete();

private:
    bool IsOneLeft() const;
    void Hide();
    void ShowHidden();
    int Neighbour(int row, int step) const;
    void MoveBy(int step);
    SRowGroup GroupBeside(int step) const;
    void MoveGroup(int step);
    void MoveBefore(int first, int last, int before);
};

} // namespace vx
