// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistKeys.h"

#include "base/Number.h"
#include "base/Text.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/fileformat/OptionKeys.h"

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr int kStoredPerPixel = 10;    // Column widths are in the file as ten times their pixels.
constexpr size_t kMostNameBytes = 255; // What a cell can show.
constexpr std::string_view kOldInvalidEnd = "\" is an Invalid Symbol.";
constexpr std::string_view kLineEnd = "\r\n";

/// One value and where it goes.
struct SValue {
    std::string_view text;
    size_t line;
    SWatchlistContent& content;
    CReadReport& report;
};

void ReadColumns(const SValue& value) {
    std::string list(value.text);
    if (list.empty() || list.starts_with(";Symbol:")) list.insert(0, "Symbol:1000;");
    value.content.columnsGiven = true;
    CColumnListReader columns(value.content, value.report, value.line);
    std::string_view rest = list;
    while (!rest.empty()) {
        std::string_view entry = TakeUntil(rest, ';');
        const std::string_view name = TakeUntil(entry, ':');
        const int width = std::min(ReadInt32(entry) / kStoredPerPixel, SWatchlistContent::kMostWidth);
        if (name.empty() || width < 1) continue;
        if (name == kRowNumbersEntry)
            value.content.rowNumberWidth = width;
        else
            columns.Add(name, width);
    }
}

void ReadSymbols(const SValue& value) {
    std::string_view rest = value.text;
    while (!rest.empty()) {
        std::string_view rows = TakeUntil(rest, ';');
        const std::string_view symbol = TakeUntil(rows, ':');
        while (!rows.empty()) {
            const int row = ReadInt32(TakeUntil(rows, ','));
            if (row != 0 && !symbol.empty()) ReadSymbolAt(row, symbol, value.line, value.content, value.report);
        }
    }
}

void ReadAnnotations(const SValue& value) {
    std::string_view rest = value.text;
    while (!rest.empty()) {
        const bool ended = rest.find(';') != std::string_view::npos;
        std::string_view entry = TakeUntil(rest, ';');
        const int row = ReadInt32(TakeUntil(entry, ':'));
        if (row <= 0 || entry.empty()) continue;
        const std::string_view symbol = ended ? OldInvalidSymbol(entry) : std::string_view{};
        if (symbol.empty())
            ReadAnnotationAt(row, entry, value.line, value.content, value.report);
        else
            ReadSymbolAt(row, symbol, value.line, value.content, value.report);
    }
}

// A note is on one line with "::" for each line end of its own.
std::string NoteText(std::string_view stored) {
    std::string text;
    for (size_t at = stored.find("::"); at != std::string_view::npos; at = stored.find("::")) {
        text += stored.substr(0, at);
        text += kLineEnd;
        stored.remove_prefix(at + 2);
    }
    text += stored;
    std::erase_if(text, [](char c) { return c == ':' || c == ','; });
    return text;
}

void ReadNotes(const SValue& value) {
    std::string_view rest = value.text;
    while (!rest.empty()) {
        std::string_view entry = TakeUntil(rest, ';');
        const int row = ReadInt32(TakeUntil(entry, ':'));
        if (row <= 0 || entry.empty()) continue;
        std::string text = NoteText(entry);
        if (row > CRowTable::kMaxRow)
            value.report.LeftOut(value.line, "a note's row is too great", entry);
        else if (!text.empty())
            value.content.notes.insert_or_assign(row, std::move(text));
    }
}

void ReadAlerts(const SValue& value) {
    std::string& text = value.content.alerts.text;
    if (!text.empty() && text.back() != ';') text += ';';
    text += value.text;
    value.content.alerts.line = value.line;
}

void ReadFormats(const SValue& value) {
    if (!value.text.empty()) value.content.formats = {std::string(value.text), value.line};
}

struct SKey {
    std::string_view name;
    void (*read)(const SValue&);
};

// The lines of lists; those of options are in OptionKeys.cpp.
constexpr std::array kKeys = {
    SKey{"Columns", ReadColumns}, SKey{"Symbols", ReadSymbols}, SKey{"Annotations", ReadAnnotations},
    SKey{"Alerts", ReadAlerts},   SKey{"Notes", ReadNotes},     SKey{"Formatting", ReadFormats},
};

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

} // namespace

bool ReadKey(std::string_view key, std::string_view value, size_t line, SWatchlistContent& content,
             CReadReport& report) {
    if (ReadOptionKey(key, value, content)) return true;
    const auto* found = std::ranges::find(kKeys, key, &SKey::name);
    if (found == kKeys.end()) return false;
    found->read({value, line, content, report});
    return true;
}

std::string_view TakeUntil(std::string_view& text, char separator) {
    const size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

bool ReadFlag(std::string_view text) { return text == "TRUE"; }

bool IsSymbolText(std::string_view symbol) {
    return !symbol.empty() && symbol.size() <= kMostNameBytes && symbol.front() != ' ' && symbol.back() != ' ' &&
           std::ranges::none_of(symbol, IsControl);
}

void ReadSymbolAt(int row, std::string_view symbol, size_t line, SWatchlistContent& content, CReadReport& report) {
    const std::string_view trimmed = TrimBlanks(symbol);
    if (trimmed.empty()) return;
    if (!IsSymbolText(trimmed))
        report.LeftOut(line, "this is no symbol", trimmed);
    else if (!content.SetRow(row, trimmed, false))
        report.LeftOut(line, "a symbol's row is out of range", trimmed);
}

void ReadAnnotationAt(int row, std::string_view text, size_t line, SWatchlistContent& content, CReadReport& report) {
    if (!content.SetRow(row, text, true)) report.LeftOut(line, "an annotation's row is out of range", text);
}

CColumnListReader::CColumnListReader(SWatchlistContent& content, CReadReport& report, size_t line)
    : m_content(content), m_report(report), m_line(line) {
    for (size_t i = 0; i < content.columns.size(); ++i) m_places.emplace(content.columns[i].name, i);
}

void CColumnListReader::Add(std::string_view name, int width) {
    if (name == " " || name == kRowNumbersEntry) return; // The row numbers; they are always there.
    if (const auto place = m_places.find(name); place != m_places.end()) {
        m_content.columns[place->second].width = width;
        return;
    }
    if (name.size() > kMostNameBytes ||
        m_content.columns.size() >= static_cast<size_t>(SWatchlistContent::kMostColumns))
        return m_report.LeftOut(m_line, "a column is one too many, or its name too long or no name", name);
    m_places.emplace(name, m_content.columns.size());
    m_content.columns.push_back({std::string(name), width});
}

std::string_view OldInvalidSymbol(std::string_view annotation) {
    if (annotation.starts_with('#')) annotation.remove_prefix(1);
    if (!annotation.starts_with('"') || !annotation.ends_with(kOldInvalidEnd)) return {};
    annotation.remove_prefix(1);
    if (annotation.size() < kOldInvalidEnd.size()) return {};
    annotation.remove_suffix(kOldInvalidEnd.size());
    return annotation;
}

} // namespace vx
