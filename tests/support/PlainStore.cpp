// SPDX-License-Identifier: MIT
#include "support/PlainStore.h"

#include "data/catalogue/FieldLayout.h"
#include "data/record/SlotText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <strings.h>

namespace vx::test {

namespace {

using Fields = std::vector<std::string>;

std::string Trim(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Every text that a comma ends, from the third character on.
Fields Split(const std::string& line) {
    Fields fields;
    if (line.size() < 3 || line[1] != ',') return fields;
    for (size_t begin = 2, comma; (comma = line.find(',', begin)) != std::string::npos; begin = comma + 1)
        fields.push_back(Trim(line.substr(begin, comma - begin)));
    return fields;
}

double ToInt(const std::string& text) {
    return static_cast<double>(std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 10), INT32_MIN, INT32_MAX));
}

double ToUnsigned(const std::string& text) {
    return static_cast<double>(std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 10), 0, UINT32_MAX));
}

double ToHex(const std::string& text) {
    return static_cast<double>(std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 16), 0, UINT32_MAX));
}

double ToNumber(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

void Compare(SPlainValue& value, double now) {
    if (value.direction == 0 || now == value.number)
        value.direction = 2;
    else
        value.direction = now > value.number ? 3 : now < value.number ? 1 : 2;
    value.number = now;
}

void ToDate(const std::string& text, bool withYear, SPlainValue& value) {
    int parts[3] = {0, 0, 0};
    const char* at = text.c_str();
    for (int i = 0; i < (withYear ? 3 : 2); ++i) {
        char* end = nullptr;
        const long long part = std::strtoll(at, &end, 10);
        if (end == at) break;
        parts[i] = static_cast<int>(std::clamp<long long>(part, INT32_MIN, INT32_MAX));
        if (*end != '/') break;
        at = end + 1;
    }
    int year = withYear ? parts[2] : 2000;
    if (withYear && year < 50)
        year += 2000;
    else if (year < 100)
        year += 1900;
    value.year = value.month = value.day = 0;
    value.invalidDate = false;
    if (parts[1] == 0) return;
    std::tm there{};
    there.tm_year = std::clamp(year, 0, 10000) - 1900, there.tm_mon = parts[0] - 1, there.tm_mday = parts[1];
    const bool sane = year >= 1 && year <= 9999 && parts[0] >= 1 && parts[0] <= 12 && parts[1] >= 1 && parts[1] <= 31;
    const std::tm asked = there;
    if (!sane || timegm(&there) == 0x7FFFFFFFFFFF || there.tm_mday != asked.tm_mday || there.tm_mon != asked.tm_mon) {
        value.invalidDate = true;
        return;
    }
    value.year = withYear ? year : 0, value.month = parts[0], value.day = parts[1];
}

void ToTime(std::string text, SPlainValue& value) {
    const size_t letter = text.find_first_of("tTbao");
    value.number = letter == std::string::npos ? 't' : text[letter];
    if (letter != std::string::npos) text.erase(letter, 1);
    if (text.size() > 32) text.resize(32);
    value.text = text;
    int* const parts[] = {&value.year, &value.month, &value.day};
    value.year = value.month = value.day = 0;
    for (int* part : parts) {
        *part = static_cast<int>(std::min(ToUnsigned(text), 255.0));
        const size_t colon = text.find(':');
        if (colon == std::string::npos) break;
        text.erase(0, colon + 1);
    }
}

void ToTick(const std::string& text, SPlainValue& value) {
    const double code = ToInt(text);
    const char* mark = code == 173 ? "+" : code == 175 ? "-" : code == 183 ? "." : "";
    value.direction = *mark == '+' ? 3 : *mark == '-' ? 1 : *mark == '.' ? 2 : 0;
    value.text = (mark + value.text).substr(0, 10);
}

// Returns 'p' for a price, 'n' for "Not Found", 0 for anything else.
char ToPrice(const std::string& text, SPlainValue& value) {
    if (text.size() == 9 && strcasecmp(text.c_str(), "Not Found") == 0) return 'n';
    Compare(value, ToNumber(text));
    const char* c = text.c_str() + std::strspn(text.c_str(), " \t\n\v\f\r");
    if (*c == '+' || *c == '-') ++c;
    if (*c == '.') ++c;
    return *c >= '0' && *c <= '9' ? 'p' : '\0';
}

// Returns what ToPrice does, 0 for every other rule.
char Parse(EParseRule rule, const std::string& text, SPlainValue& value, SPlainValue* splitDate = nullptr) {
    switch (static_cast<int>(rule)) {
    case 1:
        value.number = ToHex(text), value.direction = 2;
        break;
    case 2:
    case 15:
    case 16:
    case 17:
    case 18:
    case 19:
    case 20:
    case 22:
        Compare(value, ToInt(text));
        break;
    case 3:
        Compare(value, ToUnsigned(text));
        break;
    case 4:
        Compare(value, ToNumber(text));
        break;
    case 5:
        Compare(value, ToNumber(text) * 100);
        break;
    case 6:
    case 21:
        value.text = text.substr(0, CSlotText::kMostSize), value.direction = 2;
        break;
    case 8:
        ToDate(text, true, value), value.direction = 2;
        break;
    case 9:
        ToDate(text, false, value), value.direction = 2;
        break;
    case 10:
        ToTime(text, value), value.direction = 2;
        break;
    case 11: {
        const size_t blank = text.find(' ');
        value.number = ToNumber(text.substr(0, blank)), value.direction = 2;
        ToDate(blank == std::string::npos ? "" : text.substr(blank + 1), true, *splitDate), splitDate->direction = 2;
        break;
    }
    case 12:
        return ToPrice(text, value);
    case 14:
        ToTick(text, value);
        break;
    default:
        break;
    }
    return '\0';
}

size_t Slot(const char* name) {
    size_t slot = 0;
    while (kUpdateFields[slot].name != name) ++slot;
    return slot;
}

bool Carried(const Fields& fields, size_t slot) { return slot < fields.size() && !fields[slot].empty(); }

} // namespace

