#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vx {

/// A thread, named "vx-recovery", that writes and removes one recovery file, so that a slow disk never holds the
/// window. What is asked for while the disk is busy replaces what was asked for before: only the last state counts.
///
/// Errors  what cannot be written is tried again with the next content; the log says so once
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
    bool m_failed = false; ///< Only the thread's.
    std::thread m_thread;
};

} // namespace vx
