// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeys.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/FurtherKeyTable.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

struct SFurtherKey {
    std::string_view name; ///< Without the prefix.
    std::string (*write)(const SFurtherSource& source);
    void (*read)(const SFurtherValue& value);
};

/// An option that is off unless the key says "1;".
template <bool SWatchlistOptions::*kMember> constexpr SFurtherKey FlagKey(std::string_view name) {
    return {name, [](const SFurtherSource& source) { return std::string(source.doc.Options().*kMember ? "1;" : ""); },
            [](const SFurtherValue& value) {
                value.ForEachEntry(1, [&](CFurtherReader& entry) {
                    if (entry.Int() != 1 || !entry.IsDone()) return false;
                    return value.content.options.*kMember = true;
                });
            }};
}

// In the order in which they are written, and applied. A key whose value gets another form gets another name: what an
// older program does not know it keeps as it is.
constexpr std::array kFurtherKeys = {
    SFurtherKey{"Columns", WriteFurtherColumns, ReadFurtherColumns},
    SFurtherKey{"Rows", WriteFurtherRows, ReadFurtherRows},
    SFurtherKey{"Notes", WriteFurtherNotes, ReadFurtherNotes},
    SFurtherKey{"Alerts", WriteFurtherAlerts, ReadFurtherAlerts},
    SFurtherKey{"Looks", WriteFurtherLooks, ReadFurtherLooks},
    SFurtherKey{"ColumnLooks", WriteColumnLooks, ReadColumnLooks},
    SFurtherKey{"HiddenRows", WriteHiddenRows, ReadHiddenRows},
    FlagKey<&SWatchlistOptions::sortAcrossHeadings>("SortAcrossHeadings"),
    SFurtherKey{"Export", WriteFurtherExport, ReadFurtherExport},
    SFurtherKey{"Scale", WriteScale, ReadScale},
};

void AppendLines(std::string& text, std::string_view name, std::string_view value) {
    const size_t room = kMostFurtherBytes - kFurtherPrefix.size() - name.size() - 1;
    for (; !value.empty(); value.remove_prefix(std::min(room, value.size()))) {
        text += kFurtherPrefix;
        text += name;
        text += '=';
        text += value.substr(0, room);
        text += kLineEnd;
    }
}

// Only what is needed: reading a long list takes many times as long as writing it.
SWatchlistContent ReadBack(std::string_view text, const SCarried& carried) {
    const std::array<std::pair<std::string_view, bool>, 5> keys = {{{"Columns", true},
                                                                    {"Symbols", !carried.rows},
                                                                    {"Annotations", !carried.rows},
                                                                    {"Alerts", !carried.alerts},
                                                                    {"Notes", !carried.notes}}};
    SWatchlistContent content;
    CReadReport report;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find(kLineEnd));
        text.remove_prefix(line.size() + kLineEnd.size());
        const size_t equals = line.find('=');
        const std::pair needed(line.substr(0, equals), true);
        if (std::ranges::find(keys, needed) != keys.end())
            ReadKey(needed.first, line.substr(equals + 1), 0, content, report);
    }
    return content;
}

} // namespace

void SFurtherValue::LeftOut(std::string_view entry) const {
    report.LeftOut(line, fmt::format("this part of {}{} is not understood", kFurtherPrefix, key), entry);
}

void AppendFurtherKeys(std::string& text, const CWatchlistDoc& doc, const SCarried& carried) {
    const SWatchlistContent fixed = ReadBack(text, carried);
    const SFurtherSource source{doc, carried, fixed};
    for (const SFurtherKey& key : kFurtherKeys) AppendLines(text, key.name, key.write(source));
    for (const std::string& line : doc.UnknownLines()) {
        text += line;
        text += kLineEnd;
    }
}

CFurtherKeys::CFurtherKeys() : m_values(kFurtherKeys.size()) {}

bool CFurtherKeys::TakeLine(std::string_view line, std::string_view key, std::string_view value, size_t number) {
    if (!key.starts_with(kFurtherPrefix)) return false;
    key.remove_prefix(kFurtherPrefix.size());
    const auto* found = std::ranges::find(kFurtherKeys, key, &SFurtherKey::name);
    if (found == kFurtherKeys.end()) {
        m_unknown.emplace_back(line);
        return true;
    }
    SWatchlistContent::SRecords& collected = m_values[static_cast<size_t>(found - kFurtherKeys.begin())];
    collected.text += value;
    collected.line = number;
    return true;
}

void CFurtherKeys::Apply(SWatchlistContent& content, CReadReport& report) {
    for (size_t i = 0; i < kFurtherKeys.size(); ++i)
        if (const auto& [text, line] = m_values[i]; !text.empty())
            kFurtherKeys[i].read({kFurtherKeys[i].name, text, line, content, report});
    content.unknownLines = std::move(m_unknown);
    m_values.assign(kFurtherKeys.size(), {});
    m_unknown.clear();
}

// "formulas tabs;": the choices of the last export that the dialog does not begin with by itself.

namespace {

struct SChoice {
    std::string_view word;
    bool SExportOptions::*option;
    bool value;
};

constexpr std::array kChoices = {
    SChoice{"formulas", &SExportOptions::linkFormulas, true}, SChoice{"tabs", &SExportOptions::commas, false},
    SChoice{"headless", &SExportOptions::columnHeaders, false}, SChoice{"append", &SExportOptions::append, true},
    SChoice{"utf8", &SExportOptions::utf8, true}};

} // namespace

std::string WriteFurtherExport(const SFurtherSource& source) {
    const SExportOptions& options = source.doc.Options().exporting;
    if (options == SExportOptions{}) return {};
    CFurtherWriter out;
    for (const SChoice& choice : kChoices)
        if (options.*choice.option == choice.value) out.Add(choice.word);
    out.EndEntry();
    return out.Take();
}

void ReadFurtherExport(const SFurtherValue& value) {
    value.ForEachEntry(1, [&](CFurtherReader& entry) {
        SExportOptions options;
        while (!entry.IsDone()) {
            const auto* choice = std::ranges::find(kChoices, entry.Word(), &SChoice::word);
            if (choice == kChoices.end()) return false;
            options.*choice->option = choice->value;
        }
        value.content.options.exporting = options;
        return true;
    });
}

// "150 compact;": the zoom in percent and the density of the rows.

namespace {

constexpr std::array<std::string_view, 3> kDensities = {"compact", "normal", "comfortable"}; ///< By EDensity.

} // namespace

std::string WriteScale(const SFurtherSource& source) {
    const SScale& scale = source.doc.Options().scale;
    if (scale == SScale{}) return {};
    CFurtherWriter out;
    out.Add(scale.zoom).Add(kDensities[static_cast<size_t>(scale.density)]).EndEntry();
    return out.Take();
}

void ReadScale(const SFurtherValue& value) {
    value.ForEachEntry(1, [&](CFurtherReader& entry) {
        const int zoom = entry.Int();
        const auto* density = std::ranges::find(kDensities, entry.Word());
        if (zoom < SScale::kLeastZoom || zoom > SScale::kMostZoom || density == kDensities.end() || !entry.IsDone())
            return false;
        value.content.options.scale = {zoom, static_cast<EDensity>(density - kDensities.begin())};
        return true;
    });
}

} // namespace vx
