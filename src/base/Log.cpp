// SPDX-License-Identifier: MIT
#include "base/Log.h"

#include "base/LogFile.h"
#include "base/Text.h"
#include "base/Windows1252.h"

#include <fmt/format.h>
#include <spdlog/async_logger.h>
#include <spdlog/details/null_mutex.h>
#include <spdlog/details/thread_pool.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <array>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace vx {

namespace {

/// In the order of ELogCategory.
constexpr std::array<std::string_view, kLogCategoryCount + 1> kCategories{
    "Admin",   "L1Data",     "L1Request",     "L1System",    "L1Error",     "L2Data", "L2Request",    "L2System",
    "L2Error", "LookupData", "LookupRequest", "LookupError", "Information", "Debug",  "Connectivity", "Off",
};

/// In the order of ELogDirection.
constexpr std::array<std::string_view, 5> kDirections{"FROM CLIENT", "TO CLIENT", "FROM SERVER", "TO SERVER", "STATUS"};

constexpr size_t kQueueEvents = 8192;
constexpr size_t kEarlyEvents = 1000;
constexpr const char* kLinePattern = "%Y-%m-%d %H:%M:%S.%e %v";
constexpr const char* kColouredPattern = "%^%Y-%m-%d %H:%M:%S.%e %v%$";

/// Whether a byte shows as a character of its own: not the controls, the no-break space, the soft hyphen, the five
/// bytes without a character, and the backslash that begins the escape of another.
bool Prints(unsigned char byte) {
    constexpr std::string_view kBlind = "\\\x7F\x81\x8D\x8F\x90\x9D\xA0\xAD";
    return byte >= 0x20 && kBlind.find(static_cast<char>(byte)) == std::string_view::npos;
}

/// How loud an event is on the console.
spdlog::level::level_enum LevelOf(ELogCategory category, ELogDirection direction) {
    if (LogName(category).ends_with("Error")) return spdlog::level::err;
    return direction == ELogDirection::Status ? spdlog::level::info : spdlog::level::debug;
}

/// Writes events into the log's files. What is waiting goes to disk whenever no further event is queued.
class CFileSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    /// The pool runs the thread that calls this sink, so it is there whenever the sink is called.
    CFileSink(const SLogConfig& config, spdlog::details::thread_pool* pool)
        : m_file(config.folder, config.maxFileBytes, config.keptFiles), m_pool(pool) {}

    int Open() { return m_file.Open(DayOf(spdlog::log_clock::now())); }

    /// Waits until the thread of the log has come to a flush that was asked for before, and all events before it.
    void AwaitFlush(uint64_t number) {
        std::unique_lock lock(m_flushMutex);
        m_flushed.wait(lock, [&] { return m_flushes >= number; });
    }

private:
    void sink_it_(const spdlog::details::log_msg& event) override {
        spdlog::memory_buf_t line;
        formatter_->format(event, line); // ends in a line end
        m_file.Append(DayOf(event.time), {line.data(), line.size() - 1});
        if (m_pool->queue_size() == 0) m_file.Flush();
    }

    void flush_() override {
        m_file.Flush();
        const std::lock_guard guard(m_flushMutex);
        ++m_flushes;
        m_flushed.notify_all();
    }

    SLogDay DayOf(spdlog::log_clock::time_point time) {
        const std::time_t second = spdlog::log_clock::to_time_t(time);
        if (second == m_second) return m_day;
        std::tm parts{};
        localtime_r(&second, &parts);
        m_second = second;
        return m_day = {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday};
    }

    CLogFile m_file;
    spdlog::details::thread_pool* const m_pool;
    std::time_t m_second = -1;
    SLogDay m_day;
    std::mutex m_flushMutex;
    std::condition_variable m_flushed;
    uint64_t m_flushes = 0;
};

/// An event as it goes into the file, without its time stamp.
struct SEvent {
    spdlog::log_clock::time_point time;
    spdlog::level::level_enum level;
    std::string line;
};

SEvent EventOf(ELogCategory category, ELogDirection direction, std::string_view text) {
    return {spdlog::log_clock::now(), LevelOf(category, direction), LogLine(category, direction, text)};
}

/// The log of the process. Its end, with the program's, writes what is still on its way.
class CLog {
public:
    CLog() : m_wanted(ReadLogCategories(kDefaultLogCategories)) { Publish(); }
    ~CLog() {
        const std::lock_guard guard(m_mutex);
        m_ended = true;
        Publish();
        Close();
    }

    void SetCategories(LogCategories categories) {
        const std::lock_guard guard(m_mutex);
        m_wanted = categories;
        Publish();
    }

    bool Configure(const SLogConfig& config) {
        const std::lock_guard guard(m_mutex);
        Close();
        m_configured = true;
        const int error = Open(config);
        if (m_logger) SendEarly();
        m_early.clear();
        Publish();
        if (error != 0)
            std::fprintf(stderr, "The log cannot be written in %s: %s\n", config.folder.c_str(), std::strerror(error));
        return error == 0;
    }

    void Add(ELogCategory category, ELogDirection direction, std::string_view text) {
        std::unique_lock lock(m_mutex);
        if (const LogSink sink = m_testSink) {
            lock.unlock();
            return sink({category, direction, std::string(text)});
        }
        SEvent event = EventOf(category, direction, text);
        if (m_logger) return Send(event);
        if (m_configured) return;
        if (m_early.size() < kEarlyEvents)
            m_early.push_back(std::move(event));
        else
            ++m_earlyLost;
    }

