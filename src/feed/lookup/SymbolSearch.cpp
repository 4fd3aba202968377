// SPDX-License-Identifier: MIT
#include "feed/lookup/SymbolSearch.h"

#include "base/Clock.h"
#include "base/Text.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/Ports.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kEnd = "LSearch,!ENDMSG!";
// Places of the texts in a reply line.
constexpr size_t kSymbol = 2;
constexpr size_t kMarket = 3;
constexpr size_t kSecurityType = 4;
constexpr size_t kDescription = 5;
constexpr size_t kFieldCount = 6;

std::string AsField(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c == ',' || static_cast<unsigned char>(c) < ' ') c = ' ';
    return out;
}

std::string Cut(std::string_view text) { return std::string(text.substr(0, CSearchResults::kMostTextBytes)); }

} // namespace

std::string SymbolSearchRequest(ESearchBy by, std::string_view text, std::string_view marketFilter,
                                std::string_view typeFilter) {
    const std::string filter = !marketFilter.empty() ? "e," + AsField(marketFilter)
                               : !typeFilter.empty() ? "t," + AsField(typeFilter)
                                                     : ",";
    return fmt::format("SBF,{},{},{},LSearch\r\n", by == ESearchBy::Description ? 'd' : 's', AsField(text), filter);
}

void CSearchResults::Clear() {
    m_results.clear();
    m_ended = m_dropped = false;
    ++m_generation;
}

void CSearchResults::Expect() {
    ++m_owed;
    m_heardMs = CClock::Instance().MonotonicMs();
}

int64_t CSearchResults::SilentMs() const { return CClock::Instance().MonotonicMs() - m_heardMs; }

void CSearchResults::OnLine(std::string_view line) {
    m_heardMs = CClock::Instance().MonotonicMs();
    const auto fields = SplitCountingTail(line, ',');
    const bool isEnd = fields.size() < kFieldCount;
    if (isEnd && !ContainsText(line, kEnd)) return;
    if (m_ended && m_owed > 0) Clear();
    if (isEnd) {
        m_owed = std::max(m_owed - 1, 0);
        m_ended = true;
        if (m_results.empty()) m_results.push_back({std::string(kNothingFound), "", "", ""});
    } else if (m_results.size() < kMostResults) {
        m_results.push_back(
            {Cut(fields[kSymbol]), Cut(fields[kDescription]), Cut(fields[kMarket]), Cut(fields[kSecurityType])});
    } else if (!std::exchange(m_dropped, true)) {
        FeedLogOf(kLookupSocket).Failed(fmt::format("a search has more than {} results", kMostResults));
    }
}

} // namespace vx
