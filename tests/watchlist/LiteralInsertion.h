// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"

#include <cstdint>
#include <list>
#include <string_view>
#include <vector>

namespace vx::test {

/// The rule of a sort as it reads: each row goes before the first element that says so, else to the end.
template <typename Key, typename GoesBefore>
std::vector<uint32_t> InsertLiterally(const std::vector<Key>& keys, GoesBefore goesBefore) {
    std::list<uint32_t> order;
    for (uint32_t i = 0; i < keys.size(); ++i) {
        auto place = order.begin();
        while (place != order.end() && !goesBefore(keys[i], keys[*place])) ++place;
        order.insert(place, i);
    }
    return {order.begin(), order.end()};
}

inline std::vector<uint32_t> InsertTexts(const std::vector<std::string_view>& keys, bool ascending) {
    return InsertLiterally(keys, [&](std::string_view added, std::string_view there) {
        if (added.empty() && there.empty()) return true;
        const int folds = CompareNoCase(added, there);
        const int exact = added.compare(there);
        if (ascending) return folds < 0 || (folds == 0 && exact <= 0);
        return folds > 0 || (folds == 0 && exact >= 0);
    });
}

inline std::vector<uint32_t> InsertNumbers(const std::vector<double>& keys, bool ascending) {
    return InsertLiterally(keys, [&](double added, double there) {
        if (added == 0.0 && there == 0.0) return true;
        return ascending ? there > added : there < added;
    });
}

} // namespace vx::test
