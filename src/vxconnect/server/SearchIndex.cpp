// SPDX-License-Identifier: MIT
#include "vxconnect/server/SearchIndex.h"

#include "base/Text.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr char kSeparator = '\n'; // No search text holds one.

// No field of the reply may hold a comma.
std::string WithoutCommas(std::string_view text) {
    std::string out(text);
    std::replace(out.begin(), out.end(), ',', ' ');
    return out;
}

} // namespace

void CSearchIndex::Refresh() {
    if (m_version == m_directory.DirectoryVersion()) return;
    m_version = m_directory.DirectoryVersion();
    m_entries.clear();
    m_symbols.clear();
    m_names.clear();
    m_replies.clear();
    const auto next = [&](int market, int type) {
        m_entries.push_back({static_cast<uint32_t>(m_symbols.size()), static_cast<uint32_t>(m_names.size()),
                             static_cast<uint32_t>(m_replies.size()), market, type});
    };
    m_directory.ForEachSymbol([&](const SDirectoryEntry& entry) {
        next(entry.market, entry.type);
        m_symbols += UpperAscii(entry.symbol) += kSeparator;
        m_names += UpperAscii(entry.name) += kSeparator;
        fmt::format_to(std::back_inserter(m_replies), "{},{},{},{},", entry.symbol, entry.market, entry.type,
                       WithoutCommas(entry.name));
        return true;
    });
    next(0, 0);
}

CSearchIndex::SResult CSearchIndex::ResultOf(size_t entry) const {
    const SEntry& found = m_entries[entry];
    const std::string_view reply = std::string_view(m_replies).substr(found.reply);
    return {reply.substr(0, m_entries[entry + 1].reply - found.reply), found.market, found.type, false};
}

void CSearchIndex::BySymbol(std::string_view text, const Visitor& visit) {
    Refresh();
    const std::string wanted = UpperAscii(text);
    for (size_t i = 0; i + 1 < m_entries.size(); ++i) {
        const size_t length = m_entries[i + 1].symbol - m_entries[i].symbol - 1;
        if (length < wanted.size() || m_symbols.compare(m_entries[i].symbol, wanted.size(), wanted) != 0) continue;
        SResult result = ResultOf(i);
        result.exact = length == wanted.size();
        if (!visit(result)) return;
    }
}

void CSearchIndex::ByName(std::string_view text, const Visitor& visit) {
    Refresh();
    const std::string wanted = UpperAscii(text);
    for (size_t at = 0; at < m_names.size();) {
        const void* const hit = memmem(m_names.data() + at, m_names.size() - at, wanted.data(), wanted.size());
        if (!hit) return;
        const auto place = static_cast<size_t>(static_cast<const char*>(hit) - m_names.data());
        const auto after = std::upper_bound(m_entries.begin(), m_entries.end(), place,
                                            [](size_t value, const SEntry& entry) { return value < entry.name; });
        if (!visit(ResultOf(static_cast<size_t>(after - m_entries.begin()) - 1))) return;
        at = after->name;
    }
}

} // namespace vx::sim
