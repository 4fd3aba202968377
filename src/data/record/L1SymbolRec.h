// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/FieldBlock.h"
#include "data/record/SymbolRec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CL1SymbolRec;

/// A record that a line made for a symbol that nobody watches.
struct SStray {
    CL1SymbolRec* record;
    size_t bytes; ///< As the store has counted it.
};

/// Names for the numeric codes that data lines carry: listed markets and security types.
///
/// Units   ids run from 0 to 255; any other id has an empty name
/// Owns    the texts; a returned name is good until the next load
/// Thread  GUI thread only; a load may block it for up to 2 s
class CCodeNames {
public:
    virtual ~CCodeNames() = default;

    /// Loads the markets' names unless they are there already, and says whether they are there now. A call while they
    /// are missing tries again; the caller spaces its calls, and an implementation may pause longer.
    virtual bool EnsureMarketsLoaded() = 0;
    /// The same for the security types.
    virtual bool EnsureSecurityTypesLoaded() = 0;

    /// Short name of a listed market; empty while the table is not loaded. Never loads.
    virtual std::string_view MarketName(int id) const = 0;
    /// Name of a security type; empty while the table is not loaded. Never loads.
    virtual std::string_view SecurityTypeName(int id) const = 0;
};

/// One last-qualifying trade, with the extended trade as it was at that moment.
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
    /// All empty until the feed has sent some.
    const CFundamentalData& Fundamentals() const { return m_fundamentals ? *m_fundamentals : NoFundamentals(); }

    /// Set by every merge.
    bool IsUpdated() const { return m_updated; }
    bool HasData() const override { return m_hasData; }

    /// The feed said "Not Found" for one of its prices, and has sent no price since.
    bool IsNotFound() const { return m_unknown; }
    /// "Not Found" then, else empty.
    std::string_view StatusText() const;

    /// The symbol's own number of decimal places; -1 until the feed has sent it.
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

    /// By the region's name. Few symbols have more than a handful, but a file can ask for any number of them.
    using CRegions = std::map<std::string, std::unique_ptr<sRegQuoteData>, std::less<>>;

    bool IsWanted() const { return HasListeners() || m_regions; }
    const CRegions& Regions() const { return m_regions ? *m_regions : NoRegions(); }
    sRegQuoteData* FindRegionOf(std::string_view region) const;
    static const CFundamentalData& NoFundamentals();
    static const CRegions& NoRegions();
    void NotifyAll();
    /// What the record takes, texts outside of it included.
    size_t Bytes() const;

    bool m_updated = false;
    bool m_hasData = false;
    bool m_watched = false;     ///< The feed took the watch command.
    bool m_regionsAsked = true; ///< The last request for regional quotes, if there was one, went out.
    bool m_stray = false;       ///< Made by a line for a symbol that nobody watches.
    std::unique_ptr<CTimeAndSales> m_history;
    std::unique_ptr<CFundamentalData> m_fundamentals; ///< Null until the feed has sent some: many never come.
    std::unique_ptr<CRegions> m_regions;              ///< Null while nobody asks for one.
    const CCodeNames* m_names = nullptr;
    std::list<SStray>::iterator m_strayPlace;
    CQuoteData m_quote;
};
static_assert(sizeof(CL1SymbolRec) <= 1000);

} // namespace vx
