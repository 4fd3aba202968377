#pragma once

#include <cstdint>

namespace vx {

/// Which way a value went with its last change; cells are coloured by it.
enum class EDirection : uint8_t {
    NeverSet = 0,
    Down = 1,
    Unchanged = 2, ///< Also the first value, and every value that is not a number.
    Up = 3
};

enum class EDateState : uint8_t {
    Empty,  ///< Never set, or its day is 0.
    Valid,  ///< A day of the calendar.
    Invalid ///< Was given, and is no day of the calendar.
};

/// A calendar day, or a month and day without a year.
struct SDate {
    int16_t year = 0; ///< 1..9999, 0 when the field has no year.
    uint8_t month = 0;
    uint8_t day = 0;
    EDateState state = EDateState::Empty;

    bool operator==(const SDate&) const = default;
};

/// A time of day with the letter that came with it.
struct STimeOfDay {
    uint8_t hour = 0; ///< As given, values above 255 cut to 255; the same for the other two.
    uint8_t minute = 0;
    uint8_t second = 0;
    char letter = 't'; ///< One of "tTbao".

    bool operator==(const STimeOfDay&) const = default;
};

/// What one slot of a record holds; the parse rule of the slot says which member.
union SFieldValue {
    double number = 0;
    int64_t whole; ///< Every integer, signed or not: 32 bits of it are used.
    SDate date;
    STimeOfDay time;
};
static_assert(sizeof(SFieldValue) == 8);

} // namespace vx
