// What the main frame does with the lines of the feed, and what the document asks of the feed.

#include "app/shell/MainFrame.h"

#include "app/files/FileDesk.h"
#include "data/catalogue/UpdateFields.h"
#include "data/record/SymbolHash.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

#include <string>
#include <utility>

namespace vx {

void CMainFrame::OnFeedConnected() { OpenDataPorts(UpdateFieldList()); }

void CMainFrame::OnUpdateMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnUpdate(line);
}

void CMainFrame::OnSummaryMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnSummary(line);
}

void CMainFrame::OnFundamentalMessage(std::string_view line) {
    m_health.NoteLine();
    m_store.OnFundamental(line);
}

void CMainFrame::OnRegionalMessage(std::string_view line) {
    m_health.NoteData();
    m_store.OnRegional(line);
}

void CMainFrame::OnSystemMessage(std::string_view line) {
    m_health.NoteLine();
    m_health.SetStatusWord(Stats().status);
    ShowSymbolLimit();
    if (!HandleReadyLine(line)) return;
    m_doc->SetFeedReady();
    m_store.SendPendingWatches();
    // In a list with a file they stand where others did: the user is asked before these go.
    m_doc->PlaceCommandLineSymbols(m_commandLine.Symbols(), !m_files->File().Path().empty());
}

// A refusal may cross the end of the watch; one of a symbol that was never watched here waits like any other.
void CMainFrame::OnSymbolRefused(std::string_view symbol) {
    if (m_unwatched.Has(symbol) && !IsWanted(symbol)) LimitedSymbols().Forget(symbol);
    m_doc->RowNoticesChanged(symbol);
}

void CMainFrame::ShowSymbolLimit() {
    std::string text = fmt::format("waiting for room: limit of {} reached", Stats().symbolLimit);
    if (text == m_waitingText) return;
    m_waitingText = std::move(text);
    m_view->Grid().UpdateAll();
}

std::string_view CMainFrame::SymbolNotice(std::string_view feedSymbol) const {
    if (!m_health.CanHear()) return "not watched: no connection to the feed client";
    return LimitedSymbols().Has(feedSymbol) ? std::string_view(m_waitingText) : std::string_view{};
}

void CMainFrame::OnTimeMessage(std::string_view line) {
    m_health.NoteLine();
    m_clock.OnTimeMessage(line);
}

void CMainFrame::OnSymbolNotFound(std::string_view line) {
    m_health.NoteLine();
    constexpr size_t kSymbolStart = 2;
    if (line.size() <= kSymbolStart) return;
    LimitedSymbols().Forget(line.substr(kSymbolStart));
    m_doc->SymbolNotFound(line.substr(kSymbolStart));
}

void CMainFrame::OnNewsMessage(std::string_view line) {
    m_health.NoteLine();
    m_doc->OnNewsLine(line);
}

void CMainFrame::OnUnwatched(std::string_view symbol) {
    const std::string_view feedSymbol = FeedSymbol(symbol);
    m_unwatched.Note(feedSymbol);
    // A symbol is still wanted for its own row, or for that of one of its regions.
    if (!IsWanted(feedSymbol)) LimitedSymbols().Forget(feedSymbol);
}

void CMainFrame::SendNewsRequest(std::string_view request) { SendToFeed(kLookupSlot, request); }

} // namespace vx
