// SPDX-License-Identifier: MIT
#include "feed/lookup/LookupSystemInfo.h"

#include "base/Number.h"
#include "base/Text.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/NativeSocket.h"
#include "feed/socket/Ports.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>

namespace vx {

namespace {

constexpr std::string_view kEndMarker = "!ENDMSG!";
constexpr std::string_view kSyntaxError = "!SYNTAX_ERROR!";

/// The texts of one line, its id the first of them.
struct SLineTexts {
    std::array<std::string_view, 1 + kMostTableTexts> texts;
    size_t count = 0;

    explicit SLineTexts(std::string_view line) {
        for (size_t comma = 0; count < texts.size() && !line.empty(); line.remove_prefix(comma + 1)) {
            comma = std::min(line.find(','), line.size());
            texts[count++] = line.substr(0, comma);
            if (comma == line.size()) return;
        }
    }
};

} // namespace

bool CTableReply::Take(std::string_view received) {
    received = received.substr(0, received.find('\0'));
    if (const size_t end = received.find(kEndMarker); end != std::string_view::npos) {
        received = received.substr(0, end);
        received.remove_prefix(std::min(received.find_first_not_of("\r\n"), received.size()));
        m_text.append(received);
        return false;
    }
    if (ContainsText(received, kSyntaxError)) {
        m_text.clear();
        return false;
    }
    m_text.append(received);
    return !TooLong();
}

bool CTableReply::HoldsSplitEnd() const {
    return ContainsText(m_text, kEndMarker) || ContainsText(m_text, kSyntaxError);
}

void ReadTableReply(std::string_view reply,
                    const std::function<void(int id, std::span<const std::string_view> texts)>& entry) {
    while (!reply.empty()) {
        const size_t end = std::min(reply.find('\n'), reply.size());
        std::string_view line = reply.substr(0, end);
        reply.remove_prefix(std::min(end + 1, reply.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        const SLineTexts fields(line);
        if (fields.count == 0 || fields.texts[0].empty()) continue;
        const int id = ReadInt32(fields.texts[0]);
        if (id < 0 || id >= kTableEntries) continue;
        entry(id, std::span(fields.texts).subspan(1, fields.count - 1));
    }
}

namespace {

constexpr int kReceiveBytes = 65535;

const SFeedLog& PortLog() { return FeedLogOf(kLookupSocket); }

/// The received bytes for the log, line by line; costs nothing while the log does not want them.
class CReceivedLines {
public:
    void Add(std::string_view bytes) {
        if (!IsOn(ELogCategory::LookupData) && !IsOn(ELogCategory::LookupError)) return;
        m_lines.Append(bytes);
        LogWhole();
    }
    ~CReceivedLines() {
        m_lines.End();
        LogWhole();
    }

private:
    void LogWhole() {
        while (const auto line = m_lines.Next())
            if (!line->text.empty()) PortLog().Received(line->text);
    }
    CLineCutter m_lines;
};

} // namespace

// A socket library that must be started first is not known on this platform.
CLookupSystemInfo::CLookupSystemInfo(CRegistry& registry, SLookupTimes times) : m_ports(registry), m_times(times) {}

bool CLookupSystemInfo::Wait(CNativeSocket::EWait what) const {
    const auto quiet = std::chrono::steady_clock::now() + std::chrono::milliseconds(m_times.quietMs);
    return m_socket.Wait(what, std::min(quiet, m_deadline));
}

int CLookupSystemInfo::Connect(uint16_t port) {
    if (const int error = m_socket.Open()) return error;
    const int begun = m_socket.Connect(kFeedHost, port);
    if (begun != 0 && begun != kSocketWouldBlock) return begun;
    return Wait(CNativeSocket::EWait::Writable) ? m_socket.ConnectOutcome() : kSocketTimedOut;
}

bool CLookupSystemInfo::SendRequest(std::string_view request, uint16_t port) {
    m_reply = {};
    m_unanswered = false;
    m_deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(m_times.totalMs);
    if (m_times.totalMs <= 0) return false;
    if (const int error = Connect(port)) {
        m_unanswered = error == kSocketTimedOut;
        return GiveUp(fmt::format("no connection to {}:{}, error {}", kFeedHost, port, error));
    }
    const auto [count, error] = m_socket.Send(request.data(), static_cast<int>(request.size()));
    PortLog().Sent(request, count, error);
    if (count == static_cast<int>(request.size())) return true;
    m_socket.Close();
    return false;
}

void CLookupSystemInfo::ReadReply() {
    const auto buffer = std::make_unique<char[]>(kReceiveBytes);
    CReceivedLines lines;
    for (;;) {
        if (!Wait(CNativeSocket::EWait::Readable)) {
            m_unanswered = !m_reply.HoldsSplitEnd();
            break;
        }
        const auto [count, error] = m_socket.Receive(buffer.get(), kReceiveBytes);
        if (error == kSocketWouldBlock) continue;
        if (count <= 0) break;
        const std::string_view received(buffer.get(), static_cast<size_t>(count));
        lines.Add(received);
        if (m_reply.Take(received)) continue;
        m_unanswered = m_reply.TooLong();
        break;
    }
    m_socket.Shutdown();
    m_socket.Close();
}

bool CLookupSystemInfo::Exchange(std::string_view request) {
    if (!SendRequest(request, m_ports.GetPort(kLookupPort))) return false;
    ReadReply();
    if (!m_unanswered) {
        m_lastFailure.clear();
        return true;
    }
    return GiveUp(m_reply.TooLong() ? fmt::format("the reply has more than {} bytes", CTableReply::kMostBytes)
                                    : fmt::format("no end of the reply within {} ms, or {} ms without a byte of it",
                                                  m_times.totalMs, m_times.quietMs));
}

bool CLookupSystemInfo::GiveUp(std::string_view what) {
    m_socket.Close();
    if (what == m_lastFailure) return false;
    m_lastFailure = what;
    PortLog().Failed(what);
    return false;
}

} // namespace vx
