#include "watchlist/WatchlistFile.h"

#include "base/Number.h"
#include "base/Text.h"
#include "watchlist/WatchlistDoc.h"

#include <algorithm>
#include <array>
#include <string>

namespace vx {

namespace {

constexpr int kStoredPerPixel = 10; // Column widths stand in the file as ten times their pixels.
constexpr int kMaxColumnWidth = 2000;

using Doc = CWatchlistDoc;

bool ReadBoolean(std::string_view text) { return text == "TRUE"; }

// The text before the separator; the rest, without it, stays in text. Without a separator everything is taken.
std::string_view TakeUntil(std::string_view& text, char separator) {
    const size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

void ReadColumns(Doc& doc, std::string_view value) {
    std::string list(value);
    if (list.empty() || list.rfind(";Symbol:", 0) == 0) list.insert(0, "Symbol:1000;");
    std::string_view rest = list;
    while (!rest.empty()) {
        std::string_view entry = TakeUntil(rest, ';');
        const std::string_view name = TakeUntil(entry, ':');
        const int width = std::min(ReadInt32(entry) / kStoredPerPixel, kMaxColumnWidth);
        if (name.empty() || width < 1) continue;
        if (name == "RowNumbers")
            doc.Columns().SetWidth(kRowNumberColumn, width);
        else
            doc.Columns().Append(name, width);
    }
}

void ReadSymbols(Doc& doc, std::string_view value) {
    while (!value.empty()) {
        std::string_view entry = TakeUntil(value, ';');
        const std::string_view symbol = TakeUntil(entry, ':');
        while (!entry.empty()) {
            const int row = ReadInt32(TakeUntil(entry, ','));
            if (row != 0 && !symbol.empty()) doc.PlaceSymbol(row, symbol);
        }
    }
}

void ReadAnnotations(Doc& doc, std::string_view value) {
    while (!value.empty()) {
        std::string_view entry = TakeUntil(value, ';');
        const int row = ReadInt32(TakeUntil(entry, ':'));
        if (row > 0 && !entry.empty()) doc.SetAnnotation(row, entry);
    }
}

void ReadWindow(Doc& doc, std::string_view value) {
    SPlacement& placement = doc.Options().placement;
    for (int* edge : {&placement.left, &placement.top, &placement.width, &placement.height})
        *edge = ReadInt32(TakeUntil(value, ';'));
    placement.maximised = ReadBoolean(TakeUntil(value, ';'));
    placement.alwaysOnTop = ReadBoolean(TakeUntil(value, ';'));
}

void ReadSort(Doc& doc, std::string_view value) {
    constexpr int kMaxSeconds = 2000000; // Keeps the milliseconds inside 32 bits.
    SSortRecord& sort = doc.Options().sort;
    sort.column = ReadInt32(TakeUntil(value, ';'));
    sort.ascending = ReadBoolean(TakeUntil(value, ';'));
    sort.autoSort = ReadBoolean(TakeUntil(value, ';'));
    sort.intervalMs = std::clamp(ReadInt32(TakeUntil(value, ';')), 0, kMaxSeconds) * 1000;
}

struct SKey {
    std::string_view name;
    void (*apply)(Doc&, std::string_view value);
};

// One row per line of the file.
constexpr std::array kKeys = {
    SKey{"Window", ReadWindow},
    SKey{"TrailingRows",
         [](Doc& d, std::string_view v) {
             d.Options().trailingRows = std::clamp(ReadInt32(v), 0, SWatchlistOptions::kMaxTrailingRows);
         }},
    SKey{"LockedColumns", [](Doc& d, std::string_view v) { d.Options().lockedColumns = std::max(0, ReadInt32(v)); }},
    SKey{"ShowRowNumbers", [](Doc& d, std::string_view v) { d.Options().showRowNumbers = ReadBoolean(v); }},
    SKey{"ShowToolBar", [](Doc& d, std::string_view v) { d.Options().showToolBar = ReadBoolean(v); }},
    SKey{"UseGridPrecision", [](Doc& d, std::string_view v) { d.Options().useGridPrecision = ReadBoolean(v); }},
    SKey{"UseDefaultAlignment", [](Doc& d, std::string_view v) { d.Options().useDefaultAlignment = ReadBoolean(v); }},
    SKey{"Sort", ReadSort},
    SKey{"Columns", ReadColumns},
    SKey{"Symbols", ReadSymbols},
    SKey{"Annotations", ReadAnnotations},
};

} // namespace

void ReadWatchlistLine(CWatchlistDoc& doc, std::string_view line) {
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos) return;
    for (const SKey& key : kKeys)
        if (key.name == line.substr(0, equals)) key.apply(doc, line.substr(equals + 1));
}

void ReadWatchlistText(CWatchlistDoc& doc, std::string_view text) {
    for (size_t end = text.find("\r\n"); end != std::string_view::npos; end = text.find("\r\n")) {
        ReadWatchlistLine(doc, text.substr(0, end));
        text.remove_prefix(end + 2);
    }
}

} // namespace vx
