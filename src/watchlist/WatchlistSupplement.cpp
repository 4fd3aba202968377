#include "watchlist/WatchlistSupplement.h"

#include "alerts/AlertField.h"
#include "watchlist/WatchlistContent.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistKeys.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr size_t kMostNameBytes = 255;
constexpr size_t kMostNamedRows = 10;
constexpr std::string_view kLineEnd = "\r\n";

void FindNotes(const CWatchlistDoc& doc, SWatchlistSupplement& out) {
    out.carriedNotes = doc.Notes().Count();
    for (const auto& [row, text] : doc.Notes())
        if (row > out.carriedNotes) out.notes.emplace(row, text);
}

void FindSymbols(const CWatchlistDoc& doc, SWatchlistSupplement& out) {
    const auto keep = [&](const std::string& symbol, const auto& rows) {
        if (IsCarriedName(symbol)) return;
        for (const uint32_t row : rows) out.symbols.emplace(static_cast<int>(row), symbol);
    };
    doc.Symbols().ForEach([&](const SYMBOL_DATA& data) { keep(data.symbol, data.rows); });
    for (const auto& [symbol, rows] : doc.InvalidSymbols()) keep(symbol, rows);
}

void FindAnnotations(const CWatchlistDoc& doc, SWatchlistSupplement& out) {
    for (const auto& [row, text] : doc.Annotations()) {
        const bool carried = CarriedAnnotation(text).size() == text.size() && OldInvalidSymbol(text).empty();
        if (!carried && !out.symbols.contains(row)) out.annotations.emplace(row, text);
    }
}

// A threshold that was rounded may be that of another alert, so that the file has only one of them.
void FindAlerts(const CWatchlistDoc& doc, SWatchlistSupplement& out) {
    for (const std::string& symbol : doc.Alerts().Symbols()) {
        const CAlertArray& alerts = doc.Alerts().Get(symbol);
        const auto isCarried = [&](const A_INFO& alert) {
            return AlertFieldName(alert.fieldId).empty() ||
                   (CAlertsMap::CanSave(symbol, alert) && !CAlertsMap::IsRounded(alert));
        };
        if (std::ranges::all_of(alerts, isCarried)) continue;
        for (const A_INFO& alert : alerts)
            if (!AlertFieldName(alert.fieldId).empty()) out.alerts.emplace_back(symbol, alert);
    }
}

void FindColumns(const CWatchlistDoc& doc, SWatchlistSupplement& out) {
    const CColumnMap& columns = doc.Columns();
    if (std::all_of(columns.Columns().begin() + 1, columns.Columns().end(), IsWrittenColumn)) return;
    for (int i = 1; i < columns.Count(); ++i) out.layout.columns.push_back({columns.At(i).name, columns.At(i).width});
    out.layout.sortColumn = doc.Options().sort.column;
    out.layout.lockedColumns = doc.Options().lockedColumns;
    out.layout.formats = doc.Formats().Write();
}

// "row 7", "rows 7, 9 and 12", "rows 1, 2, ... and 5 more".
std::string RowList(const std::vector<int>& rows) {
    std::string out = rows.size() == 1 ? "row " : "rows ";
    for (size_t named = 0; named < rows.size(); ++named) {
        if (named == kMostNamedRows) return out + fmt::format(" and {} more", rows.size() - named);
        if (named > 0) out += named + 1 == rows.size() ? " and " : ", ";
        out += std::to_string(rows[named]);
    }
    return out;
}

std::string RowList(const std::map<int, std::string>& entries) {
    std::vector<int> rows;
    for (const auto& [row, text] : entries) rows.push_back(row);
    return RowList(rows);
}

// "\"Bid\"", "\"Bid\", \"Ask\" and \"Last\"", "\"A\", ... and 5 more".
std::string NameList(const std::vector<std::string>& names) {
    std::string out;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i == kMostNamedRows) return out + fmt::format(" and {} more", names.size() - i);
        if (i > 0) out += i + 1 == names.size() ? " and " : ", ";
        out += fmt::format("\"{}\"", names[i]);
    }
    return out;
}

std::string_view Plural(size_t count) { return count == 1 ? "" : "s"; }

} // namespace

