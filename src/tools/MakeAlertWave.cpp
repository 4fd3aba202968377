// SPDX-License-Identifier: MIT
// Run by the build: writes the program's own alert sound, a wave file of two soft bell strokes.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

constexpr int kSamplesPerSecond = 22050;
constexpr double kSeconds = 0.9;

struct SStroke {
    double begins;  ///< Seconds.
    double pitchHz; ///< Of its lowest partial.
};
constexpr SStroke kStrokes[] = {{0.0, 880.0}, {0.18, 1174.7}};

double Sample(double time) {
    constexpr double kTwoPi = 6.283185307179586;
    double out = 0;
    for (const SStroke& stroke : kStrokes) {
        const double since = time - stroke.begins;
        if (since < 0) continue;
        const double attack = std::fmin(1.0, since / 0.004);
        for (int partial = 1; partial <= 3; ++partial)
            out +=
                attack * std::exp(-since * 5 * partial) / partial * std::sin(kTwoPi * stroke.pitchHz * partial * since);
    }
    const double fadeOut = std::fmin(1.0, (kSeconds - time) / 0.02);
    return 0.28 * out * fadeOut;
}

void Append(std::string& out, uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::string Wave() {
    std::string samples;
    constexpr int kCount = static_cast<int>(kSamplesPerSecond * kSeconds);
    for (int i = 0; i < kCount; ++i) {
        const double value = std::fmax(-1.0, std::fmin(1.0, Sample(static_cast<double>(i) / kSamplesPerSecond)));
        Append(samples, static_cast<uint16_t>(static_cast<int16_t>(std::lround(value * 32767))), 2);
    }
    const auto bytes = static_cast<uint32_t>(samples.size());
    std::string out = "RIFF";
    Append(out, 36 + bytes, 4);
    out += "WAVEfmt ";
    Append(out, 16, 4); // Of the format that follows: PCM, one channel, 16 bits.
    Append(out, 1, 2);
    Append(out, 1, 2);
    Append(out, kSamplesPerSecond, 4);
    Append(out, kSamplesPerSecond * 2, 4);
    Append(out, 2, 2);
    Append(out, 16, 2);
    out += "data";
    Append(out, bytes, 4);
    return out + samples;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::FILE* file = std::fopen(argv[1], "wb");
    if (!file) return 1;
    const std::string wave = Wave();
    const bool written = std::fwrite(wave.data(), 1, wave.size(), file) == wave.size();
    return std::fclose(file) == 0 && written ? 0 : 1;
}
