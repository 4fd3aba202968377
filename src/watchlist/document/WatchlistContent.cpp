// SPDX-License-Identifier: MIT
#include "watchlist/document/WatchlistContent.h"

#include "base/Text.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistEdit.h"

#include <fmt/format.h>

namespace vx {

namespace {

void StoreSetting(CSettings& settings, const SBooleanSetting& setting, std::optional<bool> value) {
    if (value && settings.ReadBoolean(setting) != *value) settings.WriteBoolean(setting, *value);
}

void ApplyColumns(CWatchlistEdit& edit, const SWatchlistContent& content) {
    CColumnMap& columns = edit.Columns();
    if (content.rowNumberWidth) columns.SetWidth(kRowNumberColumn, *content.rowNumberWidth);
    for (const auto& column : content.columns) columns.Append(column.name, column.width);
    if (!content.columnsGiven) columns.Append("Symbol", kDefaultColumnWidthPx);
    for (const auto& [name, look] : content.columnLooks) columns.SetLook(columns.PositionOf(name), look);
    for (int column = 1; column < columns.Count(); ++column)
        edit.Formats().SetNewColumn(column, columns.At(column).name);
}

} // namespace

void CReadReport::LeftOut(size_t line, std::string_view what, std::string_view offending) {
    if (++m_count > kMostKept) return;
    std::string sentence = line == 0 ? std::string(what) : fmt::format("line {}: {}", line, what);
    if (!offending.empty()) {
        sentence += fmt::format(": \"{}\"", EscapeBytes(offending.substr(0, kMostQuoted)));
        if (offending.size() > kMostQuoted) sentence += " ...";
    }
    m_sentences.push_back(std::move(sentence));
}

bool SWatchlistContent::SetRow(int row, std::string_view text, bool annotation) {
    if (row < 1 || row > CRowTable::kMaxRow) return false;
    if (rows.size() <= static_cast<size_t>(row)) rows.resize(static_cast<size_t>(row) + 1);
    SRow& entry = rows[static_cast<size_t>(row)];
    entry.text = text;
    entry.annotation = annotation;
    return true;
}

// Rows are placed once each and from the first to the last, however often and in which order the text names them: that
// is what keeps the time in proportion to the text.
void ApplyContent(CWatchlistEdit& edit, CSettings& settings, const SWatchlistContent& content, CReadReport& report) {
    edit.Options() = content.options;
    StoreSetting(settings, kShowEllipsis, content.showEllipsis);
    StoreSetting(settings, kShowGridLines, content.showGridLines);
    ApplyColumns(edit, content);
    for (size_t row = 1; row < content.rows.size(); ++row) {
        const SWatchlistContent::SRow& entry = content.rows[row];
        if (entry.text.empty()) continue;
        if (entry.annotation)
            edit.SetAnnotation(static_cast<int>(row), entry.text);
        else
            edit.PlaceSymbol(static_cast<int>(row), entry.text);
    }
    for (const int row : content.hiddenRows) edit.SetHidden(row, true);
    for (const auto& [row, text] : content.notes) edit.Notes().Set(row, text);
    const SUnreadAlerts unread = edit.Alerts().Load(content.alerts.text);
    if (unread.count > 0 && content.furtherAlerts.empty()) // They are among the unread ones otherwise.
        report.LeftOut(content.alerts.line, fmt::format("alerts that were not understood: {}, the first", unread.count),
                       unread.first);
    for (const auto& [symbol, alert] : content.furtherAlerts) edit.Alerts().RemoveSymbol(symbol);
    for (const auto& [symbol, alert] : content.furtherAlerts)
        if (alert) edit.Alerts().Add(symbol, *alert);
    if (const size_t count = edit.Formats().Read(content.formats.text))
        report.LeftOut(content.formats.line, fmt::format("cell formats that were not understood: {}", count));
    for (const SWatchlistContent::SLook& look : content.looks) ApplyLook(look, edit.Formats());
    edit.SetUnknownLines(content.unknownLines);
}

} // namespace vx
