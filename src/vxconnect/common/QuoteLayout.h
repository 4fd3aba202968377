#pragma once

#include "vxconnect/common/UpdateFields.h"

#include <cstddef>

namespace vx::sim {

/// Writes letter and fields of a quote line in the order of a selection, each followed by a comma, and the line end.
///
/// Shape   write(out, field) writes one field of the mask and returns the new end; fields outside the mask are empty,
///         the symbol always stands
/// Returns the end of what was written
template <class TOut, class TWrite>
TOut LayOutQuote(TOut out, char letter, const CFieldMask& fields, const CFieldSelection& selection, TWrite&& write) {
    CFieldMask filled = fields;
    filled.Set(EField::Symbol);
    *out++ = letter;
    *out++ = ',';
    if (selection.IsStandard()) {
        size_t commas = 0;
        filled.ForEach([&](EField field) {
            for (; commas < static_cast<size_t>(field); ++commas) *out++ = ',';
            out = write(out, field);
        });
        for (; commas < kFieldCount; ++commas) *out++ = ',';
    } else {
        for (const int16_t field : selection.Order()) {
            if (field >= 0 && filled.Has(static_cast<EField>(field))) out = write(out, static_cast<EField>(field));
            *out++ = ',';
        }
    }
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

} // namespace vx::sim
