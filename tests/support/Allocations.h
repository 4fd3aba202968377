// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vx::test {

/// How often the program has asked for memory since it started. Allocations.cpp must be linked, which replaces the
/// global operator new of the whole test program.
size_t Allocations();

} // namespace vx::test
