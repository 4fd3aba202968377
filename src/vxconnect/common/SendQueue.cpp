// SPDX-License-Identifier: MIT
#include "vxconnect/common/SendQueue.h"

#include <algorithm>
#include <cstring>

namespace vx::sim {

char* CSendQueue::Reserve(size_t bytes) {
    if (m_bytes.size() - m_end < bytes) {
        const size_t size = Size();
        if (size > 0 && m_begin > 0) std::memmove(m_bytes.data(), m_bytes.data() + m_begin, size);
        m_begin = 0;
        m_end = size;
        if (m_bytes.size() - m_end < bytes) m_bytes.resize(std::max(m_bytes.size() * 2, m_end + bytes));
    }
    return m_bytes.data() + m_end;
}

void CSendQueue::Append(std::string_view bytes) {
    if (bytes.empty()) return;
    std::memcpy(Reserve(bytes.size()), bytes.data(), bytes.size());
    m_end += bytes.size();
}

void CSendQueue::Drop(size_t bytes) {
    m_begin += bytes;
    if (m_begin != m_end) return;
    m_begin = m_end = 0;
    if (m_bytes.size() > kKeptBytes) std::vector<char>().swap(m_bytes);
}

} // namespace vx::sim
