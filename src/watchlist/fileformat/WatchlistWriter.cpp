// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistWriter.h"

#include "base/Number.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/FurtherKeys.h"
#include "watchlist/fileformat/OptionKeys.h"
#include "watchlist/fileformat/WatchlistKeys.h"

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

/// A symbol and the rows of its entry; both stay the document's.
struct SSymbolRows {
    std::string_view symbol;
    const CRowList* rows = nullptr;
};

/// Entries by their first rows, in which no two of them are.
class CSymbolEntries {
public:
    explicit CSymbolEntries(int lastRow) : m_entries(static_cast<size_t>(lastRow) + 1) {}

    void Add(std::string_view symbol, const CRowList& rows) {
        if (rows.empty()) return;
        m_carried = m_carried && IsSymbolText(symbol) && symbol.find(':') == std::string_view::npos &&
                    symbol.find(';') == std::string_view::npos;
        if (!HoldsLineEnd(symbol)) m_entries[rows.front()] = {symbol, &rows};
    }
    /// Returns whether all of them are read as they are.
    bool Append(std::string& out) const {
        for (const auto& [symbol, rows] : m_entries) {
            if (!rows) continue;
            out += symbol;
            out += ':';
            for (const uint32_t row : *rows) {
                AppendInteger(out, row);
                out += ',';
            }
            out += ';';
        }
        return m_carried;
    }

private:
    bool m_carried = true;
    std::vector<SSymbolRows> m_entries; ///< Index is the row.
};

bool AppendAllSymbols(std::string& out, const CWatchlistDoc& doc) {
    CSymbolEntries valid(doc.LastUsedRow());
    doc.Symbols().ForEach([&](const SYMBOL_DATA& data) { valid.Add(data.symbol, data.rows); });
    const bool carried = valid.Append(out);
    CSymbolEntries rejected(doc.LastUsedRow());
    for (const auto& [symbol, rows] : doc.InvalidSymbols()) rejected.Add(symbol, rows);
    return rejected.Append(out) && carried;
}

bool AppendAnnotations(std::string& out, const CWatchlistDoc& doc) {
    bool carried = true;
    for (const auto& [row, text] : doc.Annotations()) {
        if (doc.IsRejected(row)) continue; // It stands with the symbols.
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
    carried.rows = AppendAllSymbols(out, doc);
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
