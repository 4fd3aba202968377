// SPDX-License-Identifier: MIT
#include "data/record/SlotText.h"

#include <algorithm>

namespace vx {

namespace {

constexpr uint32_t kLeastCapacity = 64;

} // namespace

void CSlotText::AssignLong(std::string_view text) {
    text = text.substr(0, kMostSize);
    SLong now = IsLong() ? Long() : SLong{nullptr, 0, 0};
    if (now.capacity < text.size()) {
        delete[] now.bytes;
        const size_t roomy = std::min(text.size() + text.size() / 2, kMostSize);
        now.capacity = std::max(kLeastCapacity, static_cast<uint32_t>(roomy));
        now.bytes = new char[now.capacity];
    }
    std::copy(text.begin(), text.end(), now.bytes);
    now.size = static_cast<uint32_t>(text.size());
    SetLong(now);
    m_tag = kLongTag;
}

void CSlotText::FreeLong() { delete[] Long().bytes; }

void CSlotText::PushFront(char c, size_t limit) {
    if (IsLong()) { // Only a text that was assigned can be.
        const std::string_view now = View().substr(0, kInlineSize - 1);
        char text[kInlineSize];
        std::copy(now.begin(), now.end(), text + 1);
        text[0] = c;
        Assign({text, std::min(now.size() + 1, limit)});
        return;
    }
    char text[kInlineSize - 1];
    std::memcpy(text, m_bytes, sizeof(text));
    std::memcpy(m_bytes + 1, text, sizeof(text));
    m_bytes[0] = c;
    m_tag = static_cast<uint8_t>(std::min<size_t>(m_tag + size_t{1}, limit));
}

} // namespace vx
