#include "alerts/rules/AlertCondition.h"

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

} // namespace vx
