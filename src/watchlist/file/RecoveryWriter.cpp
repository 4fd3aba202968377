#include "watchlist/file/RecoveryWriter.h"

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/StateFiles.h"

#include <fmt/format.h>

#include <ctime>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace vx {

CRecoveryWriter::CRecoveryWriter(std::string stateFolder)
    : m_stateFolder(std::move(stateFolder)), m_thread([this] { Run(); }) {}

CRecoveryWriter::~CRecoveryWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_end = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void CRecoveryWriter::Write(std::string content) { Ask(std::move(content)); }

void CRecoveryWriter::Remove() { Ask(std::nullopt); }

void CRecoveryWriter::Adopt(std::string file, std::shared_ptr<CFileLock> lock) {
    Remove();
    Flush();
    m_file = std::move(file);
    m_lock = std::move(lock);
}

void CRecoveryWriter::Ask(std::optional<std::string> content) {
    {
        const std::lock_guard lock(m_mutex);
        m_next = std::move(content);
        m_asked = true;
    }
    m_wake.notify_one();
}

void CRecoveryWriter::Flush() {
    std::unique_lock lock(m_mutex);
    m_done.wait(lock, [this] { return !m_asked && !m_busy; });
}

std::string CRecoveryWriter::File() {
    Flush();
    return m_file;
}

void CRecoveryWriter::Run() {
    pthread_setname_np(pthread_self(), kThreadName);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_asked || m_end; });
        if (!m_asked) return;
        const std::optional<std::string> content = std::exchange(m_next, std::nullopt);
        m_asked = false;
        m_busy = true;
        lock.unlock();
        const int error = Do(content);
        if (error != 0 && m_error == 0)
            LogInformation(fmt::format("Unsaved changes could not be kept in \"{}\": {}.",
                                       Windows1252FromUtf8(RecoveryFolder(m_stateFolder)), ErrorText(error)));
        m_error = error;
        lock.lock();
        m_busy = false;
        m_done.notify_all();
    }
}

int CRecoveryWriter::Do(const std::optional<std::string>& content) {
    if (!content) {
        RemoveFile();
        return 0;
    }
    if (m_file.empty())
        if (const int error = Begin()) return error;
    return SavePrivateFile(m_file, *content);
}

// Without the lock another program could take the file for one that nobody has.
int CRecoveryWriter::Begin() {
    static std::atomic<int> number{0};
    if (const int error = MakeFolders(RecoveryFolder(m_stateFolder))) return error;
    const std::string file =
        fmt::format("{}/{}-{}-{}.recovery", RecoveryFolder(m_stateFolder), time(nullptr), getpid(), ++number);
    auto lock = std::make_shared<CFileLock>(RecoveryLockName(file), 0);
    if (!lock->IsHeld()) return lock->Error();
    m_file = file;
    m_lock = std::move(lock);
    return 0;
}

void CRecoveryWriter::RemoveFile() {
    if (m_file.empty()) return;
    Disk().Remove(m_file);
    Disk().Remove(RecoveryLockName(m_file));
    m_lock.reset();
    m_file.clear();
}

} // namespace vx
