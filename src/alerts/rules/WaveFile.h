// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// What the beginning of a wave file says of its sound.
struct SWaveInfo {
    uint16_t channels = 0;
    uint16_t bits = 0; ///< Of one sample.
    uint32_t samplesPerSecond = 0;
    int64_t durationMs = 0;
};

/// A wave file of more bytes is not played.
inline constexpr int64_t kMostWaveBytes = 64 * 1024 * 1024;

/// Looks whether a path names a wave file that can be played. It never waits: neither for a pipe nor for a device.
///
/// Shape   path: bytes as the system takes them
/// Errors  nothing for what is missing, empty, no regular file, longer than kMostWaveBytes, no wave, or of samples that
///         are not 8, 16, 24 or 32 bits of 1 to 8 channels
/// Thread  any
std::optional<SWaveInfo> ReadWaveInfo(const std::string& path);

/// The same of the bytes of a file, of which the first few hundred are enough. fileBytes: how long the whole file is.
std::optional<SWaveInfo> ParseWaveInfo(std::string_view beginning, int64_t fileBytes);

} // namespace vx
