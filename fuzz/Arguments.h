// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vx::test {

/// A command line, one argument in each line of the input.
inline std::vector<std::string> Arguments(const uint8_t* data, size_t size) {
    std::vector<std::string> out(1);
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == '\n')
            out.emplace_back();
        else if (data[i] != 0)
            out.back() += static_cast<char>(data[i]);
    }
    if (out.back().empty()) out.pop_back();
    return out;
}

} // namespace vx::test
