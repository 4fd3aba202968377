#include "grid/NorvGridCtrl.h"

namespace vx {

CNorvGridCtrl::CNorvGridCtrl(QWidget* parent) : CGridCtrl(parent) {
    setObjectName(QStringLiteral("grid"));
    setAccessibleName(QStringLiteral("Watchlist"));
}

void CNorvGridCtrl::ApplyViewSettings(bool gridLines, bool shading, bool ellipsis, bool reducedMotion) {
    SetOptions({gridLines ? EGridLines::Both : EGridLines::None, shading, ellipsis, !reducedMotion});
}

void CNorvGridCtrl::ApplyTheme(std::string_view name) {
    SetThemeMode(name == "dark" ? EThemeMode::Dark : name == "light" ? EThemeMode::Light : EThemeMode::System);
}

} // namespace vx
