// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace vx {

/// A broken-down local wall-clock time.
struct SLocalTime {
    int year = 0;   ///< For example 2024.
    int month = 0;  ///< 1..12
    int day = 0;    ///< 1..31
    int hour = 0;   ///< 0..23
    int minute = 0; ///< 0..59
    int second = 0; ///< 0..60
    int millisecond = 0;
};

/// Where the program takes the time from, and how it waits; tests replace it by a clock of their own.
///
/// Thread  any for the readers; SleepMs blocks the calling thread
class CClock {
public:
    virtual ~CClock() = default;

    virtual SLocalTime Now() const = 0;
    /// Milliseconds of a clock that never goes back; only differences mean something.
    virtual int64_t MonotonicMs() const = 0;
    virtual void SleepMs(int milliseconds) = 0;

    /// The clock in use: the system's until SetInstance names another.
    static CClock& Instance();
    /// Owns    nothing: the caller keeps the clock alive until it puts null (the system's clock) back
    static void SetInstance(CClock* clock);
};

/// Milliseconds since the system started this process, the loading of its libraries included.
///
/// Units   as precise as the system's clock tick, usually 10 ms
/// Errors  nothing where the system does not tell
std::optional<int64_t> ProcessAgeMs();

} // namespace vx
