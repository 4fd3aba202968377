// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/UpdateFields.h"
#include "vxconnect/market/Instrument.h"

#include <cstddef>
#include <cstdint>

namespace vx::sim {

/// No field of a simulated quote is longer.
constexpr size_t kMaxQuoteField = 31;

/// No quote line is longer: letter, selected fields with their commas, CR LF.
constexpr size_t kMaxQuoteLine = 4 + CFieldSelection::kMaxSelected * (kMaxQuoteField + 1);

/// No regional line is longer.
constexpr size_t kMaxRegionLine = 4 + 11 * (kMaxQuoteField + 1);

/// Writes an update ("Q") or summary ("P") line with its line end.
///
/// Shape   letter and one field per selected name, each followed by a comma; fields outside the mask are empty, the
///         symbol always stands
/// Units   see EShape
/// Errors  none; room for kMaxQuoteLine bytes is the caller's care
/// Returns the end of what was written
char* WriteQuoteLine(char* out, char letter, const CInstrument& instrument, const CFieldMask& fields, uint32_t contents,
                     const CFieldSelection& selection);

/// Writes the regional ("R") line of one region, with its line end; a side that the region never had is empty.
///
/// Errors  none; room for kMaxRegionLine bytes is the caller's care
/// Returns the end of what was written
char* WriteRegionLine(char* out, const CInstrument& instrument, size_t region);

} // namespace vx::sim
