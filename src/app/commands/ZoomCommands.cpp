// SPDX-License-Identifier: MIT
#include "app/commands/ZoomCommands.h"

#include "app/frame/StatusPanes.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QToolButton>

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::array kSteps = {SScale::kLeastZoom, 67, 75, 80, 90, SScale::kNoZoom, 110, 125, 150, 175, 200, 250,
                               SScale::kMostZoom};

/// The next step from a zoom, which may be between two of them; the last one again at the end.
int NextZoom(int zoom, int step) {
    if (step > 0) return *std::min(std::ranges::upper_bound(kSteps, zoom), kSteps.end() - 1);
    return *std::max(std::ranges::lower_bound(kSteps, zoom) - 1, kSteps.begin());
}

} // namespace

CZoomCommands::CZoomCommands(const SFrameContext& context, QObject* parent)
    : CCommandGroup(context, parent), m_button(new QToolButton) {
    Commands().Bind(
        ECommand::ViewZoomIn, [this] { ZoomBy(1); },
        [this](SCommandState& state) { state.enabled = Zoom() < SScale::kMostZoom; });
    Commands().Bind(
        ECommand::ViewZoomOut, [this] { ZoomBy(-1); },
        [this](SCommandState& state) { state.enabled = Zoom() > SScale::kLeastZoom; });
    Commands().Bind(
        ECommand::ViewZoomReset, [this] { ZoomTo(SScale::kNoZoom); },
        [this](SCommandState& state) {
            state.enabled = Zoom() != SScale::kNoZoom;
            if (state.enabled) state.text = QStringLiteral("Reset &Zoom (%1 %)").arg(Zoom());
        });
    BindDensity(ECommand::ViewCompact, EDensity::Compact);
    BindDensity(ECommand::ViewNormal, EDensity::Normal);
    BindDensity(ECommand::ViewComfortable, EDensity::Comfortable);
    MakeButton();
    connect(&Grid(), &CGridCtrl::ZoomTurned, this, &CZoomCommands::ZoomBy);
    connect(&View(), &CWatchlistView::DocumentChanged, this, &CZoomCommands::ShowZoom);
}

void CZoomCommands::BindDensity(ECommand command, EDensity density) {
    Commands().Bind(
        command,
        [this, density] {
            SScale scale = Doc().Options().scale;
            scale.density = density;
            View().SetScale(scale);
        },
        [this, density](SCommandState& state) { state.checked = Doc().Options().scale.density == density; });
}

void CZoomCommands::MakeButton() {
    QAction& reset = Commands().Action(ECommand::ViewZoomReset);
    m_button->setObjectName(QStringLiteral("zoomButton"));
    m_button->setToolTip(QStringLiteral("The zoom of the grid. Click for 100 % (%1)")
                             .arg(reset.shortcut().toString(QKeySequence::NativeText)));
    m_button->setAutoRaise(true);
    Status().insertPermanentWidget(1, m_button);
    m_button->hide(); // Adding it has shown it.
    connect(m_button, &QToolButton::clicked, &reset, &QAction::trigger);
}

void CZoomCommands::ShowZoom() {
    m_button->setText(QStringLiteral("%1 %").arg(Zoom()));
    m_button->setAccessibleName(QStringLiteral("Zoom %1 %").arg(Zoom()));
    m_button->setVisible(Zoom() != SScale::kNoZoom);
}

int CZoomCommands::Zoom() const { return Doc().Options().scale.zoom; }

void CZoomCommands::ZoomTo(int percent) {
    SScale scale = Doc().Options().scale;
    scale.zoom = percent;
    View().SetScale(scale);
}

void CZoomCommands::ZoomBy(int steps) {
    int zoom = Zoom();
    for (int step = std::clamp(steps, -static_cast<int>(kSteps.size()), static_cast<int>(kSteps.size())); step != 0;
         step += step > 0 ? -1 : 1)
        zoom = NextZoom(zoom, step);
    ZoomTo(zoom);
}

} // namespace vx
