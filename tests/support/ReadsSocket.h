// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace vx::test {

/// A line socket whose reads are the test's instead of a connection's; SocketBase is CZTLStreamSocket or one of its
/// kind.
template <class SocketBase> class CReadsSocket : public SocketBase {
public:
    using SocketBase::SocketBase;

    /// One receive notification with these bytes; those that find no room wait for the next one.
    void Read(std::string_view bytes) {
        m_arriving.append(bytes);
        this->OnReceive(0);
    }

    std::vector<int> asked; ///< The room that each receive had.

protected:
    int Receive(void* buffer, int length, int) override {
        asked.push_back(length);
        const size_t count = std::min(m_arriving.size(), static_cast<size_t>(length));
        std::memcpy(buffer, m_arriving.data(), count);
        m_arriving.erase(0, count);
        return static_cast<int>(count);
    }

private:
    std::string m_arriving;
};

} // namespace vx::test
