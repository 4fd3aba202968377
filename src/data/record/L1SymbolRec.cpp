// SPDX-License-Identifier: MIT
#include "data/record/L1SymbolRec.h"

#include "data/record/FieldText.h"
#include "data/record/SymbolKey.h"

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

sRegQuoteData::sRegQuoteData(std::string_view fullName, uint32_t number, const CL1SymbolRec& baseRecord)
    : CSymbolRec(fullName, number), base(baseRecord), regionOffset(FeedSymbol(fullName).size() + kRegionMark.size()) {}

std::string_view CL1SymbolRec::StatusText() const { return m_unknown ? kNotFoundText : std::string_view{}; }

int CL1SymbolRec::DecimalPrecision() const {
    constexpr size_t kSlot = UpdateSlot("Decimal Precision");
    return m_quote.Direction(kSlot) == EDirection::NeverSet ? -1 : m_quote.Integer(kSlot);
}

void CL1SymbolRec::SetHistoryLimit(size_t limit) {
    if (limit == 0)
        m_history.reset();
    else if (m_history)
        m_history->SetLimit(limit);
    else
        m_history = std::make_unique<CTimeAndSales>(limit);
}

sRegQuoteData* CL1SymbolRec::FindRegion(std::string_view fullName) const {
    const size_t offset = FeedSymbol(fullName).size() + kRegionMark.size();
    return offset > fullName.size() ? nullptr : FindRegionOf(fullName.substr(offset));
}

sRegQuoteData* CL1SymbolRec::FindRegionOf(std::string_view region) const {
    const auto found = Regions().find(region);
    return found == Regions().end() ? nullptr : found->second.get();
}

size_t CL1SymbolRec::Bytes() const {
    const size_t fundamentals = m_fundamentals ? sizeof(*m_fundamentals) + m_fundamentals->TextBytes() : 0;
    return sizeof(*this) + Symbol().capacity() + m_quote.TextBytes() + fundamentals;
}

const CFundamentalData& CL1SymbolRec::NoFundamentals() {
    static const CFundamentalData none;
    return none;
}

const CL1SymbolRec::CRegions& CL1SymbolRec::NoRegions() {
    static const CRegions none;
    return none;
}

void CL1SymbolRec::NotifyAll() {
    Notify();
    for (const auto& [name, region] : Regions()) region->Notify();
}

} // namespace vx
