// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/L1SymbolRec.h"
#include "feed/lookup/LookupSystemInfo.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vx {

/// A table of texts by a code from 0 to 255, loaded from the lookup port.
///
/// Shape   kTexts texts for each id; any id outside the table has empty ones
/// Errors  a load leaves the table as it was when the lookup port cannot be reached or does not answer; a refused
///         request and a connection that the feed client ends count as loaded
/// Owns    the texts; a view of one is good until the next load
/// Thread  Load as CLookupSystemInfo; the readers any
template <size_t kTexts> class CCodeTable : public CLookupSystemInfo {
public:
    using Entry = std::array<std::string, kTexts>;

    using CLookupSystemInfo::CLookupSystemInfo;

    bool IsLoaded() const {
        const std::lock_guard guard(m_lock);
        return m_loaded;
    }
    /// Lines that were taken; one id may have had several.
    int Count() const {
        const std::lock_guard guard(m_lock);
        return m_count;
    }
    Entry At(int id) const {
        const std::lock_guard guard(m_lock);
        return IsCode(id) ? m_entries[static_cast<size_t>(id)] : Entry{};
    }
    /// Whether the id has any text.
    bool Has(int id) const {
        const Entry entry = At(id);
        return std::ranges::any_of(entry, [](const std::string& text) { return !text.empty(); });
    }
    /// The first text of an id, by which it is shown.
    std::string_view Name(int id) const {
        const std::lock_guard guard(m_lock);
        return IsCode(id) ? std::string_view(m_entries[static_cast<size_t>(id)].front()) : std::string_view{};
    }

protected:
    enum class EOrder { AsSent, Reversed };

    /// Loads the table unless it is loaded; texts that a line does not have stay as they are.
    void LoadTable(std::string_view request, EOrder order) {
        if (IsLoaded() || !Exchange(request)) return;
        const std::lock_guard guard(m_lock);
        ReadTableReply(Reply(), [&](int id, std::span<const std::string_view> texts) {
            Entry& entry = m_entries[static_cast<size_t>(id)];
            for (size_t i = 0; i < std::min(texts.size(), kTexts); ++i)
                entry[order == EOrder::AsSent ? i : kTexts - 1 - i] = texts[i];
            ++m_count;
        });
        m_loaded = true;
    }

private:
    static bool IsCode(int id) { return id >= 0 && id < kTableEntries; }

    bool m_loaded = false;
    int m_count = 0;
    std::array<Entry, kTableEntries> m_entries;
};

/// The listed markets as the feed client names them, by market id: short name, long name, group id, group name.
///
/// Source  docs/feed-protocol.md, "Code tables"
class CListedMarkets : public CCodeTable<4> {
public:
    using CCodeTable::CCodeTable;

    void Load() override { LoadTable("SLM\r\n", EOrder::AsSent); }
};

/// The security types as the feed client names them, by security-type id: long name, short name. The feed client sends
/// the two the other way round.
///
/// Source  docs/feed-protocol.md, "Code tables"
class CSecurityTypes : public CCodeTable<2> {
public:
    using CCodeTable::CCodeTable;

    void Load() override { LoadTable("SST\r\n", EOrder::Reversed); }
};

/// The names of listed markets and security types for the level-1 store, loaded from the lookup port.
///
/// Both tables are loaded together when the first name is needed, in the time of one exchange. After a failed go none
/// is tried for kPauseMs; a port that takes the request and does not answer holds the window each time, so that its
/// pauses double up to kMostPauseMs.
///
/// Owns    the tables
class CLookupTables final : public CCodeNames {
public:
    static constexpr int64_t kPauseMs = 5000;
    static constexpr int64_t kMostPauseMs = 40000;

    explicit CLookupTables(CRegistry& registry = CRegistry::CurrentUser(), SLookupTimes times = {});

    /// The times for both tables together; with 0 none is ever loaded.
    void SetTimes(SLookupTimes times) { m_times = times; }

    bool EnsureMarketsLoaded() override;
    bool EnsureSecurityTypesLoaded() override;
    std::string_view MarketName(int id) const override { return m_markets.Name(id); }
    std::string_view SecurityTypeName(int id) const override { return m_types.Name(id); }

private:
    void Load();
    void Pause(bool unanswered);

    CListedMarkets m_markets;
    CSecurityTypes m_types;
    SLookupTimes m_times;
    int64_t m_nextTryMs = 0; ///< Of CClock's monotonic time.
    int64_t m_pauseMs = kPauseMs;
};

} // namespace vx
