#pragma once

#include "feed/LookupSystemInfo.h"

#include <array>

namespace vx {

/// The table of listed markets as the feed client names them, by market id.
///
/// Units   ids run from 0 to 255; any other has empty texts
/// Errors  Load leaves the table as it was when the lookup port cannot be reached or does not answer; a refused
///         request and a connection that the feed client ends count as loaded
/// Owns    the texts; a view of one is good until the next load
/// Thread  Load as CLookupSystemInfo; the readers any
/// Source  docs/feed-protocol.md, "Lookup"
class CListedMarkets : public CLookupSystemInfo {
public:
    /// The texts in the order of the reply line: short name, long name, group id, group name.
    using Entry = std::array<std::string, 4>;

    using CLookupSystemInfo::CLookupSystemInfo;

    void Load() override;
    bool IsLoaded() const;
    /// Lines that were taken; one id may have had several.
    int Count() const;

    /// Whether the id has any text.
    bool Has(int id) const;
    Entry At(int id) const;
    /// The first text.
    std::string_view Name(int id) const;

private:
    bool m_loaded = false;
    int m_count = 0;
    std::array<Entry, kTableEntries> m_entries;
};

} // namespace vx
