#pragma once

#include "vxconnect/Instrument.h"
#include "vxconnect/UpdateFields.h"

#include <cstddef>
#include <cstdint>

namespace vx::sim {

/// No quote line is longer: letter, selected fields of at most 23 bytes with their commas, CR LF.
constexpr size_t kMaxQuoteLine = 4 + CFieldSelection::kMaxSelected * 24;

/// Writes an update ("Q") or summary ("P") line with its line end.
///
/// Shape   letter and one field per selected name, each followed by a comma; fields outside the mask are empty, the
///         symbol always stands
/// Units   see EShape
/// Errors  none; room for kMaxQuoteLine bytes is the caller's care
/// Returns the end of what was written
char* WriteQuoteLine(char* out, char letter, const CInstrument& instrument, const CFieldMask& fields, uint32_t contents,
                     const CFieldSelection& selection);

} // namespace vx::sim
