#include "vxconnect/common/FieldNames.h"

#include "base/Text.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

namespace vx::sim {

std::string CFieldNames::Add(std::string_view map) {
    for (const std::string_view pair : SplitCountingTail(map, ',')) {
        const size_t equals = pair.find('=');
        const std::string name = PlainName(pair.substr(0, equals));
        if (equals == std::string_view::npos || name.empty())
            return fmt::format("\"{}\" is not NAME=FIELD, such as Close=Last", Shown(pair));
        const std::string_view wanted = TrimBlanks(pair.substr(equals + 1));
        const SInputField* const field = FindInputField(wanted);
        if (!field && !wanted.empty())
            return fmt::format("\"{}\" is not a field; the nearest are {}", Shown(wanted), NearestFields(wanted));
        m_fields[name] = field;
    }
    return {};
}

CFieldNames::SFound CFieldNames::Find(std::string_view name) const {
    const auto found = m_fields.find(PlainName(name));
    if (found != m_fields.end()) return {found->second, found->second == nullptr};
    return {FindInputField(name), false};
}

} // namespace vx::sim
