#include "watchlist/RecoveryWriter.h"

#include "base/AtomicFile.h"
#include "base/ErrorText.h"
#include "base/Log.h"
#include "base/SaveFile.h"
#include "base/Utf8Text.h"

#include <fmt/format.h>

#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace vx {

CRecoveryWriter::CRecoveryWriter() : m_thread([this] { Run(); }) {}

CRecoveryWriter::~CRecoveryWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_end = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void CRecoveryWriter::Write(std::string file, std::string content) { Ask({std::move(file), std::move(content)}); }

void CRecoveryWriter::Remove(std::string file) { Ask({std::move(file), std::nullopt}); }

void CRecoveryWriter::Ask(SJob job) {
    {
        const std::lock_guard lock(m_mutex);
        m_next = std::move(job);
    }
    m_wake.notify_one();
}

void CRecoveryWriter::Flush() {
    std::unique_lock lock(m_mutex);
    m_done.wait(lock, [this] { return !m_next && !m_busy; });
}

void CRecoveryWriter::Run() {
    pthread_setname_np(pthread_self(), kThreadName);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_next || m_end; });
        if (!m_next) return;
        const SJob job = std::move(*std::exchange(m_next, std::nullopt));
        m_busy = true;
        lock.unlock();
        Do(job);
        lock.lock();
        m_busy = false;
        m_done.notify_all();
    }
}

void CRecoveryWriter::Do(const SJob& job) {
    if (!job.content) {
        unlink(job.file.c_str());
        m_error = 0;
        return;
    }
    const int error = SaveFile(job.file, *job.content);
    if (error != 0 && m_error == 0)
        LogInformation(fmt::format("Unsaved changes could not be kept in \"{}\": {}.", Windows1252FromUtf8(job.file),
                                   ErrorText(error)));
    m_error = error;
}

} // namespace vx
