#pragma once

namespace vx {

class CSettings;

/// Makes the folder of the last saved watchlist the process's current one, so that file dialogs open there.
///
/// Errors  none: without such a folder the current one stays
void EnterWatchlistFolder(const CSettings& settings);

} // namespace vx
