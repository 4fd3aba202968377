// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace vx::test {

/// What a lookup port does with one connection once it has heard a request's line.
struct SLookupAnswer {
    enum class EThen {
        Closes,
        Stays,  ///< Says nothing more and keeps the connection until the other side ends it.
        Drips,  ///< A byte now and then, until the other side ends it.
        Floods, ///< Whole lines as fast as they are taken, until the other side ends it.
        Resets
    };
    std::string says;
    EThen then = EThen::Closes;
};

/// A lookup port on a free port of loopback, served by a thread of its own: whoever waits for a blocking exchange
/// cannot answer it. Connections get the answers one after the other; those beyond the last are never accepted.
class CLookupPeer {
public:
    explicit CLookupPeer(std::vector<SLookupAnswer> answers);
    ~CLookupPeer();
    CLookupPeer(const CLookupPeer&) = delete;
    CLookupPeer& operator=(const CLookupPeer&) = delete;

    uint16_t Port() const { return m_port; }
    /// The requests so far, one for each connection.
    std::vector<std::string> Heard() const;

private:
    void Serve(const SLookupAnswer& answer);

    int m_listener;
    uint16_t m_port = 0;
    mutable std::mutex m_lock;
    std::vector<std::string> m_heard;
    std::thread m_thread;
};

} // namespace vx::test
