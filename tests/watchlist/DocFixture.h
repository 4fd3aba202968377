// SPDX-License-Identifier: MIT
#pragma once

#include "base/Registry.h"
#include "news/NewsMap.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/FakeFeed.h"
#include "support/MessageBoxes.h"
#include "support/TempFolder.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <gmock/gmock.h>

namespace vx::test {

using namespace testing; // Its matchers.

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

/// A lookup connection that keeps for which symbols news counts were asked for.
class CAskedCounts final : public CNewsCountsPort {
public:
    void SendNewsRequest(std::string_view request) override {
        const size_t list = request.find(',') + 1;
        lists.emplace_back(request.substr(list, request.find(',', list) - list));
    }
    std::vector<std::string> Take() { return std::exchange(lists, {}); }

    std::vector<std::string> lists;
};

/// A document with a store, a feed and a frame that a test drives in verbs.
class CDocFixture : public testing::Test {
protected:
    CDocFixture() {
        store.SetCommandPort(&feed);
        doc.SetObserver(&shown);
        doc.SetNewsCountsPort(&counts);
        doc.NewDocument();
        shown.rows.clear();
    }

    void FeedIsReady() { doc.SetFeedReady(); }
    void Open(std::string_view text) { OpenText(doc, text, "Test"); }
    /// A line arrives and the posted paint message with it.
    void FeedSays(std::string_view line) {
        store.OnLevel1Message(line);
        doc.OnPaintMessage();
    }
    /// An update comes that carries one field, by the feed's name of it.
    void FeedSets(std::string_view symbol, std::string_view field, std::string_view value) {
        FeedSays(DataLine('Q', symbol, std::string(field).append("=").append(value)));
    }
    /// The symbol stands at the row and is watched, as after typing it.
    void Place(int row, std::string_view symbol) {
        doc.Update()->PlaceSymbol(row, symbol);
        doc.WatchSymbol(symbol);
    }

    // Changes of the list without an undo step, whatever the door is through which they go.

    void UseColumns(std::string_view names) {
        doc.Update()->Columns().Clear();
        doc.Update()->SetColumnsByName(names);
    }
    void SetWidth(int column, int px) { doc.Update()->Columns().SetWidth(column, px); }
    void AppendColumns(std::initializer_list<std::string_view> names, int px) {
        for (const std::string_view name : names) doc.Update()->Columns().Append(name, px);
    }
    void SetNote(int row, std::string_view text) { doc.Update()->Notes().Set(row, text); }
    void SetFormat(int row, int column, const SCellFormat& format) { doc.Update()->Formats().Set(row, column, format); }
    void AddAlert(std::string_view symbol, const A_INFO& alert) { doc.AlertRules().Add(symbol, alert); }
    /// Given the options to be changed.
    template <typename Change> void SetOptions(Change change) { change(doc.Update()->Options()); }
    /// Symbols in the rows from 1 on, typed without a step.
    void EnterAll(std::initializer_list<const char*> symbols) {
        for (const char* symbol : symbols) doc.Update()->EnterSymbol(doc.LastUsedRow() + 1, symbol);
    }

    /// What stands in a row: "IBM", "IBM showing two words more", "#an annotation", or nothing.
    std::string Row(int row) const {
        if (doc.RowKind(row) == ERowKind::Annotation) return std::string("#").append(doc.AnnotationText(row));
        std::string out(doc.RowSymbol(row));
        if (!doc.ShownText(row).empty()) out += " showing " + std::string(doc.ShownText(row));
        return out;
    }
    /// The rows from 1 on, "|" between them.
    std::string Rows() const {
        std::string out;
        for (int row = 1; row <= doc.LastUsedRow(); ++row) out.append(row > 1 ? "|" : "").append(Row(row));
        return out;
    }
    std::string TakeMessage() {
        const std::string text = boxes.shown.empty() ? std::string() : boxes.shown.back().text;
        boxes.shown.clear();
        return text;
    }

    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CApplicationProfile profile{registry, "Software\\Test"};
    CConfigWriter writer{profile};
    CSettings settings{writer};
    CMessageBoxes boxes;
    CFakePort feed;
    CAskedCounts counts;
    CL1DataStore store;
    CFrameAndView shown;
    CWatchlistDoc doc{store, settings, shown};
};

} // namespace vx::test
