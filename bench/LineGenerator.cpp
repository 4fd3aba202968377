// SPDX-License-Identifier: MIT
#include "LineGenerator.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace vx::bench {

namespace {

std::string Price(double value) { return fmt::format("{:.2f}", value); }

// 1 to 5 letters, and now and then the long name of an option.
std::string MakeSymbol(size_t index) {
    std::string name;
    for (size_t i = index + 3; i > 0; i /= 26) name += static_cast<char>('A' + i % 26);
    if (index % 16 == 15) name += fmt::format("2419C{}.5", 50 + index % 100);
    return name;
}

size_t SlotOf(const char* field) {
    size_t slot = 0;
    while (kUpdateFields[slot].name != field) ++slot;
    return slot;
}

} // namespace

CLineGenerator::CLineGenerator(size_t symbols, uint64_t seed) : m_random(seed), m_instruments(symbols) {
    double sum = 0;
    for (size_t i = 0; i < symbols; ++i) {
        m_symbols.push_back(MakeSymbol(i));
        m_cumulated.push_back(sum += 1.0 / static_cast<double>(i + 1));
        m_instruments[i].open = m_instruments[i].last = 5 + m_random.Unit() * 400;
    }
}

const std::string& CLineGenerator::Next() {
    const size_t symbol = PickSymbol();
    SInstrument& instrument = m_instruments[symbol];
    m_microseconds += m_random.Below(400);
    for (std::string& field : m_fields) field.clear();
    m_fields[0] = m_symbols[symbol];
    const uint32_t kind = m_random.Below(10);
    if (kind < 6)
        Quote(instrument);
    else if (kind < 9)
        Trade(instrument);
    else
        Heavy(instrument);
    m_line = "Q,";
    for (size_t i = 0; i < kUpdateFieldCount; ++i) m_line.append(m_fields[i]).append(",");
    return m_line;
}

size_t CLineGenerator::PickSymbol() {
    const double at = m_random.Unit() * m_cumulated.back();
    const auto found = std::lower_bound(m_cumulated.begin(), m_cumulated.end(), at);
    return std::min(static_cast<size_t>(found - m_cumulated.begin()), m_symbols.size() - 1);
}

void CLineGenerator::Put(const char* field, std::string text) { m_fields[SlotOf(field)] = std::move(text); }

std::string CLineGenerator::Clock() {
    const uint64_t seconds = m_microseconds / 1'000'000 % 86400;
    return fmt::format("{:02}:{:02}:{:02}.{:06}", seconds / 3600, seconds / 60 % 60, seconds % 60,
                       m_microseconds % 1'000'000);
}

void CLineGenerator::Quote(SInstrument& i) {
    const bool bid = m_random.OneIn(2);
    const double half = 0.01 * (1 + m_random.Below(3));
    Put(bid ? "Bid" : "Ask", Price(bid ? i.last - half : i.last + half));
    Put(bid ? "Bid Size" : "Ask Size", fmt::format("{}", 100 * (1 + m_random.Below(40))));
    Put(bid ? "Bid Change" : "Ask Change", Price(0.01 * static_cast<double>(m_random.Below(5)) - 0.02));
    Put(bid ? "Bid Time" : "Ask Time", Clock());
    Put(bid ? "Bid Market Center" : "Ask Market Center", fmt::format("{}", m_random.Below(60)));
    Put("Spread", Price(2 * half));
    Put("Message Contents", bid ? "b" : "a");
}

void CLineGenerator::Trade(SInstrument& i) {
    const double before = i.last;
    i.last = std::max(0.01, i.last + 0.01 * (static_cast<double>(m_random.Below(9)) - 4));
    const uint32_t size = 1 + m_random.Below(500);
    i.volume += size;
    ++i.trades;
    const std::string time = Clock();
    const std::string market = fmt::format("{}", m_random.Below(60));
    Put("Change", Price(i.last - i.open));
    Put("Percent Change", fmt::format("{:.6f}", (i.last - i.open) / i.open));
    Put("Change From Open", Price(i.last - i.open));
    Put("Volatility", fmt::format("{:.6f}", std::fabs(i.last - i.open) / i.last));
    Put("Total Volume", fmt::format("{}", i.volume));
    Put("Tick", i.last > before ? "173" : i.last < before ? "175" : "183");
    Put("Market Capitalization", fmt::format("{:.0f}", i.last * 100000));
    Put("Number of Trades Today", fmt::format("{}", i.trades));
    Put("VWAP", fmt::format("{:.4f}", (i.last + i.open) / 2));
    Put("TickID", fmt::format("{}", m_random.Below(1u << 30)));
    Put("Message Contents", "C");
    Put("Most Recent Trade", Price(i.last));
    Put("Most Recent Trade Size", fmt::format("{}", size));
    Put("Most Recent Trade Time", time);
    Put("Most Recent Trade Market Center", market);
    Put("Last", Price(i.last));
    Put("Last Size", fmt::format("{}", size));
    Put("Last Time", time);
    Put("Last Market Center", market);
    Put("Most Recent Trade Aggressor", fmt::format("{}", 1 + m_random.Below(2)));
}

std::string CLineGenerator::AnyOf(EParseRule rule, const SInstrument& i) {
    if (rule == EParseRule::Text) return m_random.OneIn(2) ? "3D" : "R";
    if (rule == EParseRule::Date) return fmt::format("{}/{}/2024", 1 + m_random.Below(12), 1 + m_random.Below(28));
    if (rule == EParseRule::Hex) return fmt::format("{:X}", m_random.Below(256));
    if (rule == EParseRule::Percent) return fmt::format("{:.6f}", m_random.Unit() - 0.5);
    if (rule == EParseRule::Number) return Price(i.last * (0.9 + 0.2 * m_random.Unit()));
    if (rule == EParseRule::Unsigned) return fmt::format("{}", m_random.Below(50'000'000));
    if (rule == EParseRule::Regions) return "N;P;Q;T";
    return fmt::format("{}", m_random.Below(200));
}

void CLineGenerator::Heavy(SInstrument& i) {
    for (size_t slot = 1; slot < kUpdateFieldCount; ++slot)
        if (!m_random.OneIn(10)) m_fields[slot] = AnyOf(kUpdateFields[slot].rule, i);
    Quote(i);
    Trade(i);
    for (const char* time : {"Bid Time", "Ask Time", "Extended Trade Time"}) Put(time, Clock());
    Put("Extended Trade", Price(i.last));
    Put("Extended Trade Market Center", fmt::format("{}", m_random.Below(60)));
    Put("Message Contents", "Cbaohl");
}

std::string GenerateFile(size_t count, size_t symbols, uint64_t seed) {
    CLineGenerator generator(symbols, seed);
    std::string file;
    file.reserve(count * 180);
    for (size_t i = 0; i < count; ++i) file.append(generator.Next()).append("\n");
    return file;
}

} // namespace vx::bench
