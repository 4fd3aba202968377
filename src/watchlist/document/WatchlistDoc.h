// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertsMap.h"
#include "data/record/ChangeQueue.h"
#include "data/record/SymbolKey.h"
#include "feed/lookup/LookupReplies.h"
#include "news/HeadlineLog.h"
#include "news/NewsMap.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/ColumnMap.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/document/RowTextMap.h"
#include "watchlist/document/SymbolUpdateMap.h"
#include "watchlist/document/UndoStack.h"
#include "watchlist/document/WatchlistEdit.h"
#include "watchlist/document/WatchlistFrame.h"
#include "watchlist/document/WatchlistOptions.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vx {

class CSettings;

/// Makes the folder of the last saved watchlist the process's current one, so that file dialogs open there.
///
/// Errors  none: without such a folder the current one stays
void EnterWatchlistFolder(const CSettings& settings);

class CL1DataStore;
class CL1SymbolRec;
class CNewsCountsPort;
class CReadReport;
struct SWatchlistContent;

/// What a document keeps of a symbol that it has asked the feed to watch.
struct SWatchEntry {
    uint32_t counter = 0; ///< Reset to 0 when the symbol is watched again.
    std::string text;
};

/// The symbols that a document has asked the feed to watch; regional symbols (with "--") are not listed.
class CWatchTable {
public:
    void Record(std::string_view symbol) { m_entries[std::string(symbol)].counter = 0; }
    void Remove(std::string_view symbol) { m_entries.erase(std::string(symbol)); }
    void Clear() { m_entries.clear(); }
    bool Has(std::string_view symbol) const { return m_entries.find(symbol) != m_entries.end(); }
    size_t Count() const { return m_entries.size(); }

private:
    CSymbolKeyed<SWatchEntry> m_entries;
};

/// What a grid row holds.
enum class ERowKind { Empty, Symbol, Annotation };

