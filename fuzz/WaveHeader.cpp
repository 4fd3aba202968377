// SPDX-License-Identifier: MIT
// The beginning of a wave file, taken for files of several lengths: what is accepted can be played.

#include "alerts/rules/WaveFile.h"

#include <cstdint>
#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view beginning(reinterpret_cast<const char*>(data), size);
    const auto length = static_cast<int64_t>(size);
    for (const int64_t fileBytes : {length, length + 1000, kMostWaveBytes}) {
        const auto info = ParseWaveInfo(beginning, fileBytes);
        if (!info) continue;
        const bool bits = info->bits == 8 || info->bits == 16 || info->bits == 24 || info->bits == 32;
        const int64_t perSecond = int64_t{info->samplesPerSecond} * info->channels * (info->bits / 8);
        if (!bits || perSecond <= 0 || info->durationMs < 0 || info->durationMs > fileBytes * 1000 / perSecond)
            std::abort();
    }
    return 0;
}
