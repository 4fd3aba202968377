// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "data/catalogue/UpdateFields.h"
#include "support/Random.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace vx::test {

/// A line of some fields: "Last=1.5,Last Size=100" by the feed's names, those of a fundamental line by their columns.
inline std::string DataLine(char kind, std::string_view symbol, std::string_view fields) {
    const auto slotOf = [kind](std::string_view name) -> size_t {
        for (size_t i = 0; i < (kind == 'F' ? kFundamentalColumnCount : kUpdateFieldCount); ++i)
            if ((kind == 'F' ? kFundamentalFields[i].name : kUpdateFields[i].name) == name)
                return kind == 'F' ? FundamentalSlotOfRow(i) : i;
        throw std::invalid_argument(std::string(name));
    };
    std::vector<std::string_view> slots{symbol};
    for (const std::string_view field : SplitCountingTail(fields, ',')) {
        const size_t equals = field.find('='), slot = slotOf(field.substr(0, equals));
        slots.resize(std::max(slots.size(), slot + 1));
        slots[slot] = field.substr(equals + 1);
    }
    return fmt::format("{},{},", kind, fmt::join(slots, ","));
}

/// Makes update lines as a feed sends them: each carries some of the fields, with values after their rules. The same
/// seed gives the same lines.
class CFeedLines {
public:
    CFeedLines(size_t symbols, uint64_t seed) : m_random(seed) {
        for (size_t i = 0; i < symbols; ++i)
            m_symbols.push_back(fmt::format("S{}{}", i, i % 8 == 7 ? "2419C50.5" : ""));
    }

    /// One line without a line end.
    std::string Next() {
        std::string line = "Q," + m_symbols[m_random.Below(static_cast<uint32_t>(m_symbols.size()))];
        const uint32_t sparse = 1 + m_random.Below(6);
        for (size_t slot = 1; slot < kUpdateFieldCount; ++slot)
            line += m_random.OneIn(sparse) ? ',' + Text(kUpdateFields[slot].rule) : ",";
        return line + ',';
    }
    const std::vector<std::string>& Symbols() const { return m_symbols; }

private:
    std::string Text(EParseRule rule) {
        const uint32_t number = m_random.Below(50'000'000);
        if (rule == EParseRule::Text) return number % 3 == 0 ? "Cbaohl" : number % 3 == 1 ? "C" : "ba";
        if (rule == EParseRule::Date) return fmt::format("{}/{}/2024", 1 + number % 12, 1 + number % 28);
        if (rule == EParseRule::Time)
            return fmt::format("{:02}:{:02}:{:02}.{:06}", number % 24, number % 60, number % 59, number % 1'000'000);
        if (rule == EParseRule::Hex) return fmt::format("{:X}", number % 256);
        if (rule == EParseRule::Percent) return fmt::format("{:.6f}", m_random.Unit() - 0.5);
        if (rule == EParseRule::Number || rule == EParseRule::Price) return fmt::format("{:.2f}", number / 1e5);
        if (rule == EParseRule::Regions) return "N;P;Q;T";
        if (rule == EParseRule::Tick) return number % 3 == 0 ? "173" : number % 3 == 1 ? "175" : "183";
        return std::to_string(rule == EParseRule::Unsigned ? number : number % 200);
    }

    CRandom m_random;
    std::vector<std::string> m_symbols;
};

} // namespace vx::test
