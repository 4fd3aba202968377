// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace vx {

/// A rectangle of the screen in pixels.
struct SPlacement {
    int left = 0, top = 0, width = 0, height = 0;
    bool maximised = false;
    bool alwaysOnTop = false;

    bool operator==(const SPlacement&) const = default;
};

/// What the document needs of its window. The frame implements it; the document knows no window.
///
/// Thread  GUI thread only
class CWatchlistFrame {
public:
    virtual ~CWatchlistFrame() = default;
    /// Shows the text in the first pane of the status bar.
    virtual void SetStatusText(std::string_view text) = 0;
    /// Puts the document's title behind the program's in the window title; an empty one leaves the program's alone.
    virtual void SetDocumentTitle(std::string_view title) = 0;
    /// Moves the window to the placement of an opened watchlist; a width or height below 1 moves nothing.
    virtual void ApplyPlacement(const SPlacement& placement) = 0;
    /// No row holds the symbol any more: whatever the session still plans for it is off.
    virtual void OnUnwatched(std::string_view symbol) = 0;
    /// Why no data may be coming for a feed symbol, in a few words; empty when nothing is in the way. Good until the
    /// next call.
    virtual std::string_view SymbolHint(std::string_view /*feedSymbol*/) const { return {}; }
};

/// What the document tells the view that shows it.
///
/// Thread  GUI thread only
class CWatchlistObserver {
public:
    virtual ~CWatchlistObserver() = default;
    /// Post one paint message to the view's window and return; when it arrives, call the document's OnPaintMessage.
    virtual void PostPaintMessage() = 0;
    /// Rows, columns or options changed so that nothing painted before may be relied on.
    virtual void OnGridRebuilt() = 0;
    /// The content of one row changed by something else than the feed.
    virtual void OnRowChanged(int row) = 0;
    /// The rows have another order: newRowOf[r] is where row r went, rows it does not cover stay. This comes at once,
    /// in an edit batch too: what the view keeps by row must follow before rows come or go.
    virtual void OnRowsMoved(const std::vector<int>& /*newRowOf*/) {}
    /// The content of many rows changed, and neither their number nor the columns.
    virtual void OnRowsChanged(int /*firstRow*/, int /*lastRow*/) { OnGridRebuilt(); }
    /// The document was reset: the look of the rows is again as the settings have it.
    virtual void OnReset() {}
    /// The feed changed rows; the view asks for them at its next display update.
    virtual void OnUpdatesPending() = 0;
    /// The rows that are on the screen, rising. False where the view cannot say: then all may be.
    virtual bool ShownRows(std::vector<int>& /*rows*/) const { return false; }
};

} // namespace vx
