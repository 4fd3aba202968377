#include "feed/LineScan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace vx;

namespace {

std::vector<std::pair<const char*, LineScanner>> Scanners() {
    std::vector<std::pair<const char*, LineScanner>> scanners{{"in use", FindLineByte}};
#if defined(__x86_64__)
    scanners.emplace_back("SSE2", FindLineByteSse2);
    if (HasAvx2()) scanners.emplace_back("AVX2", FindLineByteAvx2);
#endif
    return scanners;
}

} // namespace

TEST(LineScan, EveryScannerStopsAtExactlyTheThreeBytes) {
    for (const auto& [name, scan] : Scanners())
        for (int byte = 0; byte < 256; ++byte) {
            std::string text(100, 'x');
            text[37] = static_cast<char>(byte);
            text[60] = '\n';
            const bool stops = byte == 0 || byte == '\r' || byte == '\n';
            EXPECT_EQ(scan(text.data()) - text.data(), stops ? 37 : 60) << name << " byte " << byte;
        }
}

TEST(LineScan, EveryScannerFindsWhatTheByteLoopFinds) {
    std::mt19937 random(7);
    std::string text(4096 + kLineScanSlack, 'x');
    for (size_t i = 0; i < 4096; ++i) {
        const uint32_t roll = random();
        text[i] = roll % 50 == 0 ? "\n\r"[roll / 50 % 2] : static_cast<char>(roll >> 8);
    }
    text[4095] = '\0';
    for (const auto& [name, scan] : Scanners())
        for (size_t start = 0; start < 4096; ++start)
            ASSERT_EQ(scan(text.data() + start), FindLineByteScalar(text.data() + start)) << name << " from " << start;
}
