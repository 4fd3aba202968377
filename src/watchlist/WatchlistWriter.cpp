#include "watchlist/WatchlistWriter.h"

#include "settings/Settings.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistSupplement.h"

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

std::string_view Flag(bool value) { return value ? "TRUE" : "FALSE"; }

template <typename... Args> void Append(std::string& out, fmt::format_string<Args...> text, Args&&... args) {
    fmt::format_to(std::back_inserter(out), text, std::forward<Args>(args)...);
}

/// The place of each column among those that are written, -1 for the others; empty when all are. What names a column
/// by its place is written so that it fits the columns of the file.
std::vector<int> WrittenPlaces(const CColumnMap& columns) {
    std::vector<int> out{0};
    int next = 1;
    for (int i = 1; i < columns.Count(); ++i) out.push_back(IsWrittenColumn(columns.At(i)) ? next++ : -1);
    if (next == columns.Count()) return {};
    for (int i = columns.Count(); i <= CColumnMap::kMostColumns; ++i) out.push_back(next++);
    return out;
}

int WrittenSortColumn(int column, const std::vector<int>& places) {
    const auto index = static_cast<size_t>(column);
    return column > 0 && index < places.size() ? places[index] : column;
}

int WrittenLockedColumns(int locked, const std::vector<int>& places) {
    const size_t count = std::min(places.size(), static_cast<size_t>(std::max(locked, 0)) + 1);
    return locked - static_cast<int>(std::count(places.begin(), places.begin() + static_cast<ptrdiff_t>(count), -1));
}

void AppendOptions(std::string& out, const CWatchlistDoc& doc, const SPlacement& placement,
                   const std::vector<int>& places) {
    const SWatchlistOptions& options = doc.Options();
    const CSettings& settings = doc.Settings();
    Append(out, "Window={};{};{};{};{};{}\r\n", placement.left, placement.top, placement.width, placement.height,
           Flag(placement.maximised), Flag(placement.alwaysOnTop));
    Append(out, "TrailingRows={}\r\nLockedColumns={}\r\n", options.trailingRows,
           WrittenLockedColumns(options.lockedColumns, places));
    Append(out, "ShowRowNumbers={}\r\nShowToolBar={}\r\n", Flag(options.showRowNumbers), Flag(options.showToolBar));
    Append(out, "ShowEllipsis={}\r\nShowGridLines={}\r\n", Flag(settings.ReadBoolean(kShowEllipsis)),
           Flag(settings.ReadBoolean(kShowGridLines)));
    Append(out, "UseGridPrecision={}\r\nUseDefaultAlignment={}\r\n", Flag(options.useGridPrecision),
           Flag(options.useDefaultAlignment));
    Append(out, "Sort={};{};{};{}\r\n", WrittenSortColumn(options.sort.column, places), Flag(options.sort.ascending),
           Flag(options.sort.autoSort), options.sort.intervalMs / 1000);
}

void AppendColumns(std::string& out, const CColumnMap& columns) {
    for (int i = 1; i < columns.Count(); ++i) {
        const sColumnInfo& column = columns.At(i);
        if (IsWrittenColumn(column)) Append(out, "{}:{};", column.name, column.width * kStoredPerPixel);
    }
}

/// A symbol and the rows of its entry; both stay the document's.
template <typename Rows> struct SSymbolRows {
    std::string_view symbol;
    const Rows* rows;
};

template <typename Rows> void AppendSymbols(std::string& out, std::vector<SSymbolRows<Rows>>& symbols) {
    std::erase_if(symbols, [](const auto& s) { return s.rows->empty() || !IsCarriedName(s.symbol); });
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
        if (!invalid.contains(row)) Append(out, "{}:{};", row, CarriedAnnotation(text));
}

void AppendAlerts(std::string& out, const CWatchlistDoc& doc) {
    const CAlertsMap& alerts = doc.Alerts();
    const std::vector<std::string> symbols = alerts.Symbols();
    CAlertsMap carried;
    bool all = true;
    for (const std::string& symbol : symbols)
        for (const A_INFO& alert : alerts.Get(symbol)) all = all && CAlertsMap::CanSave(symbol, alert);
    for (const std::string& symbol : all ? std::vector<std::string>{} : symbols)
        for (const A_INFO& alert : alerts.Get(symbol))
            if (CAlertsMap::CanSave(symbol, alert)) carried.Add(symbol, alert);
    out += all ? alerts.Save() : carried.Save();
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
    const std::vector<int> places = WrittenPlaces(doc.Columns());
    std::string out;
    AppendOptions(out, doc, placement, places);
    out += "Columns=";
    AppendColumns(out, doc.Columns());
    out += "\r\nSymbols=";
    AppendAllSymbols(out, doc);
    out += "\r\nAnnotations=";
    AppendAnnotations(out, doc);
    out += "\r\nAlerts=";
    AppendAlerts(out, doc);
    out += "\r\nNotes=";
    AppendNotes(out, doc.Notes());
    out += "\r\nFormatting=";
    out += doc.Formats().Write(places);
    out += kLineEnd;
    return out;
}

} // namespace vx
