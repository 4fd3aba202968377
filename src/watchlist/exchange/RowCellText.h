// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/FieldEntry.h"
#include "data/text/CellText.h"

#include <optional>
#include <span>
#include <string_view>

namespace vx {

/// The columns that the view treats in a way of their own, by their place in the catalogue.
///
/// Shape   catalogue indices; kNoColumn for a column that the catalogue does not have
struct SSpecialColumns {
    static constexpr int kNoColumn = -1;

    int symbol = kNoColumn;
    int alerts = kNoColumn;
    int notes = kNoColumn;
    int tickTrend = kNoColumn;
    int bidTick = kNoColumn;
    int exchange = kNoColumn;
    int news = kNoColumn;
    int latestHeadline = kNoColumn;
    int last = kNoColumn;
    int ask = kNoColumn;
    int bid = kNoColumn;

    bool operator==(const SSpecialColumns&) const = default;
};

/// Looks for the special columns by their names, from the last entry of a catalogue down to entry 1. Entry 0, the row
/// numbers, is never one of them.
SSpecialColumns FindSpecialColumns(std::span<const SFieldEntry> catalogue);

class CColumnMap;
class CSymbolRec;
class CWatchlistDoc;

/// The name of the column in which symbols stand and are typed.
inline constexpr std::string_view kSymbolColumn = "Symbol";
/// The program's own columns.
inline constexpr std::string_view kAlertsColumn = "Alerts";
inline constexpr std::string_view kNotesColumn = "Notes";
inline constexpr std::string_view kNewsColumn = "News";
inline constexpr std::string_view kHeadlineColumn = "Latest Headline";

/// The column whose cell says how the heading of a row looks: that of the symbols, in which headings are typed; the
/// first one in a list without it.
int HeadingColumn(const CColumnMap& columns);

/// How many alerts a symbol has.
struct SAlertTally {
    int armed = 0; ///< Waiting for their condition.
    int quiet = 0; ///< Fired, or switched off by the user.
    int dead = 0;  ///< Cannot fire, armed or not: there is nothing to compare.
};
SAlertTally TallyAlerts(const CWatchlistDoc& doc, std::string_view symbol);

/// One column of a document, looked up once for all the cells of it that are read.
class CColumnReader {
public:
    /// column: grid column; one that the document does not show reads as empty.
    CColumnReader(const CWatchlistDoc& doc, int column);

    /// Whether the column's cells hold numbers: its rows are then sorted by number, else by text.
    bool IsNumber() const;

    bool IsTickTrend() const { return m_kind == EKind::Field && vx::IsTickTrend(*m_entry); }

    /// Whether its cells show a field of the symbol's record; any such column finds the record for all of them.
    bool NeedsRecord() const { return m_kind == EKind::Field; }

    /// Writes what the cell of a symbol row shows: a field of its record, the symbol, the text shown in its place, the
    /// news count or headline, its alerts ("2", or "2/1" when one more fired, is off or cannot fire), or the first line
    /// of its note. Other rows give nothing but their note.
    ///
    /// Returns the bytes written, at most kMostCellText
    size_t Read(int row, std::span<char, kMostCellText> out) const { return Read(row, FindRecord(row), out); }

    // The same in two steps, for whoever reads a whole column: the records of many rows are found sooner when nothing
    // else is done between them.

    /// The record that the row's cell reads from, null when it needs none or there is none.
    const CSymbolRec* FindRecord(int row) const;
    size_t Read(int row, const CSymbolRec* record, std::span<char, kMostCellText> out) const;

    // Ask for the memory that FindRecord and ReadNumber will need, each for what the one before it brought.

    void ExpectLookup(int row) const;
    void ExpectRecord(int row) const;
    void ExpectNumber(const CSymbolRec* record) const;

    /// The number that a cell's text reads as; nothing where only the text can tell.
    std::optional<double> ReadNumber(int row, const CSymbolRec* record) const;

private:
    enum class EKind { Nothing, Field, Symbol, Alerts, Notes, News, Headline };

    int Decimals(int row, const CSymbolRec& record) const;
    size_t ReadOwn(int row, std::string_view symbol, std::span<char, kMostCellText> out) const;

    const CWatchlistDoc& m_doc;
    int m_column;
    EKind m_kind = EKind::Nothing;
    const SFieldEntry* m_entry = nullptr;
};

} // namespace vx
