#include "support/HostileLines.h"

#include <string_view>

namespace vx::test {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kOddFields[] = {" "sv,
                                           "   "sv,
                                           "+5"sv,
                                           "-5"sv,
                                           "--5"sv,
                                           "+-5"sv,
                                           "- 5"sv,
                                           "."sv,
                                           "-."sv,
                                           "-"sv,
                                           "+"sv,
                                           "1."sv,
                                           ".5"sv,
                                           "-.5"sv,
                                           "1..2"sv,
                                           "1.2.3"sv,
                                           "1e5"sv,
                                           "1E-3"sv,
                                           "1e400"sv,
                                           "-1e400"sv,
                                           "1e-400"sv,
                                           "inf"sv,
                                           "-Infinity"sv,
                                           "nan"sv,
                                           "-nan"sv,
                                           "0x1F"sv,
                                           "0X1.8p3"sv,
                                           "ff"sv,
                                           "0xg"sv,
                                           "-ff"sv,
                                           "1,5"sv,
                                           "1 2"sv,
                                           " 12 "sv,
                                           "\t7"sv,
                                           "7\t"sv,
                                           "-0"sv,
                                           "0"sv,
                                           "-0.0"sv,
                                           "2147483647"sv,
                                           "2147483648"sv,
                                           "-2147483648"sv,
                                           "-2147483649"sv,
                                           "4294967295"sv,
                                           "4294967296"sv,
                                           "99999999999999999999"sv,
                                           "-99999999999999999999"sv,
                                           "123456789012345"sv,
                                           "-123456789012345"sv,
                                           "-123456789012.5"sv,
                                           "-1234567890123.5"sv,
                                           "1234567890123456"sv,
                                           "12345678901234567"sv,
                                           "9007199254740993"sv,
                                           "0.1234567890123456"sv,
                                           "123456789012345.5"sv,
                                           "000000000000000001"sv,
                                           "Not Found"sv,
                                           "nOT fOUND"sv,
                                           " Not Found "sv,
                                           "NotFound"sv,
                                           "Not Found\0"sv,
                                           "173"sv,
                                           "175"sv,
                                           "183"sv,
                                           "174"sv,
                                           "173.9"sv,
                                           "255"sv,
                                           "256"sv,
                                           "-1"sv,
                                           "7"sv,
                                           "1/2/49"sv,
                                           "1/2/50"sv,
                                           "2/29/2023"sv,
                                           "2/29/2024"sv,
                                           "13/1/2024"sv,
                                           "0/0/0"sv,
                                           "1/0/2024"sv,
                                           "1/2"sv,
                                           "2/30"sv,
                                           "1/2/3/4"sv,
                                           "1//2"sv,
                                           "01/02/20240"sv,
                                           "1/2/-5"sv,
                                           " 1/ 2/ 3"sv,
                                           "2 1/2/2024"sv,
                                           "0.5 13/1/2024"sv,
                                           "0.5"sv,
                                           "x 1/2/2024"sv,
                                           "09:30:00b"sv,
                                           "t09:30:00"sv,
                                           "9:3"sv,
                                           "999:1:1o"sv,
                                           "tTbao"sv,
                                           "09b:30:00"sv,
                                           "C"sv,
                                           "Cba"sv,
                                           "SUMMARY"sv,
                                           "N;P;Q"sv,
                                           "\0"sv,
                                           "1\0002"sv,
                                           "\x80\xFF"sv,
                                           "\xE4\x92"sv,
                                           "Some company's rather long name, Inc"sv,
                                           "A text of more than twenty-three bytes"sv,
                                           "1"sv,
                                           "2"sv,
                                           "3"sv};

} // namespace

std::string CHostileLines::Digits(uint32_t most) {
    std::string text;
    for (uint32_t i = m_random.Below(most) + 1; i > 0; --i) text += static_cast<char>('0' + m_random.Below(10));
    return text;
}

std::string CHostileLines::Field() {
    switch (m_random.Below(8)) {
    case 0:
        return "";
    case 1:
        return Digits(20);
    case 2:
        return std::string(m_random.Below(2), '-').append(Digits(9)).append(1, '.').append(Digits(9));
    case 3:
        return std::string(m_random.Below(300), static_cast<char>(m_random.Below(256)));
    default:
        return std::string(kOddFields[m_random.Below(static_cast<uint32_t>(std::size(kOddFields)))]);
    }
}

std::string CHostileLines::Symbol() {
    const std::string& symbol = Symbols()[m_random.Below(static_cast<uint32_t>(Symbols().size()))];
    switch (m_random.Below(40)) {
    case 0:
        return "";
    case 1:
        return " ";
    case 2:
        return " " + symbol + " ";
    case 3:
        return symbol + std::string("\0", 1);
    default:
        return symbol;
    }
}

void CHostileLines::Spoil(std::string& line) {
    switch (m_random.Below(12)) {
    case 0:
        line.resize(m_random.Below(static_cast<uint32_t>(line.size()) + 1));
        break;
    case 1:
        line[m_random.Below(static_cast<uint32_t>(line.size()))] = static_cast<char>(m_random.Below(256));
        break;
    case 2:
        line.insert(m_random.Below(static_cast<uint32_t>(line.size())), 1, ',');
        break;
    case 3:
        line.pop_back();
        break;
    default:
        break;
    }
}

std::string CHostileLines::Next() {
    std::string line;
    if (m_random.OneIn(4)) {
        line = m_generator.Next();
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

} // namespace vx::test
