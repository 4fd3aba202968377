// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeFeed.h"

#include <gtest/gtest.h>

#include <string_view>

namespace vx::test {

/// A feed whose cells are compared with lists: "Bid=9.0000,High=,".
class CCellLists : public CFakeFeed {
protected:
    /// Calls see(column, expected) for each of a list.
    template <typename See> static void ForEach(std::string_view list, See see) {
        for (const std::string_view cell : SplitTerminated(list, ','))
            see(cell.substr(0, cell.find('=')), cell.substr(cell.find('=') + 1));
    }
    void ExpectCells(std::string_view list, int places = 4, std::string_view symbol = "IBM") const {
        ForEach(list, [&](auto column, auto text) { EXPECT_EQ(Cell(symbol, column, places), text) << column; });
    }
};

} // namespace vx::test
