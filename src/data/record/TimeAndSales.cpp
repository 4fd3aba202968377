#include "data/record/TimeAndSales.h"

#include <algorithm>

namespace vx {

void CTimeAndSales::SetLimit(size_t limit) {
    if (limit == Limit()) return;
    std::vector<sTimeAndSalesRec> kept(limit);
    const size_t size = std::min(limit, m_size);
    for (size_t i = 0; i < size; ++i) kept[i] = At(m_size - size + i);
    m_trades = std::move(kept);
    m_first = 0;
    m_size = size;
}

void CTimeAndSales::Add(sTimeAndSalesRec trade, std::string_view time) {
    if (m_trades.empty()) return;
    trade.number = m_size == 0 ? 1 : At(m_size - 1).number + 1;
    trade.time.fill('\0');
    std::copy_n(time.data(), std::min(time.size(), trade.time.size() - 1), trade.time.data());
    if (m_size == m_trades.size())
        m_first = (m_first + 1) % m_trades.size();
    else
        ++m_size;
    m_trades[(m_first + m_size - 1) % m_trades.size()] = trade;
}

} // namespace vx
