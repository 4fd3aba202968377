// SPDX-License-Identifier: MIT
#pragma once

#include "support/LineGenerator.h"

#include <string>

namespace vx::test {

/// Makes data lines of all four kinds as no feed should send them: blanks, signs, mixed case, junk, numbers out of
/// range, long texts, too many fields, cut lines, NULs and bytes from 0x80 on; over few symbols, so that values meet
/// their predecessors.
class CHostileLines {
public:
    explicit CHostileLines(uint64_t seed) : m_random(seed), m_generator(kSymbols, seed) {}

    static constexpr size_t kSymbols = 12;

    std::string Next();
    const std::vector<std::string>& Symbols() const { return m_generator.Symbols(); }

private:
    std::string Field();
    std::string Symbol();
    std::string Digits(uint32_t most);
    void Spoil(std::string& line);

    CRandom m_random;
    CLineGenerator m_generator;
};

} // namespace vx::test
