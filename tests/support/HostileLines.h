// SPDX-License-Identifier: MIT
#pragma once

#include "support/FeedLines.h"

#include <string_view>

namespace vx::test {

using namespace std::string_view_literals;

// Parted by bars.
inline constexpr std::string_view kOddFields =
    " |   |+5|-5|--5|+-5|- 5|.|-.|-|+|1.|.5|-.5|1..2|1.2.3|1e5|1E-3|1e400|-1e400|1e-400|inf|-Infinity|nan|-nan|"
    "0x1F|0X1.8p3|ff|0xg|-ff|1,5|1 2| 12 |\t7|7\t|-0|0|-0.0|2147483647|2147483648|-2147483648|-2147483649|"
    "4294967295|4294967296|99999999999999999999|-99999999999999999999|123456789012345|-123456789012345|"
    "-123456789012.5|-1234567890123.5|1234567890123456|12345678901234567|9007199254740993|0.1234567890123456|"
    "123456789012345.5|000000000000000001|Not Found|nOT fOUND| Not Found |NotFound|Not Found\0|173|175|183|174|"
    "173.9|255|256|-1|7|1/2/49|1/2/50|2/29/2023|2/29/2024|13/1/2024|0/0/0|1/0/2024|1/2|2/30|1/2/3/4|1//2|"
    "01/02/20240|1/2/-5| 1/ 2/ 3|2 1/2/2024|0.5 13/1/2024|0.5|x 1/2/2024|09:30:00b|t09:30:00|9:3|999:1:1o|"
    "tTbao|09b:30:00|C|Cba|SUMMARY|N;P;Q|\0|1\0002|\x80\xFF|\xE4\x92|Some company's rather long name, Inc|"
    "A text of more than twenty-three bytes|1|2|3"sv;

/// Makes data lines of all four kinds as no feed should send them: blanks, signs, mixed case, junk, numbers out of
/// range, long texts, too many fields, cut lines, NULs and bytes from 0x80 on; over few symbols, so that values meet
/// their predecessors.
class CHostileLines {
public:
    explicit CHostileLines(uint64_t seed) : m_random(seed), m_feed(kSymbols, seed) {}

    static constexpr size_t kSymbols = 12;

    std::string Next() {
        std::string line;
        if (m_random.OneIn(4)) {
            line = m_feed.Next();
            if (m_random.OneIn(8)) line[0] = 'P';
        } else {
            constexpr char kKinds[] = {'Q', 'Q', 'Q', 'P', 'F', 'F', 'R', 'n'};
            line.append(1, kKinds[m_random.Below(sizeof(kKinds))]).append(1, ',').append(Symbol()).append(1, ',');
            if (line[0] == 'R') line.append(1, m_random.OneIn(2) ? 'X' : 'Y').append(1, ',');
            const uint32_t count = m_random.OneIn(8) ? m_random.Below(200) : m_random.Below(75);
            const uint32_t sparse = 1 + m_random.Below(4);
            for (uint32_t i = 0; i < count; ++i) {
                if (m_random.OneIn(sparse)) line += Field();
                line += ',';
            }
        }
        Spoil(line);
        return line;
    }
    const std::vector<std::string>& Symbols() const { return m_feed.Symbols(); }

private:
    std::string Field() {
        static const std::vector<std::string_view> kOdd = SplitCountingTail(kOddFields, '|');
        const uint32_t kind = m_random.Below(8);
        if (kind == 0) return "";
        if (kind == 1) return Digits(20);
        if (kind == 2) return std::string(m_random.Below(2), '-').append(Digits(9)).append(1, '.').append(Digits(9));
        if (kind == 3) return std::string(m_random.Below(300), static_cast<char>(m_random.Below(256)));
        return std::string(kOdd[m_random.Below(static_cast<uint32_t>(kOdd.size()))]);
    }
    std::string Symbol() {
        const std::string& symbol = Symbols()[m_random.Below(static_cast<uint32_t>(Symbols().size()))];
        const std::string odd[] = {"", " ", " " + symbol + " ", symbol + '\0'};
        const uint32_t kind = m_random.Below(40);
        return kind < std::size(odd) ? odd[kind] : symbol;
    }
    std::string Digits(uint32_t most) {
        std::string text;
        for (uint32_t i = m_random.Below(most) + 1; i > 0; --i) text += static_cast<char>('0' + m_random.Below(10));
        return text;
    }
    void Spoil(std::string& line) {
        const uint32_t kind = m_random.Below(12), at = m_random.Below(static_cast<uint32_t>(line.size()));
        if (kind == 0) line.resize(at);
        if (kind == 1) line[at] = static_cast<char>(m_random.Below(256));
        if (kind == 2) line.insert(at, 1, ',');
        if (kind == 3) line.pop_back();
    }

    CRandom m_random;
    CFeedLines m_feed;
};

} // namespace vx::test
