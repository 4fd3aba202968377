// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"
#include "alerts/rules/FiredAlert.h"
#include "base/Clock.h"
#include "base/Registry.h"
#include "data/catalogue/UpdateFields.h"
#include "data/store/L1DataStore.h"
#include "day/SimulatedFeed.h"
#include "feed/session/FeedSession.h"
#include "feed/session/SymbolQueue.h"
#include "feed/socket/ClientAppSocket.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/RecoveryKeeper.h"
#include "watchlist/file/WatchlistFile.h"

#include <memory>
#include <vector>

namespace vx::test {

/// A connection that is there at once.
class CSimulatedSocket final : public CZantrelClientAppSocket {
public:
    CSimulatedSocket(CSimulatedFeed* feed, uint32_t retries) : CZantrelClientAppSocket(retries), m_feed(feed) {}

    bool Connect(const char*, unsigned) override {
        OnConnect(0);
        return true;
    }
    bool IsConnected() const override { return true; }
    int Send(const void* bytes, int length, int) override {
        return m_feed ? m_feed->Take({static_cast<const char*>(bytes), static_cast<size_t>(length)}) : length;
    }
    using CZantrelClientAppSocket::OnMessage;

private:
    CSimulatedFeed* m_feed; ///< Null for the connections on which nothing is watched.
};

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

    explicit CProgram(CSimulatedFeed& feed) : CFeedSession(registry), m_feed(feed) {
        store.SetCommandPort(&Level1Commands());
        doc.AlertRules().SetReceiver(this);
        doc.NewDocument();
        feed.Reconnect();
        OpenAdminPort();
        Hear(kAdminSocket, feed.StatusLine("Connected"));
        Hear(kLevel1Socket, "S,IP,127.0.0.1,5009");
    }

    /// A line of the feed client as the socket cuts it.
    void Hear(EFeedSocket which, const std::string& line) {
        static_cast<CSimulatedSocket*>(FeedSocket(which))->OnMessage(line);
    }
    /// What the timers and the posted paint message do.
    void Turn() {
        store.NewTurn();
        store.SendPendingWatches();
        doc.OnPaintMessage();
    }

    CL1DataStore store;
    CWatchlistDoc doc{store, settings, *this};
    CWatchlistFile file{doc, kStateFolder};
    CRecoveryKeeper keeper{doc, file, kStateFolder};
    CAlertHistory history{kStateFolder};
    std::vector<double> fired; ///< The thresholds of alerts.

private:
    std::unique_ptr<CZantrelClientAppSocket> MakeSocket(EFeedSocket which, uint32_t retries) override {
        return std::make_unique<CSimulatedSocket>(which == kLevel1Socket ? &m_feed : nullptr, retries);
    }

    void OnFeedConnected() override { OpenDataPorts(UpdateFieldList()); }
    void OnUpdateMessage(std::string_view line) override { store.OnUpdate(line); }
    void OnSummaryMessage(std::string_view line) override { store.OnSummary(line); }
    void OnFundamentalMessage(std::string_view line) override { store.OnFundamental(line); }
    void OnSystemMessage(std::string_view line) override {
        if (!HandleReadyLine(line)) return;
        doc.SetFeedReady();
        store.SendPendingWatches();
    }
    void OnSymbolNotFound(std::string_view line) override {
        LimitedSymbols().Forget(line.substr(2));
        doc.SymbolNotFound(line.substr(2));
    }
    void OnSymbolRefused(std::string_view symbol) override {
        if (m_unwatched.Has(symbol) && !IsWanted(symbol)) LimitedSymbols().Forget(symbol);
    }
    bool IsWanted(std::string_view symbol) const override { return store.IsWanted(symbol); }

    void SetStatusText(std::string_view) override {}
    void SetDocumentTitle(std::string_view) override {}
    void ApplyPlacement(const SPlacement&) override {}
    void OnUnwatched(std::string_view symbol) override {
        m_unwatched.Note(symbol);
        if (!IsWanted(symbol)) LimitedSymbols().Forget(symbol);
    }

    void PostFired(std::string record, const A_INFO&) override {
        const SAlertRecord read = ReadAlertRecord(record);
        fired.push_back(read.threshold);
        history.NoteFired(FiringOf(read, CClock::Instance().MonotonicMs(), 0));
    }
    void PostFiredNews(SAlertRecord, const A_INFO&) override {}

    CSimulatedFeed& m_feed;
    CRecentSymbols m_unwatched;
};

} // namespace vx::test
