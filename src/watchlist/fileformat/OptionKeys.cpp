// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/OptionKeys.h"

#include "base/Number.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace vx {

namespace {

struct SSource {
    const CWatchlistDoc& doc;
    const SPlacement& placement;
};

struct SOptionKey {
    std::string_view name;
    std::string (*write)(const SSource& source);
    void (*read)(std::string_view value, SWatchlistContent& content);
};

std::string Flag(bool value) { return value ? "TRUE" : "FALSE"; }

template <bool SWatchlistOptions::*kMember> constexpr SOptionKey FlagKey(std::string_view name) {
    return {name, [](const SSource& source) { return Flag(source.doc.Options().*kMember); },
            [](std::string_view value, SWatchlistContent& content) { content.options.*kMember = ReadFlag(value); }};
}

/// A number from 0 to kMost.
template <int SWatchlistOptions::*kMember, int kMost> constexpr SOptionKey NumberKey(std::string_view name) {
    return {name, [](const SSource& source) { return std::to_string(source.doc.Options().*kMember); },
            [](std::string_view value, SWatchlistContent& content) {
                content.options.*kMember = std::clamp(ReadInt32(value), 0, kMost);
            }};
}

/// A setting of the whole application that each watchlist carries along.
template <const SBooleanSetting& kSetting, std::optional<bool> SWatchlistContent::*kMember>
constexpr SOptionKey SettingKey(std::string_view name) {
    return {name, [](const SSource& source) { return Flag(source.doc.Settings().ReadBoolean(kSetting)); },
            [](std::string_view value, SWatchlistContent& content) { content.*kMember = ReadFlag(value); }};
}

std::string WriteWindow(const SSource& source) {
    const SPlacement& at = source.placement;
    return fmt::format("{};{};{};{};{};{}", at.left, at.top, at.width, at.height, Flag(at.maximised),
                       Flag(at.alwaysOnTop));
}

void ReadWindow(std::string_view value, SWatchlistContent& content) {
    SPlacement& placement = content.options.placement;
    for (int* edge : {&placement.left, &placement.top, &placement.width, &placement.height})
        *edge = ReadInt32(TakeUntil(value, ';'));
    placement.maximised = ReadFlag(TakeUntil(value, ';'));
    placement.alwaysOnTop = ReadFlag(TakeUntil(value, ';'));
}

std::string WriteSort(const SSource& source) {
    const SSortRecord& sort = source.doc.Options().sort;
    return fmt::format("{};{};{};{}", sort.column, Flag(sort.ascending), Flag(sort.autoSort), sort.intervalMs / 1000);
}

void ReadSort(std::string_view value, SWatchlistContent& content) {
    constexpr int kMaxSeconds = 2000000; // Keeps the milliseconds inside 32 bits.
    SSortRecord& sort = content.options.sort;
    sort.column = std::clamp(ReadInt32(TakeUntil(value, ';')), SSortRecord::kNoColumn, SWatchlistContent::kMostColumns);
    sort.ascending = ReadFlag(TakeUntil(value, ';'));
    sort.autoSort = ReadFlag(TakeUntil(value, ';'));
    sort.intervalMs = std::clamp(ReadInt32(TakeUntil(value, ';')), 0, kMaxSeconds) * 1000;
}

// In the order in which they are written.
constexpr std::array kOptionKeys = {
    SOptionKey{"Window", WriteWindow, ReadWindow},
    NumberKey<&SWatchlistOptions::trailingRows, SWatchlistOptions::kMaxTrailingRows>("TrailingRows"),
    NumberKey<&SWatchlistOptions::lockedColumns, SWatchlistContent::kMostColumns>("LockedColumns"),
    FlagKey<&SWatchlistOptions::showRowNumbers>("ShowRowNumbers"),
    FlagKey<&SWatchlistOptions::showToolBar>("ShowToolBar"),
    SettingKey<kShowEllipsis, &SWatchlistContent::showEllipsis>("ShowEllipsis"),
    SettingKey<kShowGridLines, &SWatchlistContent::showGridLines>("ShowGridLines"),
    FlagKey<&SWatchlistOptions::useGridPrecision>("UseGridPrecision"),
    FlagKey<&SWatchlistOptions::useDefaultAlignment>("UseDefaultAlignment"),
    SOptionKey{"Sort", WriteSort, ReadSort},
};

} // namespace

void AppendOptionLines(std::string& out, const CWatchlistDoc& doc, const SPlacement& placement) {
    for (const SOptionKey& key : kOptionKeys)
        out.append(key.name).append("=").append(key.write({doc, placement})).append("\r\n");
}

bool ReadOptionKey(std::string_view key, std::string_view value, SWatchlistContent& content) {
    const auto* found = std::ranges::find(kOptionKeys, key, &SOptionKey::name);
    if (found == kOptionKeys.end()) return false;
    found->read(value, content);
    return true;
}

} // namespace vx
