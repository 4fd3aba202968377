// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CRegistry;

/// The watchlist files that were opened or saved last, shared by all windows.
///
/// Shape   paths are bytes as the system takes them, absolute; the latest first, each once
/// Errors  what cannot be written is left as it is; the log has said why
/// Owns    nothing: the registry outlives it
/// Thread  GUI thread only
class CRecentFiles {
public:
    static constexpr size_t kMost = 10;

    explicit CRecentFiles(CRegistry& registry) : m_registry(registry) {}

    std::vector<std::string> List() const;
    /// Puts a file first.
    void Add(const std::string& path);
    void Remove(std::string_view path);
    void Clear() { Write({}); }

private:
    void Write(const std::vector<std::string>& paths);

    CRegistry& m_registry;
};

} // namespace vx
