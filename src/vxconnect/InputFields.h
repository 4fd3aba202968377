#pragma once

#include "vxconnect/UpdateFields.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx::sim {

/// How a value of a user's own data is read; docs/vxconnect.md says it for the user.
enum class EInputKind : uint8_t {
    Symbol,
    Text,
    Integer,
    Number,
    Percent,
    Hex,
    Time,
    Date,
    MonthDay,
    Split,
    Contents,
    Tick
};

/// Slots of a fundamental line, the symbol included.
constexpr size_t kFundamentalSlots = 57;

/// One name under which a user's own data may hold a value.
struct SInputField {
    std::string_view name;
    size_t slot = 0; ///< A field of the quote line, or kFieldCount + a slot of the fundamental line.
    EInputKind kind = EInputKind::Text;
};

/// The field of a name, letter case and blanks around it aside; null for a name that is none. The names are those of
/// the update fields and, where these leave them free, those of the columns; a column's percentage is Percent, an
/// update field's fraction is Number.
const SInputField* FindInputField(std::string_view name);

} // namespace vx::sim
