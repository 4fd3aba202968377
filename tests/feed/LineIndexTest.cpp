// SPDX-License-Identifier: MIT
#include "feed/socket/LineIndex.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

using namespace vx;
using namespace std::string_literals;

namespace {

using Found = std::pair<std::vector<uint16_t>, bool>;

Found Index(LineIndexer indexer, std::string block) {
    const size_t size = block.size();
    block += std::string(kLineSlack, "\n\0"[size % 2]); // What stands behind the block must not count.
    std::vector<uint16_t> ends(kLineBlock / 2 + 2);
    const SLineEnds found = indexer(block.data(), size, ends.data());
    ends.resize(found.count);
    return {ends, found.hasNul};
}

} // namespace

TEST(LineIndex, EveryIndexerFindsTheFirstOfEachRun) {
    EXPECT_EQ(Index(IndexLineEndsScalar, "\nab\r\n\rc\n"), (Found{{0, 3, 7}, false}));
    EXPECT_EQ(Index(IndexLineEndsScalar, "ab\0"s), (Found{{}, true}));

    std::vector<std::pair<const char*, LineIndexer>> indexers{{"in use", IndexLineEnds}};
#if defined(__x86_64__)
    indexers.emplace_back("SSE2", IndexLineEndsSse2);
    if (HasAvx2()) indexers.emplace_back("AVX2", IndexLineEndsAvx2);
#endif
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string block(round % 10 == 0 ? kLineBlock : 1 + random() % 300, 'x');
        const uint32_t rarity = 1u << random() % 8;
        for (char& c : block) {
            c = static_cast<char>(1 + random() % 255);
            if (random() % rarity == 0) c = "\r\n\r\n\n\0y"[random() % 7];
        }
        const Found expected = Index(IndexLineEndsScalar, block);
        for (const auto& [name, indexer] : indexers)
            ASSERT_EQ(Index(indexer, block), expected) << name << ' ' << testing::PrintToString(block);
    }
}
