// SPDX-License-Identifier: MIT
#include "grid/BoardSource.h"

#include <charconv>

namespace vx {

namespace {

constexpr std::array<std::string_view, 30> kSymbols = {"AAPL", "MSFT",  "IBM",   "ORCL", "INTC", "CSCO", "NVDA", "AMD",
                                                       "TXN",  "QCOM",  "JPM",   "BAC",  "WFC",  "GS",   "MS",   "C",
                                                       "XOM",  "CVX",   "COP",   "SLB",  "KO",   "PEP",  "PG",   "WMT",
                                                       "COST", "BRK.B", "GOOGL", "AMZN", "META", "TSLA"};
constexpr std::array<std::string_view, 4> kHeadings = {"Technology", "Banks", "Energy", "Consumer staples"};
constexpr int kGroup = 9; // a heading and eight symbols

// Columns with a shape.
constexpr int kLast = 3;
constexpr int kPercentChange = 5;
constexpr int kVolume = 6;

struct SWriter {
    char* to;
    char* end;

    explicit SWriter(SCell& cell) : to(cell.text), end(cell.text + SCell::kMaxLength) {}
    void Char(char c) { *to++ = c; }
    void Integer(int64_t value) { to = std::to_chars(to, end, value).ptr; }
    void Fraction(int value, int digits) {
        for (int scale = digits; scale > 0; scale /= 10) Char(static_cast<char>('0' + value / scale % 10));
    }
    void Done(SCell& cell) const { cell.length = static_cast<uint16_t>(to - cell.text); }
};

} // namespace

const std::array<CBoardSource::SColumn, CBoardSource::kColumns> CBoardSource::kBoardColumns = {{
    {"Symbol", EKind::Symbol},
    {"Tick Trend", EKind::Trend},
    {"Last", EKind::Price},
    {"Change", EKind::Signed},
    {"% Chg", EKind::Percent},
    {"Volume", EKind::Volume},
    {"Bid", EKind::Price},
    {"B Size", EKind::Size},
    {"Ask", EKind::Price},
    {"A Size", EKind::Size},
    {"Open", EKind::Price},
    {"High", EKind::Price},
    {"Low", EKind::Price},
    {"Close", EKind::Price},
    {"T Time", EKind::Time},
    {"Type", EKind::Text},
}};

CBoardSource::CBoardSource(int rows, bool headings)
    : m_rows(rows), m_headings(headings), m_values(static_cast<size_t>(rows) * kColumns) {
    for (SValue& value : m_values) {
        value.value = static_cast<int32_t>(Random() % 400'000) + 20'000;
        value.direction = static_cast<uint8_t>(Random() % 3);
    }
}

uint32_t CBoardSource::Random() {
    m_random ^= m_random << 13;
    m_random ^= m_random >> 17;
    m_random ^= m_random << 5;
    return m_random;
}

void CBoardSource::Change(int row, int column) {
    SValue& value = m_values[static_cast<size_t>(row - 1) * kColumns + static_cast<size_t>(column - 1)];
    const auto step = static_cast<int32_t>(Random() % 41) - 20;
    value.value = value.value + step < 100 ? 10'000 : value.value + step;
    value.direction = static_cast<uint8_t>(step == 0 ? 0 : step < 0 ? 1 : 2);
}

bool CBoardSource::FillSpan(int row, SCell& cell) const {
    if (!m_headings || (row - 1) % kGroup != 0) return false;
    cell.SetText(kHeadings[static_cast<size_t>((row - 1) / kGroup) % kHeadings.size()]);
    cell.font = m_headingFont;
    return true;
}

void CBoardSource::FillShape(int column, const SValue& value, SCell& cell) const {
    constexpr uint16_t kMiddle = SCellShape::kWhole / 2;
    const auto part = static_cast<uint16_t>(value.value % kMiddle);
    SCellShape& shape = cell.shape;
    switch (column) {
    case kLast:
        shape = {.kind = ECellShape::Range, .role = cell.role, .from = part, .to = kMiddle};
        shape.fineMark = shape.from;
        shape.strongMark = shape.to;
        break;
    case kPercentChange:
        shape = {.kind = ECellShape::Bar, .role = cell.role, .from = kMiddle, .to = kMiddle, .fineMark = kMiddle};
        if (value.direction == 1) shape.from = static_cast<uint16_t>(kMiddle - part);
        if (value.direction == 2) shape.to = static_cast<uint16_t>(kMiddle + part);
        break;
    case kVolume:
        shape = {.kind = ECellShape::Bar, .to = static_cast<uint16_t>(2 * part)};
        break;
    default:
        break;
    }
}

void CBoardSource::FillCell(int row, int column, SCell& cell) const {
    const SValue& value = Value(row, column);
    const EKind kind = kBoardColumns[static_cast<size_t>(column - 1)].kind;
    constexpr std::array kRoles = {ETextRole::Unchanged, ETextRole::Down, ETextRole::Up};
    SWriter out(cell);
    cell.align = EAlign::Right;
    cell.role = kRoles[value.direction];
    if (m_dressed) {
        cell.borders = kRightBorder | kBottomBorder;
        FillShape(column, value, cell);
    }
    switch (kind) {
    case EKind::Symbol:
        cell.SetText(
            kSymbols[static_cast<size_t>(row - 1 - (m_headings ? (row - 1) / kGroup + 1 : 0)) % kSymbols.size()]);
        cell.align = EAlign::Left;
        cell.role = ETextRole::Normal;
        return;
    case EKind::Trend:
        for (int i = 0; i < 6; ++i) out.Char("\xAD\xAF\xB7\xAD\xAF"[(value.value >> i * 2) % 5]);
        cell.tickTrend = true;
        cell.align = EAlign::Center;
        cell.role = ETextRole::Normal;
        break;
    case EKind::Price:
        out.Integer(value.value / 100);
        out.Char('.');
        out.Fraction(value.value % 100 * 100, 1000);
        break;
    case EKind::Signed:
    case EKind::Percent: {
        const int magnitude = value.direction == 0 ? 0 : value.value % 700 + 1;
        out.Char(value.direction == 1 ? '-' : '+');
        out.Integer(magnitude / 100);
        out.Char('.');
        out.Fraction(magnitude % 100, 10);
        if (kind == EKind::Percent) out.Char('%');
        break;
    }
    case EKind::Volume:
        out.Integer(int64_t{value.value} * 137);
        cell.role = ETextRole::Normal;
        break;
    case EKind::Size:
        out.Integer(value.value % 90 * 100 + 100);
        break;
    case EKind::Time:
        out.Fraction(9 + value.value % 7, 10);
        out.Char(':');
        out.Fraction(value.value % 60, 10);
        out.Char(':');
        out.Fraction(value.value / 60 % 60, 10);
        cell.align = EAlign::Center;
        cell.role = ETextRole::Normal;
        break;
    case EKind::Text:
        cell.SetText(value.direction == 0 ? "ASK/BID/TRADE" : "EXTENDED TRADE");
        cell.align = EAlign::Left;
        cell.role = ETextRole::Normal;
        return;
    }
    out.Done(cell);
}

void CBoardSource::FillHeader(int column, SCell& cell) const {
    const SColumn& entry = kBoardColumns[static_cast<size_t>(column - 1)];
    cell.SetText(entry.name);
    const bool text = entry.kind == EKind::Symbol || entry.kind == EKind::Text;
    const bool middle = entry.kind == EKind::Trend || entry.kind == EKind::Time;
    cell.align = text ? EAlign::Left : middle ? EAlign::Center : EAlign::Right;
}

std::string CBoardSource::HeaderTip(int column) const {
    return "Made-up column: " + std::string(kBoardColumns[static_cast<size_t>(column - 1)].name);
}

} // namespace vx
