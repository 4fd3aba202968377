#pragma once

#include "base/AtomicFile.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace vx {

/// A thread, named "vx-recovery", that makes, writes and removes the recovery file of one document, and holds its lock,
/// so that a slow disk never holds the window. What is asked for while the disk is busy replaces what was asked for
/// before: only the last state counts.
///
/// Errors  what cannot be written is not tried again by itself; the log says so once
/// Owns    the recovery file and its lock
/// Thread  asked from one thread; the destructor waits until the last thing asked for is done
class CRecoveryWriter {
public:
    static constexpr const char* kThreadName = "vx-recovery";

    explicit CRecoveryWriter(std::string stateFolder);
    ~CRecoveryWriter();
    CRecoveryWriter(const CRecoveryWriter&) = delete;
    CRecoveryWriter& operator=(const CRecoveryWriter&) = delete;

    /// Puts a content into the recovery file, which is made when there is none.
    void Write(std::string content);
    /// The recovery file goes, and its lock after it: in between, nobody may find a file without a holder.
    void Remove();
    /// A file that another program left is the recovery file from here on. The one that was goes.
    void Adopt(std::string file, std::shared_ptr<CFileLock> lock);
    /// What came of the last thing done: an errno value, 0 for success.
    int Error() const { return m_error; }
    /// Waits until nothing is left to do.
    void Flush();
    /// The recovery file; empty while there is none. Waits as Flush does.
    std::string File();

private:
    void Ask(std::optional<std::string> content);
    void Run();
    int Do(const std::optional<std::string>& content);
    int Begin();
    void RemoveFile();

    const std::string m_stateFolder;

    // Of the thread, and of others while it has nothing to do.
    std::string m_file; ///< Empty while there is none.
    std::shared_ptr<CFileLock> m_lock;

    std::mutex m_mutex;
    std::condition_variable m_wake, m_done;
    bool m_asked = false;
    std::optional<std::string> m_next; ///< Of what was asked for; nothing: the file goes.
    bool m_busy = false;
    bool m_end = false;
    std::atomic<int> m_error{0};
    std::thread m_thread; ///< Last: everything else is there before it runs.
};

} // namespace vx
