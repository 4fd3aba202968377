// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/ScratchDoc.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vx::test {

/// Reads a text, writes what came of it, and reads that: everything must be there again, and be written as the same
/// bytes.
inline void CheckAgreement(std::string_view text) {
    CScratchDoc first, second;
    first.Open(text);
    const std::string written = first.Written();
    second.Open(written);
    const std::string again = second.Written();
    if (written == again) return;
    std::fprintf(stderr, "%s\n---\n%s\n", written.c_str(), again.c_str());
    std::abort();
}

} // namespace vx::test
