#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vx {

/// One last-qualifying trade, with the extended trade as it stood at that moment.
struct sTimeAndSalesRec {
    uint32_t number = 0;         ///< One more than the previous trade's; the first is 1.
    std::array<char, 19> time{}; ///< Zero-terminated, at most 18 characters.
    double price = 0;
    int32_t size = 0;
    double extendedPrice = 0;
    int32_t extendedSize = 0;
};

/// The last trades of one symbol, oldest first, as many as the limit allows.
///
/// Owns    room for all of them from the moment the limit is set: adding a trade does not allocate
class CTimeAndSales {
public:
    explicit CTimeAndSales(size_t limit) : m_trades(limit) {}

    size_t Limit() const { return m_trades.size(); }
    /// Changes the limit; the newest trades stay.
    void SetLimit(size_t limit);

    /// Adds a trade and drops the oldest beyond the limit; the number is set here. A limit of 0 keeps none.
    void Add(sTimeAndSalesRec trade, std::string_view time);

    size_t Size() const { return m_size; }
    /// 0 is the oldest.
    const sTimeAndSalesRec& At(size_t index) const { return m_trades[(m_first + index) % m_trades.size()]; }

private:
    std::vector<sTimeAndSalesRec> m_trades;
    size_t m_first = 0;
    size_t m_size = 0;
};

} // namespace vx
