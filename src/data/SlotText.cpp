#include "data/SlotText.h"

#include <algorithm>

namespace vx {

namespace {

constexpr uint32_t kLeastCapacity = 64;
constexpr uint32_t kKeptCapacity = 1024; ///< A larger buffer is given back when a short text follows.

} // namespace

void CSlotText::AssignLong(std::string_view text) {
    if (IsLong() && text.size() <= kInlineSize && Long().capacity > kKeptCapacity) {
        FreeLong();
        m_tag = 0;
        Assign(text);
        return;
    }
    SLong now = IsLong() ? Long() : SLong{nullptr, 0, 0};
    if (now.capacity < text.size()) {
        delete[] now.bytes;
        now.capacity = std::max(kLeastCapacity, static_cast<uint32_t>(text.size() + text.size() / 2));
        now.bytes = new char[now.capacity];
    }
    std::copy(text.begin(), text.end(), now.bytes);
    now.size = static_cast<uint32_t>(text.size());
    SetLong(now);
    m_tag = kLongTag;
}

void CSlotText::FreeLong() { delete[] Long().bytes; }

void CSlotText::PushFront(char c, size_t limit) {
    char text[kInlineSize];
    text[0] = c;
    const size_t kept = std::min({View().size(), limit - 1, kInlineSize - 1});
    std::copy_n(View().data(), kept, text + 1);
    Assign({text, kept + 1});
}

} // namespace vx
