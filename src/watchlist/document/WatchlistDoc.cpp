// SPDX-License-Identifier: MIT
#include "watchlist/document/WatchlistDoc.h"

#include "base/Text.h"
#include "data/record/L1SymbolRec.h"
#include "data/record/SymbolKey.h"
#include "data/store/L1DataStore.h"
#include "news/HeadlineLog.h"
#include "news/NewsMap.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistContent.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>

namespace vx {

namespace {

constexpr char kAnnotationMark = '#';
constexpr int kRoomBelowCommandLineSymbols = 3;
constexpr size_t kManyUpdates = 200; ///< From here on the rows on the screen are looked at, not the changed symbols.

// A region without a trade of its own is no unknown symbol: only the symbol's own record speaks for it.
bool IsNotFound(const CSymbolRec& record) {
    const auto* symbol = dynamic_cast<const CL1SymbolRec*>(&record);
    return symbol && symbol->IsNotFound();
}

} // namespace

void CWatchlistDoc::SetObserver(CWatchlistObserver* observer) {
    m_observer = observer;
    if (!m_observer) return;
    m_observer->PostPaintMessage(); // A wake-up that the view before it was sent may be lost.
    m_observer->OnUpdatesPending();
    RebuildGrid();
}

void CWatchlistDoc::ChangesWait() {
    if (m_observer) m_observer->OnUpdatesPending();
}

void CWatchlistDoc::PostPaint() {
    if (m_observer) m_observer->PostPaintMessage();
}

// Lifecycle

void CWatchlistDoc::NewDocument() {
    m_frame.SetStatusText("Creating New Document");
    EnterWatchlistFolder(m_settings);
    Reset();
    SetColumnsByName(m_settings.ReadTextOrDefault(kDefaultColumnNames));
    m_options.showToolBar = true;
    m_options.showRowNumbers = true;
    m_frame.SetDocumentTitle({});
    m_frame.ApplyPlacement({}); // No longer on top; the window stays where it is.
    SetStatus("Ready");
    if (m_feedReady) ShowSymbolCount();
    RebuildGrid();
}

void CWatchlistDoc::OpenContent(const SWatchlistContent& content, std::string_view title, CReadReport& report,
                                bool saved) {
    m_frame.SetStatusText("Opening Watchlist");
    Reset();
    m_options = {};
    m_loading = true;
    ApplyContent(*Update(), m_settings, content, report);
    m_loading = false;
    m_frame.SetDocumentTitle(title);
    m_frame.ApplyPlacement(m_options.placement);
    if (m_feedReady) WatchMissing();
    SetModified(!saved);
    SetStatus("Ready");
    if (m_feedReady) ShowSymbolCount();
    RebuildGrid();
}

void CWatchlistDoc::CloseDocument() {
    Reset();
    m_frame.SetDocumentTitle({});
    RebuildGrid();
}

void CWatchlistDoc::Reset() {
    ++m_openCount;
    UnwatchAll();
    m_columns.Clear();
    m_alerts.Clear(EAlertMap::Live);
    m_headlines.Clear();
    m_regionals.clear();
    m_unknownLines.clear();
    m_updates.Clear();
    m_rows.Clear();
    m_grownRows = 0;
    SWatchlistOptions fresh;
    fresh.placement = m_options.placement; // The window stays as it is, its bars too.
    fresh.placement.alwaysOnTop = false;
    fresh.showRowNumbers = m_options.showRowNumbers;
    fresh.showToolBar = m_options.showToolBar;
    m_options = fresh;
    m_undo.Clear();
    m_commandLinePlaced = false;
    if (m_observer) m_observer->OnReset();
    SetModified(false);
}

// Symbols

void CWatchlistDoc::SetFeedReady() {
    m_feedReady = true;
    WatchMissing();
    ShowSymbolCount();
}

// From the first row to the last: with more symbols than the feed takes, those at the top are served.
void CWatchlistDoc::WatchMissing() {
    std::vector<std::string> added;
    for (int row = 1; row <= m_rows.LastSymbolRow(); ++row) {
        const SYMBOL_DATA* data = Symbols().Find(m_rows.Symbol(row));
        if (!data || data->rows.front() != static_cast<uint32_t>(row)) continue;
        const bool regional = IsRegionalName(data->symbol);
        if (!regional && m_watched.Has(data->symbol)) continue;
        if (!regional) {
            m_watched.Record(data->symbol);
            added.push_back(data->symbol);
        }
        Watch(data->symbol);
    }
    RequestNewsCounts(added);
}

std::string_view CWatchlistDoc::RowHint(int row) const {
    const std::string_view symbol = RowSymbol(row);
    const std::string_view hint = symbol.empty() ? symbol : m_frame.SymbolHint(FeedSymbol(symbol));
    if (hint.empty()) return hint;
    const CSymbolRec* record = m_store.Find(symbol);
    return record && record->HasData() ? std::string_view{} : hint;
}

void CWatchlistDoc::RowHintsChanged(std::string_view feedSymbol) {
    const auto note = [this](std::string_view symbol) {
        if (const CSymbolRec* record = m_store.Find(symbol)) m_updates.Add(record->Ids());
    };
    note(feedSymbol);
    for (const std::string& regional : RegionalSymbolsOf(std::string(feedSymbol))) note(regional);
    if (m_observer && !m_updates.IsEmpty()) m_observer->OnUpdatesPending();
}

std::vector<std::string> CWatchlistDoc::RegionalSymbolsOf(const std::string& feedSymbol) const {
    std::vector<std::string> out;
    const std::string beginning = feedSymbol + std::string(kRegionMark);
    for (auto at = m_regionals.lower_bound(beginning); at != m_regionals.end() && at->starts_with(beginning); ++at)
        if (FeedSymbol(*at) == feedSymbol) out.push_back(*at);
    return out;
}

bool CWatchlistDoc::PlaceCommandLineSymbols(const std::vector<std::string>& symbols, bool hasFile) {
    if (symbols.empty()) return false;
    BeginNotices();
    m_grownRows = std::max(m_grownRows, static_cast<int>(symbols.size()) + kRoomBelowCommandLineSymbols);
    std::vector<int> changing;
    bool overUsed = m_commandLinePlaced;
    for (int row = 1; row <= static_cast<int>(symbols.size()); ++row) {
        if (m_rows.Symbol(row) == symbols[static_cast<size_t>(row) - 1]) continue;
        changing.push_back(row);
        overUsed = overUsed || RowKind(row) != ERowKind::Empty || m_notes.Has(row);
    }
    m_commandLinePlaced = true;
    const auto place = [&] {
        std::vector<std::string> added;
        for (const int row : changing) {
            const std::string& symbol = symbols[static_cast<size_t>(row) - 1];
            if (PlaceAndWatch(row, symbol)) added.push_back(symbol);
        }
        RequestNewsCounts(added);
    };
    if (overUsed && !changing.empty()) {
        Edit("place command-line symbols", [&](CWatchlistEdit&) { place(); });
        ShowProgress("The symbols of the command line took the place of rows; Edit > Undo brings these back");
    } else {
        place();
        if (hasFile && !changing.empty()) SetModified(true);
    }
    RebuildGrid();
    EndNotices();
    return !changing.empty();
}

void CWatchlistDoc::EnterSymbol(int row, std::string_view symbol) {
    const std::string entered(TrimBlanks(symbol));
    if (PlaceAndWatch(row, entered)) RequestNewsCounts({entered});
}

// Returns whether the feed was asked for the symbol. The row is emptied before the symbol is looked for: retyping the
// only IBM as IBM watches it anew.
bool CWatchlistDoc::PlaceAndWatch(int row, std::string_view symbol) {
    EmptyRow(row);
    const bool isNew = !Symbols().Find(symbol);
    PlaceSymbol(row, symbol);
    if (!isNew || !m_feedReady || !Symbols().Find(symbol)) return false;
    if (m_batchDepth > 0 && m_batchLeft.erase(std::string(symbol)) != 0) return false;
    WatchSymbol(symbol);
    return true;
}

void CWatchlistDoc::Watch(std::string_view symbol) {
    m_store.Watch(symbol, m_changes);
    m_store.SetArmedAlerts(symbol, m_alerts.ArmedCount(symbol));
    m_news.AddSymbol(symbol);
}

void CWatchlistDoc::WatchSymbol(std::string_view symbol) {
    if (!IsRegionalName(symbol)) m_watched.Record(symbol);
    Watch(symbol);
    ShowSymbolCount();
}

void CWatchlistDoc::Unwatch(const std::string& symbol) {
    m_store.Unwatch(symbol, m_changes);
    m_watched.Remove(symbol);
    m_frame.OnUnwatched(symbol);
}

void CWatchlistDoc::UnwatchSymbol(std::string_view symbol) {
    if (!symbol.empty()) Unwatch(std::string(symbol));
    ShowSymbolCount();
}

void CWatchlistDoc::UnwatchAll() {
    Symbols().ForEach([&](const SYMBOL_DATA& data) {
        m_store.Unwatch(data.symbol, m_changes);
        m_frame.OnUnwatched(data.symbol);
    });
    m_watched.Clear();
    m_news.Clear();
    SetStatus("Symbols:  0");
}

void CWatchlistDoc::SymbolNotFound(std::string_view symbol) {
    const std::string rejected(symbol); // The caller's text may live in what is taken away below.
    const std::vector<std::string> regional = RegionalSymbolsOf(rejected);
    BeginUpdate();
    RejectRows(rejected);
    for (const std::string& region : regional) RejectRows(region);
    EndUpdate();
    m_store.Forget(rejected);
    m_watched.Remove(rejected);
    m_batchLeft.erase(rejected);
    m_frame.OnUnwatched(rejected); // However the feed said it: nothing is planned for the symbol any more.
    ShowSymbolCount();
}

// The rows of a rejected symbol are emptied and say so.
void CWatchlistDoc::RejectRows(const std::string& symbol) {
    const CRowList rows = m_rows.RemoveSymbol(symbol);
    const std::string text = InvalidSymbolText(symbol);
    for (const uint32_t gridRow : rows) {
        const int row = static_cast<int>(gridRow);
        m_rows.SetText(row, &SRowExtras::shown, {});
        m_rows.SetText(row, &SRowExtras::rejected, symbol);
        m_annotations.Set(row, text);
    }
}

size_t CWatchlistDoc::SymbolCount() const { return static_cast<size_t>(Symbols().Count()); }

void CWatchlistDoc::ShowSymbolCount() {
    if (m_batchDepth == 0) SetStatus(fmt::format("Symbols:  {}", Symbols().Count()));
}

void CWatchlistDoc::SetStatus(std::string_view text) {
    m_status = text;
    m_frame.SetStatusText(m_status);
}

// Rows

void CWatchlistDoc::DetachSymbol(int row) {
    const std::string symbol(m_rows.Symbol(row));
    if (symbol.empty()) return;
    m_rows.ClearSymbol(row);
    if (!Symbols().Find(symbol)) SymbolsGone({symbol});
}

// Symbols have no row any more. In a batch they may come back.
void CWatchlistDoc::SymbolsGone(const std::vector<std::string>& symbols) {
    if (!m_feedReady || symbols.empty()) return;
    if (m_batchDepth > 0) return m_batchLeft.insert(symbols.begin(), symbols.end());
    for (const std::string& symbol : symbols) Unwatch(symbol);
    ShowSymbolCount();
}

void CWatchlistDoc::EmptyRow(int row) {
    DetachSymbol(row);
    for (const auto text : {&SRowExtras::annotation, &SRowExtras::rejected, &SRowExtras::shown, &SRowExtras::typed})
        m_rows.SetText(row, text, {});
}

void CWatchlistDoc::PlaceSymbol(int row, std::string_view symbol) {
    const std::string_view trimmed = TrimBlanks(symbol);
    if (trimmed.empty() || row < 1 || row > CRowTable::kMaxRow) return;
    if (m_rows.Symbol(row) == trimmed) return;
    const std::string placed(trimmed);
    EmptyRow(row);
    m_rows.SetSymbol(row, placed, m_loading ? 1 : 0);
    if (IsRegionalName(placed)) m_regionals.insert(placed);
}

void CWatchlistDoc::SetAnnotation(int row, std::string_view text) {
    if (row < 1 || row > CRowTable::kMaxRow) return;
    const std::string marked =
        text.empty() || text.front() == kAnnotationMark ? std::string(text) : kAnnotationMark + std::string(text);
    EmptyRow(row); // The text may have been the row's own.
    m_annotations.Set(row, marked);
}

ERowKind CWatchlistDoc::RowKind(int row) const {
    if (!RowSymbol(row).empty()) return ERowKind::Symbol;
    return m_annotations.Has(row) ? ERowKind::Annotation : ERowKind::Empty;
}

std::string_view CWatchlistDoc::AnnotationText(int row) const {
    std::string_view text = m_annotations.Get(row);
    if (!text.empty() && text.front() == kAnnotationMark) text.remove_prefix(1);
    return text;
}

int CWatchlistDoc::LastUsedRow() const { return std::max(m_rows.LastSymbolRow(), m_annotations.LastRow()); }

int CWatchlistDoc::RowCount() const {
    const int last = std::max({LastUsedRow() + m_options.trailingRows, m_grownRows, m_notes.LastRow()});
    return std::clamp(last, 1, CRowTable::kMaxRow); // There is always a row to type into.
}

std::string_view CWatchlistDoc::TypedText(int row) const {
    const std::string_view typed = m_rows.Text(row, &SRowExtras::typed);
    const std::string_view rejected = RejectedSymbol(row);
    return typed.empty() && rejected != kCommaSymbol ? rejected : typed;
}

void CWatchlistDoc::SetColumnsByName(std::string_view names) {
    m_columns.SetNames(names);
    for (int column = 1; column < m_columns.Count(); ++column)
        m_formats.SetNewColumn(column, m_columns.At(column).name);
}

// Updates

void CWatchlistDoc::OnPaintMessage() {
    std::vector<std::string> rejected;
    m_changes.DrainUrgent([&](const SRecordIds& ids) {
        const CSymbolRec* record = m_store.FindById(ids.id1, ids.id2);
        if (!record) return;
        if (IsNotFound(*record)) rejected.emplace_back(record->Symbol());
        m_alerts.Evaluate(*record);
    });
    for (const std::string& symbol : rejected) SymbolNotFound(symbol);
}

void CWatchlistDoc::OnAlertsChanged(std::string_view symbol, int armed) {
    m_store.SetArmedAlerts(symbol, armed);
    const SYMBOL_DATA* data = Symbols().Find(symbol);
    if (!data) return;
    for (const uint32_t row : data->rows) RowChanged(static_cast<int>(row));
}

// No edit: nothing to undo, but something to save.
void CWatchlistDoc::OnAlertsFiredOrArmed() {
    SetModified(true);
    m_undo.ForgetSavedState();
}

void CWatchlistDoc::RepaintChangedRows() {
    m_updates.AddAll(m_changes);
    if (m_observer && m_updates.Size() > kManyUpdates && m_observer->ShownRows(m_shownRows)) {
        const auto unchanged = [this](int row) {
            const CSymbolRec* record = m_store.Find(RowSymbol(row));
            return !record || !m_updates.Has(record->Ids());
        };
        std::erase_if(m_shownRows, unchanged);
        m_updates.Clear();
        for (const int row : m_shownRows) m_observer->OnRowChanged(row);
        return;
    }
    m_updates.TakeAll([&](const SRecordIds& ids) {
        const CSymbolRec* record = m_store.FindById(ids.id1, ids.id2);
        const SYMBOL_DATA* data = record ? Symbols().Find(record->Symbol()) : nullptr;
        if (!data || !m_observer) return;
        for (const uint32_t row : data->rows) m_observer->OnRowChanged(static_cast<int>(row));
    });
}

// News

void CWatchlistDoc::RequestNewsCounts(const std::vector<std::string>& symbols) {
    if (!m_newsPort) return;
    if (m_batchDepth > 0) {
        m_batchAdded.insert(m_batchAdded.end(), symbols.begin(), symbols.end());
        return;
    }
    std::vector<std::string> asked;
    std::copy_if(symbols.begin(), symbols.end(), std::back_inserter(asked),
                 [](const std::string& symbol) { return !IsRegionalName(symbol); });
    vx::RequestNewsCounts(asked, *m_newsPort);
}

void CWatchlistDoc::OnNewsLine(std::string_view line) {
    m_headlines.Add(line);
    const std::string affected = m_news.ApplyHeadline(line);
    for (const std::string_view symbol : SplitTerminated(affected, ','))
        if (const CSymbolRec* record = m_store.Find(symbol)) m_updates.Add(record->Ids());
    if (m_observer && !m_updates.IsEmpty()) m_observer->OnUpdatesPending();
    const std::optional<SNewsLine> news = ReadNewsLine(line);
    m_alerts.CheckNews(affected, news ? news->headline : std::string_view{});
}

void CWatchlistDoc::OnNewsCounts(std::string_view xml) {
    m_news.ApplyCountsReply(xml);
    if (m_observer) m_observer->OnRowsChanged(1, RowCount());
}

void EnterWatchlistFolder(const CSettings& settings) {
    const std::string folder = settings.ReadTextOrDefault(kMyWatchlists);
    std::error_code error;
    if (!folder.empty()) std::filesystem::current_path(folder, error);
}

} // namespace vx
