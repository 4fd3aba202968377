// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistWriter.h"

#include "base/Hash.h"
#include "base/Number.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/FurtherKeys.h"
#include "watchlist/fileformat/OptionKeys.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <bit>
#include <map>
#include <utility>
#include <vector>

namespace vx {

namespace {

constexpr int kStoredPerPixel = 10;
constexpr std::string_view kLineEnd = "\r\n";
constexpr size_t kBytesPerRow = 100; // Enough for most; what is not used is never touched.

/// A text as far as a line can hold it.
std::string_view UpToLineEnd(std::string_view text) { return text.substr(0, text.find(kLineEnd)); }
bool HoldsLineEnd(std::string_view text) { return UpToLineEnd(text).size() != text.size(); }

void AppendColumns(std::string& out, const CColumnMap& columns) {
    for (int i = 1; i < columns.Count(); ++i) {
        const sColumnInfo& column = columns.At(i);
        const bool written = column.width >= 1 && column.name != " " && !HoldsLineEnd(column.name);
        if (!written) continue;
        out.append(column.name).append(":");
        AppendInteger(out, column.width * kStoredPerPixel);
        out += ';';
    }
}

// firstRow, nextRow(row): 0 is the end. Returns whether the entry is read as it is.
template <typename NextRow>
bool AppendSymbol(std::string& out, std::string_view symbol, uint32_t firstRow, NextRow&& nextRow) {
    if (HoldsLineEnd(symbol)) return false;
    out.append(symbol).append(":");
    for (uint32_t row = firstRow; row != 0; row = nextRow(row)) {
        AppendInteger(out, row);
        out += ',';
    }
    out += ';';
    return IsSymbolText(symbol) && symbol.find(':') == std::string_view::npos &&
           symbol.find(';') == std::string_view::npos;
}

/// For each row the next one that has its symbol, found by a walk over the rows: they lie side by side in memory, which
/// the entries of the document's map do not.
struct SRowChains {
    explicit SRowChains(const CWatchlistDoc& doc)
        : next(static_cast<size_t>(doc.LastUsedRow()) + 1), isFirst(next.size()) {
        const CSeededHash hash;
        std::vector<uint32_t> firstRows(std::bit_ceil(2 * next.size())); // By hash; 0 is free.
        for (size_t row = next.size() - 1; row > 0; --row) {
            const std::string_view symbol = doc.RowSymbol(static_cast<int>(row));
            if (symbol.empty()) continue;
            size_t at = hash(symbol) & (firstRows.size() - 1);
            while (firstRows[at] != 0 && doc.RowSymbol(static_cast<int>(firstRows[at])) != symbol)
                at = (at + 1) & (firstRows.size() - 1);
            next[row] = firstRows[at];
            isFirst[next[row]] = false;
            isFirst[row] = true;
            firstRows[at] = static_cast<uint32_t>(row);
        }
    }

    std::vector<uint32_t> next; ///< 0: there is none.
    std::vector<bool> isFirst;  ///< Of the rows of its symbol.
};

bool AppendSymbols(std::string& out, const CWatchlistDoc& doc) {
    const SRowChains chains(doc);
    bool carried = true;
    for (uint32_t row = 1; row < chains.next.size(); ++row)
        if (chains.isFirst[row] &&
            !AppendSymbol(out, doc.RowSymbol(static_cast<int>(row)), row, [&](uint32_t at) { return chains.next[at]; }))
            carried = false;
    return carried;
}

bool AppendRejected(std::string& out, const CWatchlistDoc& doc) {
    std::map<uint32_t, std::pair<std::string_view, const CRowList*>> byFirstRow;
    for (const auto& [symbol, rows] : doc.InvalidSymbols())
        if (!rows.empty()) byFirstRow[rows.front()] = {symbol, &rows};
    bool carried = true;
    for (const auto& [first, entry] : byFirstRow) {
        const uint32_t* row = entry.second->begin();
        const auto next = [&, end = entry.second->end()](uint32_t) { return ++row == end ? 0 : *row; };
        if (!AppendSymbol(out, entry.first, first, next)) carried = false;
    }
    return carried;
}

bool AppendAnnotations(std::string& out, const CWatchlistDoc& doc) {
    bool carried = true;
    for (const auto& [row, text] : doc.Annotations()) {
        if (doc.IsRejected(row)) continue; // It is with the symbols.
        carried = carried && doc.RowSymbol(row).empty() && !HoldsLineEnd(text) &&
                  text.find(';') == std::string_view::npos && OldInvalidSymbol(text).empty();
        AppendInteger(out, row);
        out.append(":").append(UpToLineEnd(text)).append(";");
    }
    return carried;
}

bool AppendNotes(std::string& out, const CNoteStore& notes) {
    bool carried = true;
    for (const auto& [row, text] : notes) {
        if (row > notes.Count()) break;
        carried = carried && text.find_first_of(";:,") == std::string_view::npos;
        AppendInteger(out, row);
        out += ':';
        std::string_view rest = text;
        for (size_t end = rest.find(kLineEnd); end != std::string_view::npos; end = rest.find(kLineEnd)) {
            out.append(rest.substr(0, end)).append("::");
            rest.remove_prefix(end + kLineEnd.size());
        }
        out.append(rest).append(";");
    }
    return carried;
}

} // namespace

std::string WriteWatchlistText(const CWatchlistDoc& doc, const SPlacement& placement) {
    std::string out;
    out.reserve(kBytesPerRow * static_cast<size_t>(doc.LastUsedRow()));
    SCarried carried;
    AppendOptionLines(out, doc, placement);
    out += "Columns=";
    AppendColumns(out, doc.Columns());
    out += "\r\nSymbols=";
    carried.rows = AppendSymbols(out, doc);
    carried.rows = AppendRejected(out, doc) && carried.rows;
    out += "\r\nAnnotations=";
    carried.rows = AppendAnnotations(out, doc) && carried.rows;
    out += "\r\nAlerts=";
    carried.alerts = doc.Alerts().Save(out);
    out += "\r\nNotes=";
    carried.notes = AppendNotes(out, doc.Notes());
    out += "\r\nFormatting=";
    doc.Formats().Write(out);
    out += kLineEnd;
    AppendFurtherKeys(out, doc, carried);
    return out;
}

} // namespace vx
