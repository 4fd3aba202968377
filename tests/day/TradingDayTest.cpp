// SPDX-License-Identifier: MIT
// Simulated trading days: each is made of a seed and lived through by the real program and by a plain list.

#include "day/TradingDay.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace vx::test;

namespace {

/// More of them are lived through with the environment variable ZW_DAYS, from the seed ZW_FIRST_DAY on.
constexpr int kDays = 30;
constexpr int kSteps = 300;

int FromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

const int kFirst = FromEnvironment("ZW_FIRST_DAY", 1);

class TradingDay : public testing::TestWithParam<int> {};

} // namespace

TEST_P(TradingDay, RealAndPlainListAgreeAfterEveryStep) {
    const Day day = MakeDay(static_cast<uint64_t>(GetParam()), kSteps);
    const std::string fault = LiveThrough(day);
    ASSERT_TRUE(fault.empty()) << fault << "\nshortest:\n" << Shortest(day);
}

INSTANTIATE_TEST_SUITE_P(Seeds, TradingDay, testing::Range(kFirst, kFirst + FromEnvironment("ZW_DAYS", kDays)));
