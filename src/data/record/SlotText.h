// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vx {

/// The text of one slot of a record: 24 bytes, short texts inside, longer ones on the heap.
///
/// Shape   any bytes; of a text longer than kMostSize its beginning: no cell shows as much
/// Owns    its heap buffer, which it keeps for the next long text, so that repeated changes do not allocate
class CSlotText {
public:
    static constexpr size_t kInlineSize = 23;
    static constexpr size_t kMostSize = 1024;

    CSlotText() = default;
    ~CSlotText() {
        if (IsLong()) FreeLong();
    }
    CSlotText(const CSlotText&) = delete;
    CSlotText& operator=(const CSlotText&) = delete;

    std::string_view View() const {
        return IsLong() ? std::string_view{Long().bytes, Long().size} : std::string_view{m_bytes, m_tag};
    }

    /// The text may not be a part of this slot's own.
    void Assign(std::string_view text) {
        if (text.size() <= kInlineSize && !IsLong()) {
            CopyShort(m_bytes, text.data(), text.size());
            m_tag = static_cast<uint8_t>(text.size());
        } else {
            AssignLong(text);
        }
    }

    /// Assign, where kInlineSize + 1 bytes from text.data() on may be read: short texts of any length cost the same.
    void AssignReadable(std::string_view text) {
        if (text.size() <= kInlineSize && !IsLong()) {
            std::memcpy(m_bytes, text.data(), kInlineSize + 1); // The last byte is the tag's.
            m_tag = static_cast<uint8_t>(text.size());
        } else {
            AssignLong(text);
        }
    }

    void Clear() { Assign({}); }

    size_t HeapBytes() const { return IsLong() ? Long().capacity : 0; }

    /// Puts one character in front and keeps the first `limit` characters, at most kInlineSize.
    void PushFront(char c, size_t limit);

private:
    static constexpr uint8_t kLongTag = 0xFF;

    struct SLong {
        char* bytes;
        uint32_t size;
        uint32_t capacity;
    };

    bool IsLong() const { return m_tag == kLongTag; }
    SLong Long() const {
        SLong out;
        std::memcpy(&out, m_bytes, sizeof(out));
        return out;
    }
    void SetLong(const SLong& value) { std::memcpy(m_bytes, &value, sizeof(value)); }
    void AssignLong(std::string_view text);
    void FreeLong();

    // Copies up to kInlineSize bytes with two overlapping moves: the length is not known when compiled, and a call
    // to memcpy costs more than the copy.
    static void CopyShort(char* to, const char* from, size_t size) {
        if (size >= 16) {
            std::memcpy(to, from, 16);
            std::memcpy(to + size - 8, from + size - 8, 8);
        } else if (size >= 8) {
            CopyEnds<8>(to, from, size);
        } else if (size >= 4) {
            CopyEnds<4>(to, from, size);
        } else if (size >= 2) {
            CopyEnds<2>(to, from, size);
        } else if (size == 1) {
            *to = *from;
        }
    }
    template <size_t kPart> static void CopyEnds(char* to, const char* from, size_t size) {
        char first[kPart];
        char last[kPart];
        std::memcpy(first, from, kPart);
        std::memcpy(last, from + size - kPart, kPart);
        std::memcpy(to, first, kPart);
        std::memcpy(to + size - kPart, last, kPart);
    }

    alignas(8) char m_bytes[kInlineSize] = {};
    uint8_t m_tag = 0; ///< Size of a short text, or kLongTag.
};
static_assert(sizeof(CSlotText) == 24);

} // namespace vx
