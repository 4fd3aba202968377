// SPDX-License-Identifier: MIT
#pragma once

#include "data/store/L1DataStore.h"
#include "settings/Settings.h"
#include "support/MemorySettings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistReader.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <algorithm>

namespace vx::test {

/// A document that needs nothing of the machine: settings in memory, no window, and a feed only when asked for.
class CScratchDoc {
public:
    /// Reads a file's text as opening does.
    void Open(std::string_view text) {
        CWatchlistReader reader;
        for (; !text.empty(); text.remove_prefix(std::min(text.size(), CWatchlistReader::kBlockBytes)))
            reader.TakeBlock(text.substr(0, CWatchlistReader::kBlockBytes));
        reader.Finish();
        doc.OpenContent(reader.Content(), {}, reader.Report());
    }
    /// Begins a new list of these columns, connected to a feed that takes everything and answers nothing.
    void BeginConnected(std::string_view columns) {
        store.SetCommandPort(&m_feed);
        doc.NewDocument();
        doc.SetFeedReady();
        doc.Update()->Columns().Clear();
        doc.Update()->SetColumnsByName(columns);
    }
    std::string Written() const { return WriteWatchlistText(doc, doc.Options().placement); }

private:
    class CNoFrame final : public CWatchlistFrame {
    public:
        void SetStatusText(std::string_view) override {}
        void SetDocumentTitle(std::string_view) override {}
        void ApplyPlacement(const SPlacement&) override {}
        void OnUnwatched(std::string_view) override {}
    };

    class CDeafFeed final : public CL1CommandPort {
    public:
        int Send(std::string_view command) override { return static_cast<int>(command.size()); }
        bool IsOpen() const override { return true; }
    };

    CSettingsInMemory m_memory;
    CSettings m_settings{m_memory};
    CNoFrame m_frame;
    CDeafFeed m_feed;

public:
    CL1DataStore store;
    CWatchlistDoc doc{store, m_settings, m_frame};
};

} // namespace vx::test
