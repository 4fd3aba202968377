// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CAlertSoundPlayer;
class CSettings;

/// What the dialogs that edit alerts need of the program around them.
struct SAlertDialogServices {
    CSettings& settings;
    /// For trying sounds; not the one that notices play with.
    CAlertSoundPlayer& player;
    /// The symbols of the watchlist, each once, in the order in which they are offered.
    std::function<std::vector<std::string>()> symbols;
    /// A field's value of this moment as text, for a hint; empty when there is none. May be empty.
    std::function<std::string(std::string_view symbol, int32_t fieldId)> valueNow;
    /// Whether sounds are muted: then none can be tried. May be empty.
    std::function<bool()> isMuted;
};

} // namespace vx
