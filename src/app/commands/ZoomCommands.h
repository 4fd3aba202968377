// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

class QToolButton;

namespace vx {

enum class EDensity : uint8_t;

/// How large the grid is drawn: the zoom, by keys and by Ctrl with the wheel, and the density of the rows.
///
/// Owns    a button in the status bar, which says the zoom while it is not 100 % and ends it
/// Thread  GUI thread only
class CZoomCommands : public CCommandGroup {
    Q_OBJECT
public:
    CZoomCommands(const SFrameContext& context, QObject* parent);

private:
    void BindDensity(ECommand command, EDensity density);
    void MakeButton();
    void ShowZoom();
    int Zoom() const;
    void ZoomTo(int percent);
    void ZoomBy(int steps);

    QToolButton* m_button;
};

} // namespace vx
