// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/UpdateFields.h"
#include "support/Random.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace vx::bench {

/// Makes update lines as a busy feed sends them: deltas that carry only what changed, of 60 % quotes (about 8 filled
/// fields), 30 % trades (about 20) and 10 % lines with nearly every field, over symbols of which few make most of the
/// traffic (Zipf). The same seed gives the same lines.
class CLineGenerator {
public:
    CLineGenerator(size_t symbols, uint64_t seed);

    /// One line without a line end; good until the next.
    const std::string& Next();
    const std::vector<std::string>& Symbols() const { return m_symbols; }

private:
    struct SInstrument {
        double last = 0;
        double open = 0;
        uint32_t volume = 0;
        int trades = 0;
    };

    size_t PickSymbol();
    void Quote(SInstrument& i);
    void Trade(SInstrument& i);
    void Heavy(SInstrument& i);
    std::string AnyOf(EParseRule rule, const SInstrument& i);
    void Put(const char* field, std::string text);
    std::string Clock();

    test::CRandom m_random;
    std::vector<std::string> m_symbols;
    std::vector<double> m_cumulated; ///< Zipf weights, summed up.
    std::vector<SInstrument> m_instruments;
    std::array<std::string, 70> m_fields;
    std::string m_line;
    uint64_t m_microseconds = 34'200'000'000; ///< 09:30
};

/// `count` lines, each ended by LF, as one text.
std::string GenerateFile(size_t count, size_t symbols, uint64_t seed);

} // namespace vx::bench
