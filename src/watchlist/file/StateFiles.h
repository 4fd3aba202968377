// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vx {

// Where the files stand that belong to a watchlist's file but are kept in the user's state folder, and how they are
// named. Paths are bytes as the system takes them.

/// A path as the key of what belongs to it: absolute, links followed, so that every way to a file gives one key.
std::string PathKey(const std::string& path);

/// The hash of a path key or a content as names have it: 16 hexadecimal digits.
std::string HashName(uint64_t hash);

/// Below the state folder: what a kill must not take, and the backups of saved files.
std::string RecoveryFolder(const std::string& stateFolder);
std::string BackupsFolder(const std::string& stateFolder);

/// The text after the last "/" or "\", without what begins at its last ".".
std::string TitleOfPath(std::string_view path);

} // namespace vx
