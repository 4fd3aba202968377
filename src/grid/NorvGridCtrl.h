#pragma once

#include "grid/GridCtrl.h"

namespace vx {

/// A grid with this program's conventions: its board font and its name towards assistive technology.
class CNorvGridCtrl : public CGridCtrl {
    Q_OBJECT

public:
    explicit CNorvGridCtrl(QWidget* parent = nullptr);

    /// The three grid settings as the user keeps them, and reduced motion.
    void ApplyViewSettings(bool gridLines, bool shading, bool ellipsis, bool reducedMotion);
    /// "light" and "dark"; any other text follows the desktop.
    void ApplyTheme(std::string_view name);
};

} // namespace vx
