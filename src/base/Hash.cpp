// SPDX-License-Identifier: MIT
#include "base/Hash.h"

#include <random>

namespace vx {

uint64_t CSeededHash::Seed() {
    static const uint64_t seed = [] {
        std::random_device random;
        return uint64_t{random()} << 32 | random() | 1;
    }();
    return seed;
}

} // namespace vx