void CPlainStore::OnLine(const std::string& line) {
    const Fields fields = Split(line);
    if (fields.empty() || fields[0].empty()) return;
    switch (line[0]) {
    case 'Q':
        OnQuote(fields, false);
        break;
    case 'P':
        OnQuote(fields, true);
        break;
    case 'F':
        OnFundamental(fields);
        break;
    case 'R':
        OnRegional(fields);
        break;
    default:
        break;
    }
}

SPlainRecord& CPlainStore::Record(const std::string& symbol) {
    SPlainRecord& record = m_records[symbol];
    if (record.quote.empty()) {
        record.quote.resize(kUpdateFieldCount);
        record.fundamentals.resize(kFundamentalSlotCount);
        record.splitDates.resize(kFundamentalSlotCount);
    }
    return record;
}

void CPlainStore::AddRegion(const std::string& symbol, const std::string& region) {
    Record(symbol).regions[region].quote.resize(kRegionFieldCount);
}

std::string CPlainStore::Market(const std::string& id) const {
    const double number = ToInt(id);
    return m_names && number >= 0 && number < 256 ? std::string(m_names->MarketName(static_cast<int>(number))) : "";
}

void CPlainStore::OnQuote(const Fields& fields, bool summary) {
    SPlainRecord& record = Record(fields[0]);
    for (size_t i = 1; i < fields.size() && i < 70; ++i) {
        if (fields[i].empty()) continue;
        const size_t slot = i < 69 ? i : Slot("Decimal Precision");
        const char word = Parse(kUpdateFields[slot].rule, fields[i], record.quote[slot]);
        if (word != '\0') record.notFound = word == 'n';
    }
    for (const char* name : {"Last Market Center", "Extended Trade Market Center", "Most Recent Trade Market Center"})
        if (Carried(fields, Slot(name))) record.quote[Slot(name)].text = Market(fields[Slot(name)]);

    SPlainValue& contents = record.quote[Slot("Message Contents")];
    if (summary) {
        contents.text = "SUMMARY", contents.direction = 2;
        for (size_t i = 0; i < kUpdateFieldCount; ++i) {
            const int rule = static_cast<int>(kUpdateFields[i].rule);
            if ((rule >= 2 && rule <= 5) || rule == 12)
                if (record.quote[i].direction != 0) record.quote[i].direction = 2;
        }
        return;
    }
    for (const char* name : {"Change", "Change From Open"}) {
        SPlainValue& value = record.quote[Slot(name)];
        if (Carried(fields, Slot(name))) value.direction = value.number > 0 ? 3 : value.number < 0 ? 1 : 2;
    }
    if (record.tradeLimit > 0 && Carried(fields, Slot("Message Contents")) &&
        contents.text.find('C') != std::string::npos) {
        const auto number = [&](const char* name) { return record.quote[Slot(name)].number; };
        record.trades.push_back({record.trades.empty() ? 1 : record.trades.back().number + 1,
                                 record.quote[Slot("Last Time")].text.substr(0, 18), number("Last"),
                                 number("Last Size"), number("Extended Trade"), number("Extended Trade Size")});
        if (record.trades.size() > record.tradeLimit) record.trades.erase(record.trades.begin());
    }
}

