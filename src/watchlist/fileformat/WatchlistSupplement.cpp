// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistSupplement.h"

#include "alerts/rules/AlertInfo.h"
#include "base/Number.h"
#include "base/Text.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/document/WatchlistContent.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <algorithm>

namespace vx {

namespace {

constexpr std::string_view kFirstLine = "zantrel watchlist supplement 1";
constexpr std::string_view kLastLine = "end";

// Takes a quoted text from the beginning of a line, and the blank after it.
std::optional<std::string> TakeQuoted(std::string_view& line) {
    if (!line.starts_with('"')) return std::nullopt;
    size_t end = 1;
    while (end < line.size() && line[end] != '"') end += line[end] == '\\' ? 2 : 1;
    if (end >= line.size()) return std::nullopt;
    std::string text;
    if (!UnescapeBytes(line.substr(1, end - 1), text)) return std::nullopt;
    line.remove_prefix(std::min(line.size(), end + 2));
    return text;
}

bool ReadRow(std::string_view line, std::map<int, std::string>& entries) {
    const int row = ReadInt32(TakeUntil(line, ' '));
    std::optional<std::string> text = TakeQuoted(line);
    if (!text || text->empty() || row < 1 || row > CRowTable::kMaxRow) return false;
    entries.insert_or_assign(row, std::move(*text));
    return true;
}

// An alert: symbol, field, sound file, then the numbers in the order of AppendAlert.
bool ReadAlertLine(std::string_view line, SWatchlistSupplement& out) {
    const std::optional<std::string> symbol = TakeQuoted(line);
    const std::optional<std::string> field = TakeQuoted(line);
    const std::optional<std::string> sound = TakeQuoted(line);
    if (!symbol || !field || !sound) return false;
    const std::optional<int32_t> fieldId = AlertFieldId(*field);
    if (!fieldId) return false;
    A_INFO alert;
    alert.fieldId = *fieldId;
    alert.soundFile = *sound;
    alert.value = ReadDouble(TakeUntil(line, ' '));
    for (uint32_t* number : {&alert.condition, &alert.enabled, &alert.noZero, &alert.soundType, &alert.loopSound})
        *number = ReadUInt32(TakeUntil(line, ' '));
    out.alerts.emplace_back(*symbol, std::move(alert));
    return true;
}

bool ReadColumnLine(std::string_view line, SKeptColumns& layout) {
    const int width = ReadInt32(TakeUntil(line, ' '));
    std::optional<std::string> name = TakeQuoted(line);
    if (!name || name->empty() || layout.columns.size() >= static_cast<size_t>(SWatchlistContent::kMostColumns))
        return false;
    layout.columns.push_back({std::move(*name), std::clamp(width, 0, SWatchlistContent::kMostWidth)});
    return true;
}

bool ReadFormatsLine(std::string_view line, SKeptColumns& layout) {
    std::optional<std::string> formats = TakeQuoted(line);
    if (formats) layout.formats = std::move(*formats);
    return formats.has_value();
}

bool ReadPlace(std::string_view line, int least, int& place) {
    place = std::clamp(ReadInt32(line), least, SWatchlistContent::kMostColumns);
    return true;
}

// "3-5,9": rising, ranges with their first and last row.
bool ReadHiddenRows(std::string_view line, std::vector<int>& rows) {
    while (!line.empty()) {
        std::string_view range = TakeUntil(line, ',');
        const int first = ReadInt32(TakeUntil(range, '-'));
        const int last = range.empty() ? first : ReadInt32(range);
        const int before = rows.empty() ? 0 : rows.back();
        if (first <= before || last < first || last > CRowTable::kMaxRow) return false;
        for (int row = first; row <= last; ++row) rows.push_back(row);
    }
    return true;
}

bool ReadLine(std::string_view line, SWatchlistSupplement& out) {
    const std::string_view kind = TakeUntil(line, ' ');
    if (kind == "note") return ReadRow(line, out.notes);
    if (kind == "symbol") return ReadRow(line, out.symbols);
    if (kind == "annotation") return ReadRow(line, out.annotations);
    if (kind == "alert") return ReadAlertLine(line, out);
    if (kind == "column") return ReadColumnLine(line, out.layout);
    if (kind == "sorted") return ReadPlace(line, SSortRecord::kNoColumn, out.layout.sortColumn);
    if (kind == "locked") return ReadPlace(line, 0, out.layout.lockedColumns);
    if (kind == "hidden") return ReadHiddenRows(line, out.hiddenRows);
    if (kind == "formats") return ReadFormatsLine(line, out.layout);
    return false;
}

} // namespace

void MergeSupplement(const SWatchlistSupplement& supplement, SWatchlistContent& content) {
    for (const auto& [row, text] : supplement.notes) content.notes.insert_or_assign(row, text);
    for (const auto& [row, symbol] : supplement.symbols) content.SetRow(row, symbol, false);
    for (const auto& [row, text] : supplement.annotations) content.SetRow(row, text, true);
    content.furtherAlerts.insert(content.furtherAlerts.end(), supplement.alerts.begin(), supplement.alerts.end());
    content.hiddenRows = supplement.hiddenRows;
    const SKeptColumns& layout = supplement.layout;
    if (layout.columns.empty()) return;
    content.columns.clear();
    for (const auto& [name, width] : layout.columns) content.columns.push_back({name, width});
    content.options.sort.column = layout.sortColumn;
    content.options.lockedColumns = layout.lockedColumns;
    content.formats = {layout.formats, 0};
}

std::optional<SWatchlistSupplement> ParseSupplement(std::string_view text) {
    if (TakeUntil(text, '\n') != kFirstLine) return std::nullopt;
    SWatchlistSupplement out;
    while (!text.empty()) {
        const std::string_view line = TakeUntil(text, '\n');
        if (line == kLastLine) return out;
        if (!ReadLine(line, out)) return std::nullopt;
    }
    return std::nullopt;
}

} // namespace vx
