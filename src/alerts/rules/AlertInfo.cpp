// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertInfo.h"

#include "data/catalogue/Catalogue.h"

#include <array>

namespace vx {

namespace {

struct SCondition {
    std::string_view words;
    std::string_view shortForm;
};

// Index is the code.
constexpr std::array<SCondition, 5> kConditions{{{"equal to", "="},
                                                 {"greater than", ">"},
                                                 {"greater than or equal to", ">="},
                                                 {"less than", "<"},
                                                 {"less than or equal to", "<="}}};

} // namespace

std::string_view ConditionWords(uint32_t condition) {
    return condition < kConditions.size() ? kConditions[condition].words : std::string_view{};
}

std::string_view ConditionShortForm(uint32_t condition) {
    return kConditions[condition < kConditions.size() ? condition : 0].shortForm;
}

uint32_t ReadCondition(std::string_view text) {
    for (uint32_t code = 0; code < kConditions.size(); ++code)
        if (text == kConditions[code].words || text == kConditions[code].shortForm) return code;
    return 0;
}

namespace {

constexpr std::string_view kNews = "News";
constexpr std::string_view kLatestHeadline = "Latest Headline";

const SFieldEntry* EntryOf(int32_t fieldId) {
    const auto index = static_cast<int64_t>(fieldId) + 1;
    if (index < 0 || index >= static_cast<int64_t>(kCatalogueSize)) return nullptr;
    return &Catalogue()[static_cast<size_t>(index)];
}

} // namespace

int32_t NewsFieldId() {
    static const int32_t id = FieldIndex(kNews) - 1;
    return id;
}

std::string_view AlertFieldName(int32_t fieldId) {
    const SFieldEntry* entry = EntryOf(fieldId);
    return entry ? entry->name : std::string_view{};
}

std::optional<int32_t> AlertFieldId(std::string_view name) {
    if (name == kLatestHeadline) return NewsFieldId();
    const int index = FieldIndex(name);
    if (index == kNoField || index == kRowNumberColumn) return std::nullopt;
    return index - 1;
}

const SFieldEntry* JudgedField(int32_t fieldId) {
    const SFieldEntry* entry = EntryOf(fieldId);
    if (!entry) return nullptr;
    switch (entry->valueClass) {
    case EValueClass::Fixed:
    case EValueClass::Price:
    case EValueClass::Integer:
    case EValueClass::Unsigned:
    case EValueClass::Ratio:
        return entry;
    default:
        return nullptr;
    }
}

bool CanFire(const A_INFO& alert) {
    return alert.fieldId == NewsFieldId() || (JudgedField(alert.fieldId) && MeetingResults(alert.condition) != 0);
}

} // namespace vx
