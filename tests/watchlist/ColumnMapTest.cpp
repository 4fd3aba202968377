#include "watchlist/document/ColumnMap.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace vx;
using testing::ElementsAre;

namespace {

std::vector<std::string> NamesOf(const CColumnMap& map) {
    std::vector<std::string> names;
    for (const sColumnInfo& column : map.Columns()) names.push_back(column.name);
    return names;
}

} // namespace

TEST(ColumnMap, ReadsTheDefaultColumns) {
    CColumnMap map;
    map.SetNames(kDefaultColumnList);
    EXPECT_EQ(map.Count(), 1 + 16);
    EXPECT_EQ(map.Names(), kDefaultColumnList);
    EXPECT_EQ(map.At(0).width, 30);
    EXPECT_EQ(map.At(16).width, 100);
    EXPECT_EQ(map.At(2).number, FieldIndex("Tick Trend"));
}

TEST(ColumnMap, KeepsUnknownNamesAndSkipsRepeatedOnes) {
    CColumnMap map;
    map.SetNames("Last;;Mystery;Last;Bid; ");
    EXPECT_THAT(NamesOf(map), ElementsAre(" ", "Last", "Mystery", "Bid"));
    EXPECT_EQ(map.At(2).number, static_cast<int>(kCatalogueSize));
    EXPECT_EQ(map.At(2).Entry(), nullptr);
    EXPECT_EQ(map.NameOf(map.NumberOf("Mystery")), "Mystery");
    EXPECT_EQ(map.NameOf(FieldIndex("Last")), "Last");
    EXPECT_EQ(map.NumberOf("Other"), kNoField);
    EXPECT_EQ(map.NameOf(4711), "");

    map.SetWidth(3, 55);
    map.SetNames("Bid;Ask");
    EXPECT_EQ(map.At(1).width, 55) << "a column that stays keeps its width";
    EXPECT_EQ(map.Append("Bid", 70), 1) << "first place, last width";
    EXPECT_EQ(map.At(1).width, 70);
}

TEST(ColumnMap, ColumnsAreInsertedMovedAndRemovedBehindTheRowNumbers) {
    CColumnMap map;
    map.SetNames("A;B;C");
    EXPECT_TRUE(map.Insert(2, "D"));
    EXPECT_FALSE(map.Insert(1, "C"));
    EXPECT_THAT(NamesOf(map), ElementsAre(" ", "A", "D", "B", "C"));
    map.Move(1, 4), map.Move(3, -7), map.Move(0, 2), map.Move(9, 1);
    EXPECT_THAT(NamesOf(map), ElementsAre(" ", "C", "D", "B", "A"));
    map.Remove(0), map.Remove(2), map.Remove(99);
    EXPECT_THAT(NamesOf(map), ElementsAre(" ", "C", "B", "A"));
    EXPECT_EQ(map.PositionOf("A"), 3);
    map.Clear();
    EXPECT_EQ(map.Count(), 1);
    EXPECT_EQ(map.NumberOf("A"), kNoField);
}
