// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vx::sim {

/// Bytes that wait to be sent, in one block of memory that is used again and again. A block that has grown beyond
/// kKeptBytes is freed when it is empty.
///
/// Owns    its bytes
/// Thread  any one
class CSendQueue {
public:
    static constexpr size_t kKeptBytes = 256 * 1024;

    size_t Size() const { return m_end - m_begin; }
    std::string_view Waiting() const { return {m_bytes.data() + m_begin, Size()}; }

    void Append(std::string_view bytes);
    /// Room for at least so many bytes behind the waiting ones; Commit tells where they end.
    char* Reserve(size_t bytes);
    void Commit(const char* end) { m_end = static_cast<size_t>(end - m_bytes.data()); }
    /// Takes bytes off the front.
    void Drop(size_t bytes);

private:
    std::vector<char> m_bytes;
    size_t m_begin = 0;
    size_t m_end = 0;
};

} // namespace vx::sim
