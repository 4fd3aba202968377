#pragma once

#include "vxconnect/common/UpdateFields.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::sim {

class CSendQueue;

/// What one event changed.
struct SUpdate {
    CFieldMask changed;
    uint64_t regions = 0;         ///< Bit n: the quote of region number n changed.
    bool newSession = false;      ///< A new day began: everything is to be told again, the fundamentals too.
    bool newFundamentals = false; ///< The fundamentals are to be told again.
    bool newSummary = false;      ///< The summary is to be told again.
};

/// The quote of one symbol, wherever its values come from.
class CSecurity {
public:
    virtual ~CSecurity() = default;

    virtual const std::string& Symbol() const = 0;
    /// Every field that has a value.
    virtual const CFieldMask& Present() const = 0;
    /// What the newest event is about, EContents bits.
    virtual uint32_t Contents() const = 0;
    /// Adds an update ("Q") or summary ("P") line with its line end: the fields of the mask, in the order and with the
    /// names of the selection. The symbol is written as the client asked for it.
    virtual void AppendQuote(CSendQueue& out, char letter, std::string_view symbol, const CFieldMask& fields,
                             uint32_t contents, const CFieldSelection& selection) const = 0;
    /// How many regional quotes there are, at most 64.
    virtual size_t RegionCount() const { return 0; }
    /// Adds the regional ("R") line of a region that has a number below RegionCount(), the symbol as it was asked for.
    virtual void AppendRegion(CSendQueue&, std::string_view /*symbol*/, size_t /*region*/) const {}
};

} // namespace vx::sim
