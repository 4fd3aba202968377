#include "feed/SymbolLimitQueue.h"

namespace vx {

void CSymbolLimitQueue::Refused(std::string_view symbol) {
    m_awaiting.Remove(symbol);
    m_pending.Append(symbol);
}

void CSymbolLimitQueue::Arrived(std::string_view symbol) {
    if (!Awaiting().empty()) m_awaiting.Remove(symbol);
}

void CSymbolLimitQueue::Forget(std::string_view symbol) {
    m_awaiting.Remove(symbol);
    m_pending.Remove(symbol);
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
            m_pending.Append(symbol);
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
        if (Pending().empty()) break;
    }
    return sentWhole;
}

} // namespace vx
