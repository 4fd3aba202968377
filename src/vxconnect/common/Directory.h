#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace vx::sim {

/// One symbol as the search shows it.
struct SDirectoryEntry {
    std::string_view symbol;
    std::string_view name;
    int market = 0; ///< Listed market, 0: none.
    int type = 0;   ///< Security type, 0: none.
};

/// What lookups are answered from.
class CDirectory {
public:
    virtual ~CDirectory() = default;

    /// Another number than before when ForEachSymbol would tell something else than before.
    virtual uint64_t DirectoryVersion() const = 0;
    /// Calls the visitor with every symbol until it returns false.
    virtual void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const = 0;
    /// How many of today's headlines so far name a symbol; nothing for an unknown symbol.
    virtual std::optional<uint32_t> StoryCount(std::string_view symbol) = 0;
};

} // namespace vx::sim
