// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"
#include "alerts/rules/FiredAlert.h"
#include "base/Registry.h"
#include "data/store/L1DataStore.h"
#include "feed/session/FeedSession.h"
#include "feed/session/SymbolQueue.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/RecoveryKeeper.h"
#include "watchlist/file/WatchlistFile.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx::test {

class CSimulatedFeed;

struct SStoredSettings {
    CRegistry registry{"/config"};
    CApplicationProfile profile{registry, "Software\\Test"};
    CConfigWriter writer{profile};
    CSettings settings{writer};
};

/// One run of the program without its windows: what the main frame owns, and what it does with the feed's lines.
class CProgram final : public SStoredSettings,
                       public CFeedSession,
                       private CWatchlistFrame,
                       private CFiredAlertReceiver {
public:
    static constexpr const char* kStateFolder = "/state";

    explicit CProgram(CSimulatedFeed& feed);

    /// A line of the feed client as the socket cuts it.
    void Hear(EFeedSocket which, const std::string& line);
    /// What the timers and the posted paint message do.
    void Turn();

    CL1DataStore store;
    CWatchlistDoc doc{store, settings, *this};
    CWatchlistFile file{doc, kStateFolder};
    CRecoveryKeeper keeper{doc, file, kStateFolder};
    CAlertHistory history{kStateFolder};
    std::vector<double> fired; ///< The thresholds of alerts.

private:
    std::unique_ptr<CZantrelClientAppSocket> MakeSocket(EFeedSocket which, uint32_t retries) override;

    void OnFeedConnected() override;
    void OnUpdateMessage(std::string_view line) override { store.OnUpdate(line); }
    void OnSummaryMessage(std::string_view line) override { store.OnSummary(line); }
    void OnFundamentalMessage(std::string_view line) override { store.OnFundamental(line); }
    void OnSystemMessage(std::string_view line) override;
    void OnSymbolNotFound(std::string_view line) override;
    void OnSymbolRefused(std::string_view symbol) override;
    bool IsWanted(std::string_view symbol) const override { return store.IsWanted(symbol); }

    void SetStatusText(std::string_view) override {}
    void SetDocumentTitle(std::string_view) override {}
    void ApplyPlacement(const SPlacement&) override {}
    void OnUnwatched(std::string_view symbol) override;

    void PostFired(std::string record, const A_INFO&) override;
    void PostFiredNews(SAlertRecord, const A_INFO&) override {}

    CSimulatedFeed& m_feed;
    CRecentSymbols m_unwatched;
};

} // namespace vx::test
