#pragma once

#include "vxconnect/data/DataRecord.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::sim {

/// "1/31/2024" as 20240131, 0 for any other text.
int64_t DayOf(std::string_view text);

/// The market's time as data tell it: the latest of all trade and quote times so far, so that none of them lies after
/// it. It never goes back within a day. Before data have told a time, it is this computer's.
class CDataClock {
public:
    /// Hears the times of an update. A quote's time belongs to the newest day known.
    void Hear(const CDataRecord& record, const CFieldMask& changed);
    /// Sets it: "20240131 09:30:05" as a recorded time line has it; other texts are passed over.
    void Set(std::string_view text);
    /// Whether data have told a time of day.
    bool HasTime() const { return m_second >= 0; }
    /// "20240131 09:30:05"
    std::string Text() const;

private:
    int64_t m_day = 0; // Packed date, 0: none told.
    int m_second = -1; // Of the day, -1: none told.
};

} // namespace vx::sim
