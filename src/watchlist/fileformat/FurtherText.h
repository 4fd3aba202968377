// SPDX-License-Identifier: MIT
#pragma once

#include "base/Number.h"

#include <fmt/format.h>

#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace vx {

// The value of a further key: entries, each of fields with one blank between them and ended by ";". A field is a number
// or a word of printable ASCII without blanks, ";" and quotes, or any bytes as a quoted text.

/// Puts a value together.
class CFurtherWriter {
public:
    template <typename Number> CFurtherWriter& Add(Number value) {
        BeginField();
        if constexpr (std::is_integral_v<Number>)
            AppendInteger(m_out, value);
        else
            fmt::format_to(std::back_inserter(m_out), "{}", value);
        return *this;
    }
    CFurtherWriter& Quote(std::string_view text);
    void EndEntry();

    std::string Take() { return std::move(m_out); }

private:
    void BeginField();

    std::string m_out;
    bool m_inEntry = false;
};

/// Takes a value apart, entry by entry and field by field.
///
/// Errors  none: a field that is missing reads as an empty one
/// Owns    nothing: the value outlives it
class CFurtherReader {
public:
    explicit CFurtherReader(std::string_view value) : m_value(value) {}

    /// Goes to the next entry; false at the end. What follows the last ";" is no entry, because it was cut off.
    bool Next();
    /// The entry as it was written.
    std::string_view Entry() const { return m_entry; }
    /// What follows the entry.
    std::string_view Remainder() const { return m_value; }

    std::string_view Word();
    int32_t Int();
    double Double();
    /// A quoted text; nothing when the next field is none.
    std::optional<std::string> Text();
    /// Whether the next field is a quoted text.
    bool IsText() const { return m_rest.starts_with('"'); }
    /// Whether all fields of the entry were taken.
    bool IsDone() const { return m_rest.empty(); }

private:
    std::string_view m_value;
    std::string_view m_entry;
    std::string_view m_rest;
};

} // namespace vx
