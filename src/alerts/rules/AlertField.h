#pragma once

#include "alerts/rules/AlertInfo.h"
#include "data/catalogue/FieldEntry.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vx {

// An alert names its field by the position in the catalogue without the row-number column: catalogue index - 1.

/// The field of news alerts: the News column.
int32_t NewsFieldId();

/// Display name of a field; empty when the catalogue has no such field.
std::string_view AlertFieldName(int32_t fieldId);

/// The field of a display name, case and blanks included; the latest-headline column counts as the news field. Nothing
/// when no column has the name.
std::optional<int32_t> AlertFieldId(std::string_view name);

/// The catalogue entry of a field whose value is a number and can be compared; null for every other field.
const SFieldEntry* JudgedField(int32_t fieldId);

/// Whether an alert can ever fire: on news, or on a field with numbers by a condition that exists.
bool CanFire(const A_INFO& alert);

} // namespace vx
