// SPDX-License-Identifier: MIT
#include "vxconnect/common/UpdateFields.h"

#include "base/Text.h"

#include <algorithm>

namespace vx::sim {

namespace {

constexpr int16_t kUnknown = -1;

int16_t FieldOf(std::string_view name) {
    const auto found = std::ranges::find(kUpdateFields, name, &SUpdateField::name);
    return found == kUpdateFields.end() ? kUnknown : static_cast<int16_t>(found - kUpdateFields.begin());
}

} // namespace

CFieldSelection::CFieldSelection() : m_standard(true) {
    for (size_t i = 0; i < kUpdateFieldCount; ++i) {
        m_order.push_back(static_cast<int16_t>(i));
        m_mask.Set(static_cast<EField>(i));
    }
}

CFieldSelection::CFieldSelection(std::string_view names) {
    for (const std::string_view name : SplitCountingTail(names, ',')) {
        if (m_order.size() == kMaxSelected) break;
        m_order.push_back(FieldOf(TrimBlanks(name)));
        if (m_order.back() != kUnknown) m_mask.Set(static_cast<EField>(m_order.back()));
    }
    m_standard = *this == CFieldSelection();
}

} // namespace vx::sim
