#pragma once

#include "data/record/CodeNames.h"
#include "data/record/QuoteData.h"
#include "data/record/SymbolRec.h"
#include "data/record/TimeAndSales.h"

#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

class CL1SymbolRec;

/// The quote of one symbol in one region, for the row "symbol--region".
struct sRegQuoteData final : CSymbolRec {
    sRegQuoteData(std::string_view fullName, uint32_t number, const CL1SymbolRec& base);

    const CL1SymbolRec& Base() const override { return base; }
    const sRegQuoteData* AsRegion() const override { return this; }
    bool HasData() const override { return hasData; }
    std::string_view RegionName() const { return std::string_view{Symbol()}.substr(regionOffset); }

    const CL1SymbolRec& base; ///< The feed symbol's record, which owns this one.
    size_t regionOffset;
    CRegionData data;
    bool updated = false; ///< Set by every merge.
    bool hasData = false;
    bool notFound = false; ///< The feed said "Not Found" for its price.
};

/// The latest level-1 values of one symbol: quote, fundamentals, trade history, regional quotes.
///
/// Shape   flat: reading or changing a slot follows no pointer
/// Owns    its regional records and its history
/// Thread  GUI thread only: merges and readers share it, so that no cell is torn
class CL1SymbolRec final : public CSymbolRec {
public:
    using CSymbolRec::CSymbolRec;
    const CL1SymbolRec& Base() const override { return *this; }

    const CQuoteData& Quote() const { return m_quote; }
    const CFundamentalData& Fundamentals() const { return m_fundamentals; }

    /// Set by every merge.
    bool IsUpdated() const { return m_updated; }
    bool HasData() const override { return m_hasData; }

    /// The feed said "Not Found" for one of its prices, and has sent no price since.
    bool IsNotFound() const { return m_notFound; }
    /// "Not Found" then, else empty.
    std::string_view StatusText() const;

    /// The symbol's own number of decimal places; -1 while the feed has not told.
    int DecimalPrecision() const;

    /// The trades kept; null while the limit is 0.
    const CTimeAndSales* History() const { return m_history.get(); }
    /// Keeps the last `limit` trades from now on; 0 drops them all.
    void SetHistoryLimit(size_t limit);

    /// The regional quote of a full name ("IBM--X"), null when nobody asked for it.
    sRegQuoteData* FindRegion(std::string_view fullName) const;

    /// Short name of a listed market; empty while the table is not there. Never loads it.
    std::string_view MarketName(int id) const { return m_names ? m_names->MarketName(id) : std::string_view{}; }

private:
    friend class CL1DataStore;

    bool IsWanted() const { return HasListeners() || !m_regions.empty(); }
    sRegQuoteData* FindRegionOf(std::string_view region) const;
    void NotifyAll();
    /// What the record takes, texts outside of it included.
    size_t Bytes() const;

    CQuoteData m_quote;
    CFundamentalData m_fundamentals;
    bool m_updated = false;
    bool m_hasData = false;
    bool m_notFound = false;
    bool m_watched = false;     ///< The feed took the watch command.
    bool m_regionsAsked = true; ///< The last request for regional quotes, if there was one, went out.
    bool m_stray = false;       ///< Made by a line for a symbol that nobody watches.
    std::list<CL1SymbolRec*>::iterator m_strayPlace;
    size_t m_strayBytes = 0; ///< As the store has counted it.
    const CCodeNames* m_names = nullptr;
    std::unique_ptr<CTimeAndSales> m_history;
    /// By the region's name. Few symbols have more than a handful, but a file can ask for any number of them.
    std::map<std::string, std::unique_ptr<sRegQuoteData>, std::less<>> m_regions;
};
static_assert(sizeof(CL1SymbolRec) <= 2560);

} // namespace vx
