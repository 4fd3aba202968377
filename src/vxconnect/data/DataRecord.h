// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/data/RowReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx::sim {

/// "1/31/2024" as 20240131, 0 for any other text.
int64_t DayOf(std::string_view text);

/// Texts by slot, of which few are set.
class CSlotTexts {
public:
    /// The text of a slot, empty when it was never set.
    std::string_view Get(size_t slot) const;
    /// Sets a text; whether it is another one than before.
    bool Set(size_t slot, std::string_view text);

private:
    std::vector<std::pair<size_t, std::string>> m_texts; // By slot.
};

/// The quote and the fundamentals of one symbol as texts, from a user's own data or a recording.
class CDataRecord final : public CSecurity {
public:
    explicit CDataRecord(std::string symbol);

    const std::string& Symbol() const override { return m_symbol; }
    /// The text of a slot (as in SInputField), empty when it was never set.
    std::string_view Get(size_t slot) const { return m_texts.Get(slot); }
    std::string_view Get(EField field) const { return Get(static_cast<size_t>(field)); }
    /// The fundamental line with its line end, the symbol as it was asked for.
    std::string FundamentalLine(std::string_view symbol) const;

    /// Whether a row holds a value that differs.
    bool Differs(const SRow& row) const;
    /// Takes values over and tells what changed: the fields that have another value than before, with repeated those
    /// of the row that have not as well. Without repeated, what the row does not say is worked out: what the update is
    /// about, from the fields; the figures that no row has given yet; Decimal Precision from the
    /// price with the most places so far; and Close from the last price of the previous trade date.
    SUpdate Merge(const SRow& row, bool repeated);
    /// Takes a regional line over; of more than 64 regions the later ones are dropped.
    SUpdate MergeRegion(std::string_view region, std::string_view line);

    const CFieldMask& Present() const override { return m_present; }
    uint32_t Contents() const override { return m_contents; }
    void AppendQuote(CSendQueue& out, char letter, std::string_view symbol, const CFieldMask& fields, uint32_t contents,
                     const CFieldSelection& selection) const override;
    size_t RegionCount() const override { return m_regions.size(); }
    void AppendRegion(CSendQueue& out, std::string_view symbol, size_t region) const override;

private:
    bool Put(size_t slot, std::string_view text);
    bool Derive(EField field, std::string_view text, CFieldMask& changed);
    void WorkOut(CFieldMask& changed, std::string_view lastBefore, std::string_view dayBefore);

    const std::string m_symbol;
    CSlotTexts m_texts;
    CFieldMask m_present;
    CFieldMask m_given;  // Those that came with a row; the others present were worked out.
    size_t m_places = 0; // Most decimals of a price so far.
    uint32_t m_contents = 0;
    std::vector<std::pair<std::string, std::string>> m_regions; // Name, newest line with its line end.
};

} // namespace vx::sim
