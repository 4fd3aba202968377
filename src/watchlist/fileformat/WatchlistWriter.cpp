// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistWriter.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/FurtherKeys.h"
#include "watchlist/fileformat/OptionKeys.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vx {

namespace {

constexpr int kStoredPerPixel = 10;
constexpr std::string_view kLineEnd = "\r\n";

template <typename... Args> void Append(std::string& out, fmt::format_string<Args...> text, Args&&... args) {
    fmt::format_to(std::back_inserter(out), text, std::forward<Args>(args)...);
}

/// A text as far as a line can hold it.
std::string_view UpToLineEnd(std::string_view text) { return text.substr(0, text.find(kLineEnd)); }
bool HoldsLineEnd(std::string_view text) { return UpToLineEnd(text).size() != text.size(); }

void AppendColumns(std::string& out, const CColumnMap& columns) {
    for (int i = 1; i < columns.Count(); ++i) {
        const sColumnInfo& column = columns.At(i);
        const bool written = column.width >= 1 && column.name != " " && !HoldsLineEnd(column.name);
        if (written) Append(out, "{}:{};", column.name, column.width * kStoredPerPixel);
    }
}

/// A symbol and the rows of its entry; both stay the document's.
template <typename Rows> struct SSymbolRows {
    std::string_view symbol;
    const Rows* rows;
};

template <typename Rows> void AppendSymbols(std::string& out, std::vector<SSymbolRows<Rows>>& symbols) {
    std::erase_if(symbols, [](const auto& s) { return s.rows->empty() || HoldsLineEnd(s.symbol); });
    std::ranges::sort(symbols, {}, [](const auto& s) { return std::pair(*s.rows->begin(), s.symbol); });
    for (const auto& [symbol, rows] : symbols) {
        out += symbol;
        out += ':';
        for (const uint32_t row : *rows) Append(out, "{},", row);
        out += ';';
    }
}

void AppendAllSymbols(std::string& out, const CWatchlistDoc& doc) {
    std::vector<SSymbolRows<decltype(SYMBOL_DATA::rows)>> valid;
    valid.reserve(doc.SymbolCount());
    doc.Symbols().ForEach([&](const SYMBOL_DATA& data) { valid.push_back({data.symbol, &data.rows}); });
    AppendSymbols(out, valid);
    using InvalidRows = std::remove_cvref_t<decltype(doc.InvalidSymbols().begin()->second)>;
    std::vector<SSymbolRows<InvalidRows>> invalid;
    for (const auto& [symbol, rows] : doc.InvalidSymbols()) invalid.push_back({symbol, &rows});
    AppendSymbols(out, invalid);
}

void AppendAnnotations(std::string& out, const CWatchlistDoc& doc) {
    std::unordered_set<int> invalid; // Their rows stand with the symbols.
    for (const auto& [symbol, rows] : doc.InvalidSymbols())
        for (const uint32_t row : rows) invalid.insert(static_cast<int>(row));
    for (const auto& [row, text] : doc.Annotations())
        if (!invalid.contains(row)) Append(out, "{}:{};", row, UpToLineEnd(text));
}

void AppendNotes(std::string& out, const CNoteStore& notes) {
    for (const auto& [row, text] : notes) {
        if (row > notes.Count()) break;
        Append(out, "{}:", row);
        std::string_view rest = text;
        for (size_t end = rest.find(kLineEnd); end != std::string_view::npos; end = rest.find(kLineEnd)) {
            out += rest.substr(0, end);
            out += "::";
            rest.remove_prefix(end + kLineEnd.size());
        }
        out += rest;
        out += ';';
    }
}

} // namespace

std::string WriteWatchlistText(const CWatchlistDoc& doc, const SPlacement& placement) {
    std::string out;
    AppendOptionLines(out, doc, placement);
    out += "Columns=";
    AppendColumns(out, doc.Columns());
    out += "\r\nSymbols=";
    AppendAllSymbols(out, doc);
    out += "\r\nAnnotations=";
    AppendAnnotations(out, doc);
    out += "\r\nAlerts=";
    out += doc.Alerts().Save();
    out += "\r\nNotes=";
    AppendNotes(out, doc.Notes());
    out += "\r\nFormatting=";
    out += doc.Formats().Write();
    out += kLineEnd;
    AppendFurtherKeys(out, doc);
    return out;
}

} // namespace vx
