#pragma once

#include "data/CodeNames.h"
#include "feed/ListedMarkets.h"
#include "feed/SecurityTypes.h"

#include <cstdint>

namespace vx {

/// The names of listed markets and security types for the level-1 store, loaded from the lookup port.
///
/// Both tables are loaded together, in one go of one time-out. After a failed go none is tried for kPauseMs; a port
/// that takes the request and does not answer holds the window each time, so that its pauses double up to kMostPauseMs.
///
/// Owns    the tables
/// Thread  GUI thread only
class CLookupTables final : public CCodeNames {
public:
    static constexpr int64_t kPauseMs = 5000;
    static constexpr int64_t kMostPauseMs = 320000;

    explicit CLookupTables(CRegistry& registry = CRegistry::CurrentUser(),
                           int timeoutMs = CLookupSystemInfo::kTimeoutMs);

    /// The time for both tables together; with 0 none is ever loaded.
    void SetTimeoutMs(int milliseconds) { m_timeoutMs = milliseconds; }

    /// Loads what is missing, unless a pause lasts; holds the caller for the time-out at most.
    void Load();

    bool EnsureMarketsLoaded() override;
    bool EnsureSecurityTypesLoaded() override;
    std::string_view MarketName(int id) const override { return m_markets.Name(id); }
    std::string_view SecurityTypeName(int id) const override { return m_types.Name(id); }

private:
    void Pause(bool unanswered);

    CListedMarkets m_markets;
    CSecurityTypes m_types;
    int m_timeoutMs;
    int64_t m_nextTryMs = 0; ///< Of CClock's monotonic time.
    int64_t m_pauseMs = kPauseMs;
};

} // namespace vx
