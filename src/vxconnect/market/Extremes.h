#pragma once

#include "vxconnect/common/SessionClock.h"

#include <cstdint>

namespace vx::sim {

/// The highest and the lowest price of a period and the days on which they were set.
///
/// Units   hundred-thousandths of a dollar
struct SExtremes {
    int64_t high = 0;
    int64_t low = 0;
    PackedDate highDate = 0;
    PackedDate lowDate = 0;

    /// Takes in one more price; true when it is a new extreme.
    bool Include(int64_t price, PackedDate date) {
        if (price > high) {
            high = price;
            highDate = date;
            return true;
        }
        if (price < low) {
            low = price;
            lowDate = date;
            return true;
        }
        return false;
    }
};

} // namespace vx::sim
