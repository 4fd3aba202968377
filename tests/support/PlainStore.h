// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FieldKinds.h"
#include "data/record/L1SymbolRec.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace vx::test {

/// One field of a plain record.
struct SPlainValue {
    int direction = 0;
    double number = 0; ///< Every kind of number; the letter of a time.
    std::string text;
    int year = 0, month = 0, day = 0; ///< Of a date; hour, minute and second of a time.
    bool invalidDate = false;
};

struct SPlainTrade {
    uint32_t number;
    std::string time;
    double price, size, extendedPrice, extendedSize;
};

struct SPlainRecord {
    std::vector<SPlainValue> quote;
    std::vector<SPlainValue> fundamentals;
    std::vector<SPlainValue> splitDates;
    std::map<std::string, SPlainRecord> regions; ///< By region; each uses its quote only.
    std::vector<SPlainTrade> trades;
    size_t tradeLimit = 0;
    bool notFound = false;
};

/// The level-1 store as one would write it without a thought for speed: lines split into strings, records of strings
/// in a hash map, the C library's conversions. The product must agree with it on every line.
class CPlainStore {
public:
    explicit CPlainStore(const CCodeNames* names = nullptr) : m_names(names) {}

    void OnLine(const std::string& line);

    /// The record of a symbol; made when it is not there.
    SPlainRecord& Record(const std::string& symbol);
    void AddRegion(const std::string& symbol, const std::string& region);
    const std::unordered_map<std::string, SPlainRecord>& Records() const { return m_records; }

private:
    using Fields = std::vector<std::string>;

    void OnQuote(const Fields& fields, bool summary);
    void OnFundamental(const Fields& fields);
    void OnRegional(const Fields& fields);
    std::string Market(const std::string& id) const;

    const CCodeNames* m_names;
    std::unordered_map<std::string, SPlainRecord> m_records;
};

} // namespace vx::test
