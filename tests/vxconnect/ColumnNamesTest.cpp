// The names that a user's own data may use, held against the program's columns.

#include "data/catalogue/Catalogue.h"
#include "vxconnect/common/InputFields.h"

#include <gtest/gtest.h>

#include <fmt/format.h>
#include <set>
#include <string>

namespace vx::sim {
namespace {

TEST(InputFields, EveryColumnThatTheFeedFillsHasItsField) {
    // They show the name behind an id, or a part of another field.
    const std::set<std::string_view> others = {"Trade Market Center Name", "Bid Market Center Name",
                                               "Ask Market Center Name", "Split1 Date", "Split2 Date"};
    int columns = 0;
    for (const SFieldEntry& entry : Catalogue()) {
        if (entry.group != EFieldGroup::Level1 && entry.group != EFieldGroup::Fundamental) continue;
        const SInputField* const field = FindInputField(entry.name);
        EXPECT_EQ(field == nullptr, others.count(entry.name) != 0) << entry.name;
        if (!field) continue;
        const size_t slot = entry.slot + (entry.source == ESource::Fundamental ? kUpdateFieldCount : 0);
        EXPECT_EQ(field->slot, slot) << entry.name;
        EXPECT_EQ(FindInputField(fmt::format(" {} ", entry.name)), field);
        ++columns;
    }
    EXPECT_EQ(columns, 75 + 58 - 5);
    for (const char* own : {" ", "Alerts", "Notes", "News", "Latest Headline", "", "No Such"})
        EXPECT_EQ(FindInputField(own), nullptr) << own;
}

} // namespace
} // namespace vx::sim
