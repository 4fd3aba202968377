// SPDX-License-Identifier: MIT
#include "data/catalogue/Catalogue.h"
#include "data/catalogue/FieldLayout.h"
#include "data/catalogue/UpdateFields.h"

#include <gmock/gmock.h>

#include <set>

using namespace vx;

namespace {

EParseRule RuleOf(const SFieldEntry& entry) {
    using enum ESource;
    return entry.source == Quote         ? kUpdateLayout[entry.slot].rule
           : entry.source == Fundamental ? kFundamentalLayout[entry.slot].rule
           : entry.source == SplitDate   ? EParseRule::Date
           : entry.source == MarketName  ? EParseRule::Text
                                         : EParseRule::None;
}

EStorage StorageNeededBy(EValueClass valueClass) {
    using enum EValueClass;
    if (valueClass == Date) return EStorage::Date;
    if (valueClass == Text || valueClass == Contents) return EStorage::Text;
    if (valueClass == Unsigned) return EStorage::Unsigned;
    if (valueClass == Integer || valueClass == Aggressor || valueClass == Character) return EStorage::Integer;
    return EStorage::Double;
}

} // namespace

TEST(Catalogue, EveryColumnReadsAFieldThatIsStoredAsItsClassNeeds) {
    for (const SFieldEntry& entry : Catalogue()) {
        if (entry.source == ESource::None || entry.name == "Symbol") continue;
        EXPECT_EQ(StorageOf(RuleOf(entry)), StorageNeededBy(entry.valueClass)) << entry.name;
        if (entry.regionSlot != kNoRegionSlot) {
            const EParseRule regional = kRegionLayout[static_cast<size_t>(entry.regionSlot)].rule;
            EXPECT_TRUE(StorageOf(regional) == StorageNeededBy(entry.valueClass) || KeepsText(regional)) << entry.name;
        }
    }
}

TEST(Catalogue, NamesAreDistinctAndFitTheirRecords) {
    std::set<std::string_view> names;
    for (const SFieldEntry& entry : Catalogue()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
        EXPECT_EQ(entry.description.empty(), entry.group == EFieldGroup::RowNumber) << entry.name;
        EXPECT_EQ(&entry, FindField(entry.name));
    }
}
