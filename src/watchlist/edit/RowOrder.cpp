#include "watchlist/edit/RowOrder.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vx {

namespace {

// The first bytes of a folded key in one integer that orders as the bytes do, shorter keys first.
uint64_t Prefix(std::string_view folded) {
    uint64_t out = 0;
    for (size_t i = 0; i < 8; ++i) out = out << 8 | (i < folded.size() ? static_cast<unsigned char>(folded[i]) : 0u);
    return out;
}

struct STextKey {
    uint64_t prefix;
    uint32_t index;
};

struct SNumberKey {
    double number;
    uint32_t index;
};

template <typename Key, typename Before>
std::vector<uint32_t> SortedIndices(std::vector<Key>& keys, std::span<const size_t> blockEnds, Before before) {
    const size_t all = keys.size();
    size_t begin = 0;
    for (const size_t end : blockEnds.empty() ? std::span(&all, 1) : blockEnds) {
        std::sort(keys.begin() + static_cast<std::ptrdiff_t>(begin), keys.begin() + static_cast<std::ptrdiff_t>(end),
                  before);
        begin = end;
    }
    std::vector<uint32_t> out(keys.size());
    std::transform(keys.begin(), keys.end(), out.begin(), [](const Key& key) { return key.index; });
    return out;
}

} // namespace

std::vector<uint32_t> OrderByText(const std::vector<std::string_view>& keys, bool ascending,
                                  std::span<const size_t> blockEnds) {
    std::string folded; // All folded keys behind each other: one allocation, and neighbours in memory.
    std::vector<uint32_t> starts(keys.size() + 1);
    for (size_t i = 0; i < keys.size(); ++i) {
        folded += LowerAscii(keys[i]);
        starts[i + 1] = static_cast<uint32_t>(folded.size());
    }
    const auto foldedKey = [&](uint32_t i) {
        return std::string_view(folded).substr(starts[i], starts[i + 1] - starts[i]);
    };
    std::vector<STextKey> order(keys.size());
    for (uint32_t i = 0; i < order.size(); ++i) order[i] = {Prefix(foldedKey(i)), i};
    return SortedIndices(order, blockEnds, [&](const STextKey& a, const STextKey& b) {
        if (a.prefix != b.prefix) return (a.prefix < b.prefix) == ascending;
        if (const int folds = foldedKey(a.index).compare(foldedKey(b.index)); folds != 0)
            return (folds < 0) == ascending;
        if (const int exact = keys[a.index].compare(keys[b.index]); exact != 0) return (exact < 0) == ascending;
        return a.index > b.index;
    });
}

std::vector<uint32_t> OrderByNumber(const std::vector<double>& keys, bool ascending,
                                    std::span<const size_t> blockEnds) {
    std::vector<SNumberKey> order(keys.size());
    for (uint32_t i = 0; i < order.size(); ++i) order[i] = {std::isnan(keys[i]) ? 0.0 : keys[i], i};
    return SortedIndices(order, blockEnds, [&](const SNumberKey& a, const SNumberKey& b) {
        if (a.number != b.number) return (a.number < b.number) == ascending;
        return a.number == 0.0 ? a.index > b.index : a.index < b.index;
    });
}

double SortNumber(std::string_view text) {
    const double number = ReadDouble(text);
    return std::isnan(number) ? 0.0 : number;
}

} // namespace vx
