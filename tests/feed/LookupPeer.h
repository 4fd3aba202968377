#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
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
    /// Each one is sent when the one before has been received; see CLookupPeer::ReaderIs.
    std::vector<std::string> pieces;
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

    /// The descriptor that the other side reads from, which tells when a piece has been received. Needed before an
    /// answer of several pieces goes on; good for one connection.
    void ReaderIs(int descriptor) { m_reader = descriptor; }

private:
    void Run();
    void Serve(int peer, const SLookupAnswer& answer);
    bool Hear(int peer);
    bool Readable(int descriptor, int milliseconds) const;
    void AwaitReceived(int peer);
    void AwaitEnd(int peer);

    std::vector<SLookupAnswer> m_answers;
    int m_listener = -1;
    int m_stop[2] = {-1, -1}; ///< A pipe: readable once the test is over.
    uint16_t m_port = 0;
    std::atomic<int> m_reader = -1;
    mutable std::mutex m_lock;
    std::vector<std::string> m_heard;
    std::thread m_thread;
};

} // namespace vx::test
