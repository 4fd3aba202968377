#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vx {

/// A thread, named "vx-recovery", that writes and removes one recovery file, so that a slow disk never holds the
/// window. What is asked for while the disk is busy replaces what was asked for before: only the last state counts.
///
/// Errors  what cannot be written is not tried again by itself; the log says so once
/// Thread  asked from one thread; the destructor waits until the last thing asked for is done
class CRecoveryWriter {
public:
    static constexpr const char* kThreadName = "vx-recovery";

    CRecoveryWriter();
    ~CRecoveryWriter();
    CRecoveryWriter(const CRecoveryWriter&) = delete;
    CRecoveryWriter& operator=(const CRecoveryWriter&) = delete;

    void Write(std::string file, std::string content);
    void Remove(std::string file);
    /// What came of the last thing done: an errno value, 0 for success.
    int Error() const { return m_error; }
    /// Waits until nothing is left to do.
    void Flush();

private:
    struct SJob {
        std::string file;
        std::optional<std::string> content; ///< Nothing: the file goes.
    };

    void Ask(SJob job);
    void Run();
    void Do(const SJob& job);

    std::mutex m_mutex;
    std::condition_variable m_wake, m_done;
    std::optional<SJob> m_next;
    bool m_busy = false;
    bool m_end = false;
    std::atomic<int> m_error{0};
    std::thread m_thread;
};

} // namespace vx