    void Flush() {
        const std::lock_guard guard(m_mutex);
        if (!m_fileSink) return;
        m_logger->flush();
        m_fileSink->AwaitFlush(++m_flushes);
    }

    LogSink SetSink(LogSink sink) {
        const std::lock_guard guard(m_mutex);
        std::swap(m_testSink, sink);
        Publish();
        return sink;
    }

private:
    int Open(const SLogConfig& config) {
        int error = 0;
        std::vector<spdlog::sink_ptr> sinks;
        auto pool = std::make_shared<spdlog::details::thread_pool>(kQueueEvents, 1);
        if (!config.folder.empty()) {
            m_fileSink = std::make_shared<CFileSink>(config, pool.get());
            error = m_fileSink->Open();
            if (error != 0) m_fileSink.reset();
        }
        if (m_fileSink) sinks.push_back(m_fileSink);
        if (config.console) sinks.push_back(std::make_shared<spdlog::sinks::stderr_color_sink_st>());
        if (sinks.empty()) return error;
        for (const auto& sink : sinks) sink->set_pattern(sink == m_fileSink ? kLinePattern : kColouredPattern);
        m_pool = std::move(pool);
        m_logger = std::make_shared<spdlog::async_logger>("zantrel", sinks.begin(), sinks.end(), m_pool);
        m_logger->set_level(spdlog::level::trace);
        return error;
    }

    /// Writes what is on its way: the pool's end waits for its thread.
    void Close() {
        m_logger.reset();
        m_pool.reset();
        m_fileSink.reset();
        m_flushes = 0;
    }

    void SendEarly() {
        for (const SEvent& event : m_early) Send(event);
        if (const size_t lost = std::exchange(m_earlyLost, 0))
            Send(EventOf(ELogCategory::Information, ELogDirection::Status,
                         fmt::format("{} more events came before the log was started.", lost)));
    }

    /// Says to IsOn what is on: nothing where no event would go anywhere.
    void Publish() {
        const bool goesSomewhere = !m_ended && (m_testSink || m_logger || !m_configured);
        detail::g_logOn.store(goesSomewhere ? m_wanted : 0, std::memory_order_relaxed);
    }

    void Send(const SEvent& event) { m_logger->log(event.time, spdlog::source_loc{}, event.level, event.line); }

    std::mutex m_mutex;
    LogCategories m_wanted;
    bool m_configured = false;
    bool m_ended = false;
    LogSink m_testSink;
    std::shared_ptr<spdlog::details::thread_pool> m_pool;
    std::shared_ptr<CFileSink> m_fileSink;
    std::shared_ptr<spdlog::async_logger> m_logger;
    uint64_t m_flushes = 0; ///< Asked of m_fileSink so far.
    std::vector<SEvent> m_early;
    size_t m_earlyLost = 0;
};

CLog& TheLog() {
    static CLog log;
    return log;
}

} // namespace

std::string_view LogName(ELogCategory category) { return kCategories[static_cast<size_t>(category)]; }

std::string_view LogName(ELogDirection direction) { return kDirections[static_cast<size_t>(direction)]; }

std::string LogLine(ELogCategory category, ELogDirection direction, std::string_view text) {
    std::string out = fmt::format("[{}] [{}] ", LogName(category), LogName(direction));
    out.reserve(out.size() + text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (!Prints(byte))
            out += fmt::format("\\x{:02X}", byte);
        else if (byte < 0x80)
            out.push_back(c);
        else
            out += Utf8FromWindows1252({&c, 1});
    }
    return out;
}

LogCategories ReadLogCategories(std::string_view list, std::string* unknown) {
    constexpr std::string_view kSeparators = ";, ";
    LogCategories out = 0;
    bool off = false;
    for (size_t start = 0; (start = list.find_first_not_of(kSeparators, start)) != std::string_view::npos;) {
        const std::string_view name = list.substr(start, list.find_first_of(kSeparators, start) - start);
        start += name.size();
        int row = 0;
        while (row <= kLogCategoryCount && CompareNoCase(kCategories[static_cast<size_t>(row)], name) != 0) ++row;
        if (row < kLogCategoryCount)
            out |= LogCategories(1) << row;
        else if (row == kLogCategoryCount)
            off = true;
        else if (unknown)
            unknown->append(unknown->empty() ? "" : ";").append(name);
    }
    return off ? 0 : out;
}

namespace detail {
std::atomic<LogCategories> g_logOn{ReadLogCategories(kDefaultLogCategories)};
}

void SetLogCategories(LogCategories categories) { TheLog().SetCategories(categories); }

void Log(ELogCategory category, ELogDirection direction, std::string_view text) noexcept {
    if (!IsOn(category)) return;
    try {
        TheLog().Add(category, direction, text);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "An event could not be logged: %s\n", error.what());
    }
}

void LogInformation(std::string_view text) noexcept { Log(ELogCategory::Information, ELogDirection::Status, text); }

bool ConfigureLog(const SLogConfig& config) noexcept {
    try {
        return TheLog().Configure(config);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "The log cannot be started: %s\n", error.what());
        return false;
    }
}

void FlushLog() noexcept { TheLog().Flush(); }

LogSink SetLogSink(LogSink sink) { return TheLog().SetSink(std::move(sink)); }

} // namespace vx
