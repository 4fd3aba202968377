#include "feed/SymbolLimitQueue.h"

namespace vx {

void CSymbolLimitQueue::Refused(std::string_view symbol) {
    std::erase(m_awaiting, symbol);
    m_pending.emplace_back(symbol);
}

void CSymbolLimitQueue::Arrived(std::string_view symbol) {
    if (!m_awaiting.empty()) std::erase(m_awaiting, symbol);
}

void CSymbolLimitQueue::Forget(std::string_view symbol) {
    std::erase(m_awaiting, symbol);
    std::erase(m_pending, symbol);
}

bool CSymbolLimitQueue::HasRoom(const FeedStats& stats) const {
    return !m_pending.empty() && stats.valid && stats.status == "Connected" &&
           stats.symbolLimit > uint64_t{stats.symbolsWatched} + m_awaiting.size();
}

uint32_t CSymbolLimitQueue::Pump(const FeedStats& stats, const SendCommand& send) {
    if (!HasRoom(stats)) return 0;
    uint32_t sentWhole = 0;
    for (uint64_t used = uint64_t{stats.symbolsWatched} + m_awaiting.size(); used < stats.symbolLimit; ++used) {
        const std::string symbol = m_pending.front();
        if (!HasRoom(stats) || !send) {
            m_pending.push_back(symbol);
            break;
        }
        const std::string command = "w" + symbol + "\n";
        const int sent = send(command);
        if (sent < 1) break;
        if (sent == static_cast<int>(command.size())) {
            m_awaiting.push_back(symbol);
            ++sentWhole;
        }
        m_pending.pop_front();
        if (m_pending.empty()) break;
    }
    return sentWhole;
}

} // namespace vx
