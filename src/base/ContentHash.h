#pragma once

#include <cstdint>
#include <string_view>

namespace vx {

/// A number that tells one content from another, the same on every machine and in every run: 64-bit FNV-1a.
constexpr uint64_t ContentHash(std::string_view bytes) {
    uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return hash;
}

} // namespace vx
