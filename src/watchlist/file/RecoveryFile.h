// SPDX-License-Identifier: MIT
#pragma once

#include "base/AtomicFile.h"
#include "watchlist/fileformat/WatchlistSupplement.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// Unsaved changes of a watchlist, as a recovery file holds them.
struct SRecovery {
    std::string originalPath;                       ///< The watchlist's file; empty when it was never saved.
    uint64_t knownHash = 0;                         ///< Of the content that the file had when it was opened or saved.
    int64_t savedAt = 0;                            ///< When the recovery file was written, seconds since 1970 UTC.
    std::string text;                               ///< As in a watchlist file.
    std::optional<SWatchlistSupplement> supplement; ///< Of an older version of the program.

    // Where it was found; not part of its text.

    std::string file;
    /// While it lives, no other program finds this recovery.
    std::shared_ptr<CFileLock> claim;
};

/// The text of a recovery file and back.
///
/// Errors  nothing for a text that is none, or not whole
/// Source  docs/file-format.md, "Recovery files"
std::string FormatRecovery(const SRecovery& recovery);
std::optional<SRecovery> ParseRecovery(std::string_view text);

/// The name of the lock that belongs to a recovery file. The program that writes the file holds it while it runs.
std::string RecoveryLockName(const std::string& file);

/// The recoveries that no running program has, oldest first, each claimed for the caller. Damaged ones stay where they
/// are, and the log names them. What killed programs wrote half goes, and what is in the watchlist's file by now.
///
/// Thread  any
std::vector<SRecovery> FindRecoveries(const std::string& stateFolder);

/// One recovery, claimed for the caller; nothing when there is none, or another program has it all the time.
///
/// Units   waitMs: how long the program that has it may take to let go of it
/// Thread  any; it blocks for waitMs at most
std::optional<SRecovery> ClaimRecovery(const std::string& file, int waitMs);

/// Removes a recovery that is not wanted any more.
void DiscardRecovery(const SRecovery& recovery);

} // namespace vx
