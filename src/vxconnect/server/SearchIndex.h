// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// The symbols and names of a directory, ready to be searched without regard to case. It is made once and again only
/// when the directory tells something else than before, so that a search costs no more than looking through its text.
///
/// Owns    its texts: about 80 bytes for each symbol
/// Thread  the directory's
class CSearchIndex {
public:
    /// The directory outlives the index.
    explicit CSearchIndex(const CDirectory& directory) : m_directory(directory) {}

    struct SResult {
        std::string_view text; ///< "IBM,2,1,International Business Machines,"
        int market = 0;
        int type = 0;
        bool exact = false; ///< The whole symbol was looked for.
    };
    /// Called with each result in the directory's order, until it returns false. Its text holds during the call.
    using Visitor = std::function<bool(const SResult&)>;

    /// The symbols that begin with a text, which is not empty.
    void BySymbol(std::string_view text, const Visitor& visit);
    /// The symbols whose name holds a text, which is not empty.
    void ByName(std::string_view text, const Visitor& visit);
    /// Takes in what the directory tells now.
    void Refresh();

private:
    // Where the texts of one symbol begin; each ends before its separator, where the next one begins.
    struct SEntry {
        uint32_t symbol = 0;
        uint32_t name = 0;
        uint32_t reply = 0;
        int market = 0;
        int type = 0;
    };

    SResult ResultOf(size_t entry) const;

    const CDirectory& m_directory;
    std::optional<uint64_t> m_version;
    std::vector<SEntry> m_entries; // One more than there are symbols: where the texts end.
    std::string m_symbols;         // Upper case, a line end after each.
    std::string m_names;           // The same.
    std::string m_replies;
};

} // namespace vx::sim
