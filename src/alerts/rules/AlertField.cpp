#include "alerts/rules/AlertField.h"

#include "alerts/rules/AlertCondition.h"
#include "data/catalogue/Catalogue.h"

namespace vx {

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
