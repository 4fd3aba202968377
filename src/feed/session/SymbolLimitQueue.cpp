// SPDX-License-Identifier: MIT
#include "feed/session/SymbolLimitQueue.h"

#include "feed/socket/FeedLog.h"
#include "feed/socket/Ports.h"

#include <fmt/format.h>

#include <utility>

namespace vx {

void CSymbolLimitQueue::Refused(std::string_view symbol, bool wanted) {
    m_awaiting.Remove(symbol);
    if (m_pending.Count(symbol) < kMostOfOne && (wanted || AdmitStranger(symbol))) m_pending.Append(symbol);
}

bool CSymbolLimitQueue::AdmitStranger(std::string_view symbol) {
    if (m_strangers.find(symbol) != m_strangers.end()) return true;
    if (m_strangers.size() == kMostStrangers || m_strangerBytes + symbol.size() > kMostStrangerBytes) {
        if (!std::exchange(m_strangerDropped, true))
            FeedLogOf(kLevel1Socket)
                .Failed(fmt::format("more than {} symbols that no row holds were refused for the limit, or {} bytes "
                                    "of them; further ones are dropped",
                                    kMostStrangers, kMostStrangerBytes));
        return false;
    }
    m_strangers.emplace(symbol);
    m_strangerBytes += symbol.size();
    return true;
}

void CSymbolLimitQueue::Left(std::string_view symbol) {
    if (m_strangers.empty() || Has(symbol)) return;
    const auto stranger = m_strangers.find(symbol);
    if (stranger == m_strangers.end()) return;
    m_strangerBytes -= stranger->size();
    m_strangers.erase(stranger);
}

void CSymbolLimitQueue::Arrived(std::string_view symbol) {
    if (Awaiting().empty()) return;
    m_awaiting.Remove(symbol);
    Left(symbol);
}

void CSymbolLimitQueue::Forget(std::string_view symbol) {
    const std::string forgotten(symbol); // The text may be an entry's own.
    m_awaiting.Remove(forgotten);
    m_pending.Remove(forgotten);
    Left(forgotten);
}

bool CSymbolLimitQueue::HasRoom(const FeedStats& stats) const {
    return !Pending().empty() && stats.valid && stats.status == "Connected" &&
           stats.symbolLimit > uint64_t{stats.symbolsWatched} + Awaiting().size();
}

uint32_t CSymbolLimitQueue::Pump(const FeedStats& stats, const SendCommand& send) {
    if (!HasRoom(stats)) return 0;
    uint32_t sentWhole = 0;
    for (uint64_t used = uint64_t{stats.symbolsWatched} + Awaiting().size(); used < stats.symbolLimit; ++used) {
        const std::string symbol = Pending().front();
        if (!HasRoom(stats) || !send) {
            if (m_pending.Count(symbol) < kMostOfOne) m_pending.Append(symbol);
            break;
        }
        const std::string command = "w" + symbol + "\n";
        const int sent = send(command);
        if (sent < 1) break;
        if (sent == static_cast<int>(command.size())) {
            m_awaiting.Append(symbol);
            ++sentWhole;
        }
        m_pending.RemoveFirst();
        Left(symbol);
        if (Pending().empty()) break;
    }
    return sentWhole;
}

} // namespace vx
