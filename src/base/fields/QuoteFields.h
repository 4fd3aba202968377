// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FieldKinds.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx {

/// The fields of a quote line in their order.
enum class EField : uint8_t {
#define ZW_FIELD(id, name, rule, shape, input, columns) id,
#include "base/fields/QuoteFields.def"
#undef ZW_FIELD
};

/// One level-1 column that shows a field.
struct SFieldColumn {
    int place = 0; ///< The columns are ordered by these numbers.
    std::string_view name;
    std::string_view format;
    EValueClass valueClass = EValueClass::Text;
    EColumnShows shows = EColumnShows::Value;
    std::string_view region; ///< The field of a regional line, empty for none.
    int8_t places = kGridPlaces;
    std::string_view description;
};

inline constexpr size_t kMostColumnsOfField = 3;

/// One row of QuoteFields.def.
struct SUpdateField {
    std::string_view name;
    EParseRule rule;
    EShape shape;
    EInputKind input;
    std::array<SFieldColumn, kMostColumnsOfField> columns; ///< After the last one they have no name.
};

/// The rows of QuoteFields.def, indexed by EField.
inline constexpr auto kUpdateFields = std::to_array<SUpdateField>({
#define ZW_COLUMN(place, name, format, valueClass, shows, region, places, description)                                 \
    SFieldColumn{place, name, format, EValueClass::valueClass, EColumnShows::shows, region, places, description},
#define ZW_FIELD(id, name, rule, shape, input, columns)                                                                \
    {name, EParseRule::rule, EShape::shape, EInputKind::input, {columns}},
#include "base/fields/QuoteFields.def"
#undef ZW_FIELD
#undef ZW_COLUMN
});

inline constexpr size_t kUpdateFieldCount = kUpdateFields.size();

constexpr const SUpdateField& FieldInfo(EField field) { return kUpdateFields[static_cast<size_t>(field)]; }

/// Position of an update field by the feed's name, 0 for the symbol; a name that is not in the table does not compile.
consteval size_t UpdateSlot(std::string_view name) {
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        if (kUpdateFields[i].name == name) return i;
    throw "no update field has this name";
}

inline constexpr size_t kLevel1ColumnCount = [] {
    size_t count = 0;
    for (const SUpdateField& field : kUpdateFields)
        for (const SFieldColumn& column : field.columns) count += !column.name.empty();
    return count;
}();

} // namespace vx
