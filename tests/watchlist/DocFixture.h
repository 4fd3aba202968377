#pragma once

#include "base/Registry.h"
#include "data/L1DataStore.h"
#include "settings/ApplicationProfile.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/TempFolder.h"
#include "watchlist/WatchlistDoc.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace vx::test {

/// A level-1 connection that keeps what was sent on it.
class CSentCommands final : public CL1CommandPort {
public:
    int Send(std::string_view command) override {
        sent.emplace_back(command);
        return static_cast<int>(command.size());
    }
    bool IsOpen() const override { return true; }

    /// What was sent since the last call.
    std::vector<std::string> Take() { return std::exchange(sent, {}); }

    std::vector<std::string> sent;
};

/// A frame and a view in one that keep what the document told them.
class CFrameAndView final : public CWatchlistFrame, public CWatchlistObserver {
public:
    void SetStatusText(std::string_view text) override { statuses.emplace_back(text); }
    void SetDocumentTitle(std::string_view text) override { title = text; }
    void ApplyPlacement(const SPlacement& asked) override { placement = asked; }
    void OnUnwatched(std::string_view symbol) override { unwatched.emplace_back(symbol); }

    void PostPaintMessage() override { ++paintMessages; }
    void OnGridRebuilt() override { ++rebuilds; }
    void OnRowChanged(int row) override { rows.push_back(row); }
    void OnUpdatesPending() override { pending = true; }

    std::string Status() const { return statuses.empty() ? std::string() : statuses.back(); }
    std::vector<int> TakeRows() { return std::exchange(rows, {}); }

    std::vector<std::string> statuses, unwatched;
    std::string title;
    SPlacement placement;
    std::vector<int> rows;
    int paintMessages = 0;
    int rebuilds = 0;
    bool pending = false;
};

/// A document with a store, a feed and a frame that a test drives in verbs.
class CDocFixture : public testing::Test {
protected:
    CDocFixture() {
        store.SetCommandPort(&feed);
        doc.SetObserver(&shown);
        doc.NewDocument();
        shown.rows.clear();
    }

    void FeedIsReady() { doc.SetFeedReady(); }
    void Open(std::string_view text) { doc.OpenText(text, "Test"); }
    /// A line arrives and the posted paint message with it.
    void FeedSays(std::string_view line) {
        store.OnLevel1Message(line);
        doc.OnPaintMessage();
    }
    /// The symbol stands at the row and is watched, as after typing it.
    void Place(int row, std::string_view symbol) {
        doc.PlaceSymbol(row, symbol);
        doc.WatchSymbol(symbol);
    }

    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CApplicationProfile profile{registry, "Software\\Test"};
    CConfigWriter writer{profile};
    CSettings settings{writer};
    CSentCommands feed;
    CL1DataStore store;
    CFrameAndView shown;
    CWatchlistDoc doc{store, settings, shown};
};

} // namespace vx::test
