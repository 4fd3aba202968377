// SPDX-License-Identifier: MIT
#include "alerts/rules/WaveFile.h"

#include "base/FileSystem.h"

#include <algorithm>
#include <memory>

namespace vx {

namespace {

constexpr size_t kChunkHeader = 8;
constexpr size_t kRiffHeader = 12;
constexpr size_t kFormatBytes = 16;
// Other chunks (titles, cue points) may come before the sound.
constexpr size_t kLookedAtBytes = 64 * 1024;

constexpr uint16_t kPcm = 1;
constexpr uint16_t kFloat = 3;
constexpr uint16_t kExtensible = 0xFFFE;

uint32_t Little(std::string_view bytes, size_t at, size_t count) {
    uint32_t out = 0;
    for (size_t i = 0; i < count; ++i) out |= uint32_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    return out;
}

std::optional<SWaveInfo> ReadFormat(std::string_view chunk) {
    if (chunk.size() < kFormatBytes) return std::nullopt;
    const uint32_t format = Little(chunk, 0, 2);
    SWaveInfo out;
    out.channels = static_cast<uint16_t>(Little(chunk, 2, 2));
    out.samplesPerSecond = Little(chunk, 4, 4);
    const uint32_t frameBytes = Little(chunk, 12, 2);
    out.bits = static_cast<uint16_t>(Little(chunk, 14, 2));
    const bool known = format == kPcm || format == kFloat || format == kExtensible;
    const bool wholeBytes = out.bits == 8 || out.bits == 16 || out.bits == 24 || out.bits == 32;
    const bool sane = out.channels >= 1 && out.channels <= 8 && out.samplesPerSecond >= 1000 &&
                      out.samplesPerSecond <= 384'000 && frameBytes == uint32_t{out.channels} * out.bits / 8;
    if (!known || !wholeBytes || !sane) return std::nullopt;
    return out;
}

} // namespace

std::optional<SWaveInfo> ParseWaveInfo(std::string_view beginning, int64_t fileBytes) {
    if (beginning.size() < kRiffHeader || beginning.substr(0, 4) != "RIFF" || beginning.substr(8, 4) != "WAVE")
        return std::nullopt;
    std::optional<SWaveInfo> out;
    for (size_t at = kRiffHeader; at + kChunkHeader <= beginning.size();) {
        const std::string_view name = beginning.substr(at, 4);
        const uint32_t size = Little(beginning, at + 4, 4);
        at += kChunkHeader;
        if (name == "fmt ") {
            out = ReadFormat(beginning.substr(at, std::min<size_t>(size, beginning.size() - at)));
            if (!out) return std::nullopt;
        } else if (name == "data") {
            const int64_t bytes = std::min<int64_t>(size, fileBytes - static_cast<int64_t>(at));
            if (!out || bytes <= 0) return std::nullopt;
            out->durationMs = bytes * 1000 / (int64_t{out->samplesPerSecond} * out->channels * (out->bits / 8));
            return out;
        }
        at += size_t{size} + size % 2; // Chunks begin at even places.
    }
    return std::nullopt;
}

std::optional<SWaveInfo> ReadWaveInfo(const std::string& path) {
    std::unique_ptr<COpenFile> file;
    SFileStatus status;
    if (Disk().Open(path, EOpen::Read, 0, file) != 0 || file->Status(status) != 0 || status.kind != EFileKind::Regular)
        return std::nullopt;
    if (status.signature.size > kMostWaveBytes) return std::nullopt;
    std::string beginning(kLookedAtBytes, '\0');
    size_t count = 0;
    if (file->Read(0, beginning.data(), beginning.size(), count) != 0 || count == 0) return std::nullopt;
    beginning.resize(count);
    return ParseWaveInfo(beginning, status.signature.size);
}

} // namespace vx
