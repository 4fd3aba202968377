// SPDX-License-Identifier: MIT
#pragma once

#include "base/Clock.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// The feed's own time, from its time messages.
class CMarketClock {
public:
    /// One time message, "T,20240131 09:30:05", with or without a comma and more after it. A line that holds no
    /// possible time changes nothing; returns whether it held one.
    bool OnTimeMessage(std::string_view line);

    /// The last time heard, nothing before the first.
    const std::optional<SLocalTime>& Time() const { return m_time; }
    /// "01/31/24 09:30:05", empty before the first time.
    std::string Text() const;

private:
    std::optional<SLocalTime> m_time;
};

} // namespace vx
