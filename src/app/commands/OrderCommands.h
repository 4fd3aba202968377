// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

class QToolButton;

namespace vx {

/// The order of the rows: sorting by hand and on a timer, across headings or under them, and holding what is there.
///
/// Owns    a button in the status bar, which is there while the order is held and lets it go
/// Thread  GUI thread only
class COrderCommands : public CCommandGroup {
    Q_OBJECT
public:
    COrderCommands(const SFrameContext& context, QObject* parent);

private:
    void BindHold();
    void SwitchAcross();

    QToolButton* m_held;
};

} // namespace vx
