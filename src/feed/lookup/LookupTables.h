#pragma once

#include "data/record/CodeNames.h"
#include "feed/lookup/ListedMarkets.h"
#include "feed/lookup/SecurityTypes.h"

#include <cstdint>

namespace vx {

/// The names of listed markets and security types for the level-1 store, loaded from the lookup port.
///
/// Both tables are loaded together when the first name is needed, in the time of one exchange. After a failed go none
/// is tried for kPauseMs; a port that takes the request and does not answer holds the window each time, so that its
/// pauses double up to kMostPauseMs.
///
/// Owns    the tables
/// Thread  GUI thread only
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