/// One open watchlist: its rows and columns, the options saved with it, and the bookkeeping that keeps the feed
/// watching exactly its symbols.
///
/// Shape   rows are grid row numbers, 1 is the first row under the header; a row holds a symbol, an annotation or
///         nothing; one symbol may be in several rows and is watched once. Texts are Windows-1252
/// Owns    the stores of its rows; not the level-1 store, the settings, the frame or the view, which outlive it
/// Errors  a row outside 1..CRowTable::kMaxRow is ignored
/// Thread  GUI thread only
class CWatchlistDoc : public CNewsCountsReceiver,
                      private CChangeWaker,
                      private CAlertsObserver,
                      private CUndoHost,
                      private CRowRecorder {
public:
    CWatchlistDoc(CL1DataStore& store, CSettings& settings, CWatchlistFrame& frame);
    ~CWatchlistDoc() override;
    CWatchlistDoc(const CWatchlistDoc&) = delete;
    CWatchlistDoc& operator=(const CWatchlistDoc&) = delete;

    /// The view that shows the document; null while there is none.
    void SetObserver(CWatchlistObserver* observer);
    /// Who asks for the news counts of symbols; null, as at first, asks nobody.
    void SetNewsCountsPort(CNewsCountsPort* port) { m_newsPort = port; }

    // The only ways to change a watchlist. The view hears of a change once, at the end of the outermost one.

    /// Changes the watchlist as the user wants it: one step to be undone, and the document is modified. An edit that
    /// changes nothing makes the mark and no step; edits inside another join it.
    ///
    ///     doc.Edit("delete note", [&](CWatchlistEdit& edit) { edit.Notes().Remove(row); });
    ///
    /// name: as in "Undo delete note", a verb and its object in lower case, Windows-1252. That of the outermost counts
    /// Returns what change(CWatchlistEdit&) returns
    template <typename Change> decltype(auto) Edit(std::string_view name, Change&& change) {
        const CEditScope scope(*this, name);
        return change(Editor());
    }
    /// Changes it otherwise: by the feed, a timer, a save. No step and no mark; an open step is not touched.
    ///
    ///     doc.Update()->Options().placement = placement;
    class CUpdate {
    public:
        explicit CUpdate(CWatchlistDoc& doc) : m_doc(doc) { m_doc.BeginUpdate(); }
        ~CUpdate() { m_doc.EndUpdate(); }
        CUpdate(const CUpdate&) = delete;
        CUpdate& operator=(const CUpdate&) = delete;
        CWatchlistEdit* operator->() { return &m_doc.Editor(); }
        CWatchlistEdit& operator*() { return m_doc.Editor(); }

    private:
        CWatchlistDoc& m_doc;
    };
    CUpdate Update() { return CUpdate(*this); }

    // Lifecycle.

    /// An empty watchlist with the default columns; file dialogs open in the folder of the last saved one from now on.
    void NewDocument();
    /// Shows a watchlist that was read. title: what the window shows; empty for an untitled one. report: what of the
    /// content was left out is added. saved: else it differs from what is in its file, and is modified.
    void OpenContent(const SWatchlistContent& content, std::string_view title, CReadReport& report, bool saved = true);
    /// Unwatches and empties everything, and takes the title from the window.
    void CloseDocument();
    /// How often a watchlist took the place of another: what belongs to one of another number is not here any more.
    uint64_t OpenCount() const { return m_openCount; }

    // Symbols.

    /// The level-1 connection is ready. Asks for every symbol that is not watched yet; regional symbols are asked for
    /// each time. Before the first call nothing is asked for.
    void SetFeedReady();
    bool IsFeedReady() const { return m_feedReady; }
    /// Puts symbols into rows 1, 2, ... and watches them; a row that already holds its symbol is left alone. The grid
    /// is grown to at least their number plus 3 rows first. Over rows that are in use, or that were used since an
    /// earlier call, this is one edit, and the status bar says so. hasFile: the watchlist has one, in which they are
    /// not. Returns whether a row changed.
    bool PlaceCommandLineSymbols(const std::vector<std::string>& symbols, bool hasFile = false);
    /// Why a row shows no data although a symbol is in it: "waiting for room: limit of 500 reached". It is shown and
    /// no part of the watchlist; empty for most rows. Good until the next call.
    std::string_view RowHint(int row) const;
    /// The hint over a feed symbol's rows may have changed.
    void RowHintsChanged(std::string_view feedSymbol);
    void WatchSymbol(std::string_view symbol);
    void UnwatchSymbol(std::string_view symbol);
    void UnwatchAll();
    /// The feed does not know the symbol, or does not permit it: its rows show a message instead.
    void SymbolNotFound(std::string_view symbol);
    // Rows.

    ERowKind RowKind(int row) const;
    std::string_view RowSymbol(int row) const { return m_rows.Symbol(row); }
    /// An annotation's text without its mark.
    std::string_view AnnotationText(int row) const;
    int LastUsedRow() const;
    /// Rows the grid shows: up to the last used one, and the empty rows kept below it.
    int RowCount() const;
    size_t SymbolCount() const;

    /// A text in the symbol column in place of a symbol row's symbol, until the row is next changed; empty for none.
    std::string_view ShownText(int row) const { return m_rows.Text(row, &SRowExtras::shown); }
    /// Whether a row shows that the feed rejected its symbol.
    bool IsRejected(int row) const { return !RejectedSymbol(row).empty(); }
    /// The symbol whose rejection a row shows; empty for most rows.
    std::string_view RejectedSymbol(int row) const { return m_rows.Text(row, &SRowExtras::rejected); }
    /// What the user entered in a row, as typed; empty when nobody typed it or it is the row's own text. Of a rejected
    /// row that was read from a file it is the symbol, unless that stands for a text with commas.
    std::string_view TypedText(int row) const;
    // Rows that move, each with all that belongs to it. Each call is an edit.

    /// Puts empty rows before a row.
    ///
    /// Errors  false, and nothing changes, when a row that is in use would leave the grid
    bool InsertRows(int firstRow, int count);
    /// Takes rows out; a symbol that stood nowhere else is unwatched.
    void DeleteRows(int firstRow, int count);
    /// Moves rows so that they are before the row that is `before` now, at most RowCount() + 1.
    void MoveRows(int firstRow, int count, int before);

    // Hidden rows. They take no place in the grid and are rows like all others otherwise: watched, judged by alerts,
    // sorted, exported.

    bool IsRowHidden(int row) const { return m_rows.Row(row).hidden; }
    std::vector<int> HiddenRows() const { return m_rows.HiddenRows(); }
    /// Hides rows, or shows them again: an edit. Rows that are so already do not count.
    void SetRowsHidden(const std::vector<int>& rows, bool hidden);
    /// Shows what is hidden among the rows, because the user is led there. This is no edit.
    void RevealRows(int firstRow, int lastRow);

    /// The number that a row keeps wherever it moves.
    uint32_t RowId(int row) { return m_rows.MakeId(row); }
    int RowOfId(uint32_t id) const { return m_rows.RowOfId(id); }

    /// The user's edits so far.
    CUndoStack& Undo() { return m_undo; }
    const CUndoStack& Undo() const { return m_undo; }

    // Updates.

    /// The paint message arrived: judges the alerts of the records that changed, and takes away rows whose symbol the
    /// feed does not know.
    void OnPaintMessage();
    /// Hands each row whose record changed since the last call to the observer.
    void RepaintChangedRows();

    // News.

    /// A headline came on the level-1 connection: its symbols' rows change at the next repaint, their alerts fire.
    void OnNewsLine(std::string_view line);
    /// The counts came that were asked for.
    void OnNewsCounts(std::string_view xml) override;

    // Columns and options.

    const CColumnMap& Columns() const { return m_columns; }
    const SWatchlistOptions& Options() const { return m_options; }
    /// Lines of the file that only another version of the program understands; a save writes them again.
    const std::vector<std::string>& UnknownLines() const { return m_unknownLines; }

    // Stores by row and by symbol.

    const CInvalidSymbols& InvalidSymbols() const { return m_rows.Rejected(); }
    const CSymbolMap& Symbols() const { return m_rows.Symbols(); }
    const CRowTextMap& Annotations() const { return m_annotations; }
    const CNoteStore& Notes() const { return m_notes; }
    const CAlertsMap& Alerts() const { return m_alerts; }
    /// The same with their rules, for notices, resets, arming and the working copy of a dialog. What fires or is armed
    /// again marks the document by itself; the user's edits of alerts come in by Edit.
    CAlertsMap& AlertRules() { return m_alerts; }
    const CNewsMap& News() const { return m_news; }
    /// Every headline since the watchlist was opened, of its symbols and all others.
    const CHeadlineLog& Headlines() const { return m_headlines; }
    const CCellFormatStore& Formats() const { return m_formats; }
    const CWatchTable& WatchTable() const { return m_watched; }
    CL1DataStore& Store() const { return m_store; }

    CSettings& Settings() const override { return m_settings; }

    bool IsModified() const override { return m_modified; }
    /// The document is in its file as it is now, or was when the point was taken.
    void MarkSaved() { MarkSaved(m_undo.SavePoint()); }
    void MarkSaved(const SSavePoint& point);
    /// How it was exported, and how large it is drawn; another choice modifies the document, though there is nothing to
    /// undo.
    void RememberExport(const SExportOptions& exporting);
    void RememberScale(const SScale& scale);
    /// How often the document was marked modified; another number means that something changed.
    uint64_t ChangeCount() const override { return m_changeCount; }
    /// Another number: rows, columns or options may have changed since. Values that the feed brings do not count.
    uint64_t Revision() const { return m_revision; }
    const std::string& StatusText() const { return m_status; }
    void SetTitle(std::string_view title) { m_frame.SetDocumentTitle(title); }
    /// Shows in the status bar what is under way, until RestoreStatus puts the status text back.
    void ShowProgress(std::string_view text) { m_frame.SetStatusText(text); }
    void RestoreStatus() { m_frame.SetStatusText(m_status); }

private:
    class CEditor;
    class CEditScope {
    public:
        CEditScope(CWatchlistDoc& doc, std::string_view name) : m_doc(doc) { m_doc.BeginEdit(name); }
        ~CEditScope() { m_doc.EndEdit(); }
        CEditScope(const CEditScope&) = delete;
        CEditScope& operator=(const CEditScope&) = delete;

    private:
        CWatchlistDoc& m_doc;
    };

    CWatchlistEdit& Editor();
    void BeginEdit(std::string_view name);
    void EndEdit();
    void BeginUpdate();
    void EndUpdate();
    void BeginNotices();
    void EndNotices();

    void PlaceSymbol(int row, std::string_view symbol);
    void EnterSymbol(int row, std::string_view symbol);
    void SetAnnotation(int row, std::string_view text);
    void EmptyRow(int row);
    bool ReorderRows(const std::vector<int>& newRowOf);
    void SetColumnsByName(std::string_view names);
    void SetModified(bool modified) override;
    void RebuildGrid();

    void BeforeRow(int row) override;
    void BeforeRowsMove() override;
    void RowsInserted(int firstRow, int count) override { m_undo.Recorder().RowsInserted(firstRow, count); }
    void RowsRemoved(const std::vector<SPlacedRow>& rows) override { m_undo.Recorder().RowsRemoved(rows); }

    void ChangesWait() override;
    void PostPaint() override;
    void DrainNow() override { OnPaintMessage(); }
    void OnAlertsChanged(std::string_view symbol, int armed) override;
    void OnAlertsFiredOrArmed() override;

    CRowTable& Rows() override { return m_rows; }
    void PutRow(int row, const SRow& content, unsigned parts) override;
    void SymbolsCame(const std::vector<std::string>& symbols) override;
    void SymbolsGone(const std::vector<std::string>& symbols) override;
    void MoveRows(const std::vector<int>& newRowOf) override;
    SLayout Layout() const override { return {m_columns, m_options, m_grownRows}; }
    void SetLayout(const SLayout& layout) override;
    CAlertsMap& AlertsToUndo() override { return m_alerts; }
    void BeginExchange() override;
    void EndExchange() override { EndBatch(); }
    void BeginBatch();
    void EndBatch();

    void Reset();
    void WatchMissing();
    std::vector<std::string> RegionalSymbolsOf(const std::string& feedSymbol) const;
    void RejectRows(const std::string& symbol);
    void Watch(std::string_view symbol);
    void Unwatch(const std::string& symbol);
    bool PlaceAndWatch(int row, std::string_view symbol);
    void RequestNewsCounts(const std::vector<std::string>& symbols);
    void ShowSymbolCount();
    void SetStatus(std::string_view text);
    void RowChanged(int row);
    void NoteRows(int firstRow, int lastRow);
    void DetachSymbol(int row);

    CL1DataStore& m_store;
    CSettings& m_settings;
    CWatchlistFrame& m_frame;
    CWatchlistObserver* m_observer = nullptr;
    CNewsCountsPort* m_newsPort = nullptr;
    CChangeQueue m_changes;

    CColumnMap m_columns;
    SWatchlistOptions m_options;
    CRowTable m_rows;
    CRowTextMap m_annotations{m_rows};
    CNoteStore m_notes{m_rows};
    CCellFormatStore m_formats{m_rows};
    CAlertsMap m_alerts;
    CNewsMap m_news;
    CHeadlineLog m_headlines;
    CSymbolUpdateMap m_updates;
    std::vector<int> m_shownRows; ///< Memory for a repaint.
    CWatchTable m_watched;
    std::vector<std::string> m_unknownLines;
    std::set<std::string> m_regionals; ///< Regional symbols that were placed since the last reset.

    // Only in an edit batch.
    int m_batchDepth = 0;
    std::unordered_set<std::string> m_batchLeft; ///< Stood in a row before, and are still watched.
    std::vector<std::string> m_batchAdded;       ///< Their news counts are to be asked for.

    // Only while something is changed: what the view is to hear.
    struct SNotices {
        int depth = 0;
        int rowCount = 0; ///< At the beginning.
        bool rebuild = false;
        bool order = false;    ///< Rows changed places among themselves.
        std::vector<int> rows; ///< At most kMostRows.
        int firstRow = 0, lastRow = 0;
        static constexpr size_t kMostRows = 64; ///< More are said as a range.
    } m_notices;

    std::string m_status;
    int m_grownRows = 0; ///< Rows that were asked for besides those in use.
    bool m_feedReady = false;
    bool m_commandLinePlaced = false; ///< Of the present watchlist.
    bool m_loading = false;
    bool m_modified = false;
    uint64_t m_changeCount = 0;
    uint64_t m_openCount = 0;
    uint64_t m_revision = 0;
    CUndoStack m_undo{*this};
    std::unique_ptr<CEditor> m_editor;
};

} // namespace vx
