// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/QuoteFields.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vx::sim {

/// One name under which a user's own data may hold a value.
struct SInputField {
    std::string_view name;
    size_t slot = 0; ///< A field of the quote line, or kUpdateFieldCount + a slot of the fundamental line.
    EInputKind kind = EInputKind::Text;
};

/// The field of a name, of which only letters, digits and "%" count, small or capital; null for a name that is none.
/// The names are those of the update fields and, where these leave them free, those of the columns, and Ticker, Date
/// and Time; a column's percentage is Percent, an update field's fraction is Number.
const SInputField* FindInputField(std::string_view name);

/// The fields whose names are most like a name, quoted, best first: "\"Bid\", \"Bid Size\"".
std::string NearestFields(std::string_view name);

/// A name as FindInputField compares it.
std::string PlainName(std::string_view name);

/// Finds the field of a name in a user's own data: in the user's map first, else by the name itself.
class CFieldNames {
public:
    struct SFound {
        const SInputField* field = nullptr;
        bool leftOut = false; ///< The user has mapped it to nothing.
    };

    /// Adds the value of --map: "Stock=Symbol,Close=Last"; a name with nothing after "=" is left out.
    ///
    /// Returns what is wrong with it, in one line; empty for nothing
    std::string Add(std::string_view map);
    bool IsEmpty() const { return m_fields.empty(); }
    SFound Find(std::string_view name) const;

private:
    std::map<std::string, const SInputField*> m_fields; // By the plain name; null: left out.
};

} // namespace vx::sim