void CPlainStore::OnFundamental(const Fields& fields) {
    SPlainRecord& record = Record(fields[0]);
    for (size_t row = 0; row < kFundamentalColumnCount; ++row) {
        const size_t slot = FundamentalSlotOfRow(row);
        if (kFundamentalFields[row].rule != EParseRule::None && Carried(fields, slot))
            Parse(kFundamentalFields[row].rule, fields[slot], record.fundamentals[slot], &record.splitDates[slot]);
    }
    if (!m_names) return;
    constexpr size_t kMarket = FundamentalSlot("Listed Market");
    constexpr size_t kType = FundamentalSlot("Security Type");
    constexpr size_t kSubType = FundamentalSlot("Security SubType");
    const auto set = [&](size_t slot, std::string_view text) {
        record.fundamentals[slot].text = text, record.fundamentals[slot].direction = 2;
    };
    if (Carried(fields, kMarket)) set(FundamentalSlot("Listed Market Name"), Market(fields[kMarket]));
    if (Carried(fields, kType))
        set(FundamentalSlot("Security Type Name"), m_names->SecurityTypeName(static_cast<int>(ToInt(fields[kType]))));
    if (!Carried(fields, kType) && !Carried(fields, kSubType)) return;
    const std::string& type = record.fundamentals[FundamentalSlot("Security Type Name")].text;
    if (record.fundamentals[kSubType].direction == 0 && type.empty()) return;
    const double subType = record.fundamentals[kSubType].number;
    const char* name = "";
    if (strcasestr(type.c_str(), "option"))
        name = subType == 1 ? "Binary Option" : subType == 2 ? "Non-Standard Option" : "";
    else if (strcasestr(type.c_str(), "fund"))
        name = subType == 1 ? "Exchange Traded Fund" : "Fund";
    set(FundamentalSlot("Security SubType Name"), name);
}

void CPlainStore::OnRegional(const Fields& fields) {
    const auto record = m_records.find(fields[0]);
    if (record == m_records.end() || fields.size() < 2) return;
    const auto region = record->second.regions.find(fields[1]);
    if (region == record->second.regions.end()) return;
    for (size_t i = 2; i < fields.size() && i < kRegionFieldCount; ++i) {
        if (fields[i].empty()) continue;
        const char word = Parse(kRegionFields[i].rule, fields[i], region->second.quote[i]);
        if (word != '\0') region->second.notFound = word == 'n';
    }
}

} // namespace vx::test