bool IsCarriedName(std::string_view symbol) {
    return !symbol.empty() && symbol.size() <= kMostNameBytes && std::ranges::none_of(symbol, [](char c) {
        return c == ':' || c == ';' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
}

bool IsCarriedColumn(std::string_view name) {
    return !name.empty() && name.size() <= kMostNameBytes && name != kRowNumbersEntry &&
           name.find_first_of(":;") == std::string_view::npos && name.find(kLineEnd) == std::string_view::npos;
}

bool IsWrittenColumn(const sColumnInfo& column) {
    return column.width >= 1 && column.name != " " && IsCarriedColumn(column.name);
}

std::string_view CarriedAnnotation(std::string_view text) {
    return text.substr(0, std::min(text.find(';'), text.find(kLineEnd)));
}

SWatchlistSupplement FindUncarried(const CWatchlistDoc& doc) {
    SWatchlistSupplement out;
    FindNotes(doc, out);
    FindSymbols(doc, out);
    FindAnnotations(doc, out);
    FindAlerts(doc, out);
    FindColumns(doc, out);
    out.hiddenRows = doc.HiddenRows();
    return out;
}

void MergeSupplement(const SWatchlistSupplement& supplement, SWatchlistContent& content) {
    for (const auto& [row, text] : supplement.notes) content.notes.insert_or_assign(row, text);
    for (const auto& [row, symbol] : supplement.symbols) content.SetRow(row, symbol, false);
    for (const auto& [row, text] : supplement.annotations) content.SetRow(row, text, true);
    content.keptAlerts.insert(content.keptAlerts.end(), supplement.alerts.begin(), supplement.alerts.end());
    content.hiddenRows = supplement.hiddenRows;
    const SKeptColumns& layout = supplement.layout;
    if (layout.columns.empty()) return;
    content.columns.clear();
    for (const auto& [name, width] : layout.columns) content.columns.push_back({name, width});
    content.options.sort.column = layout.sortColumn;
    content.options.lockedColumns = layout.lockedColumns;
    content.formats = {layout.formats, 0};
}

std::vector<std::string> DescribeSupplement(const SWatchlistSupplement& supplement) {
    std::vector<std::string> out;
    const auto& [notes, symbols, annotations, allAlerts, layout, hiddenRows, carriedNotes] = supplement;
    std::vector<std::string> alerts, rounded, columns;
    for (const auto& [symbol, alert] : allAlerts) {
        if (!CAlertsMap::CanSave(symbol, alert))
            alerts.push_back(symbol);
        else if (CAlertsMap::IsRounded(alert))
            rounded.push_back(symbol);
    }
    for (const auto& [name, width] : layout.columns)
        if (!IsWrittenColumn({0, name, width})) columns.push_back(name);
    if (!notes.empty())
        out.push_back(
            fmt::format("The note{} of {}: the file holds notes up to row {}, the number of notes in the list.",
                        Plural(notes.size()), RowList(notes), carriedNotes));
    if (!symbols.empty())
        out.push_back(fmt::format("The symbol{} of {}, beginning with \"{}\": the file takes no \":\" or \";\" in a "
                                  "symbol.",
                                  Plural(symbols.size()), RowList(symbols), symbols.begin()->second));
    if (!annotations.empty())
        out.push_back(fmt::format("The whole text of the annotation{} of {}: in the file it ends at the first \";\".",
                                  Plural(annotations.size()), RowList(annotations)));
    if (!alerts.empty())
        out.push_back(fmt::format("{} alert{}, beginning with one of \"{}\": the file takes no \":\" or \";\" in a "
                                  "symbol and no \";\" in the name of a sound.",
                                  alerts.size(), Plural(alerts.size()), alerts.front()));
    if (!rounded.empty())
        out.push_back(fmt::format("The whole threshold of {} alert{}, beginning with one of \"{}\": the file holds six "
                                  "decimals.",
                                  rounded.size(), Plural(rounded.size()), rounded.front()));
    if (!columns.empty())
        out.push_back(fmt::format("The column{} {}: the file takes no hidden columns, and no \":\" or \";\" in a name.",
                                  Plural(columns.size()), NameList(columns)));
    if (!hiddenRows.empty())
        out.push_back(fmt::format("The hiding of {}: the file holds all rows as shown ones.", RowList(hiddenRows)));
    return out;
}

} // namespace vx
