// SPDX-License-Identifier: MIT
#include "feed/socket/StreamSocket.h"

#include "base/Clock.h"
#include "feed/socket/LineIndex.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace vx {

namespace {

SDateTime Now() { return DateTimeFromLocal(CClock::Instance().Now()); }

// How many lines ahead lines are announced: the memory that the first look asks for is there at the second.
constexpr size_t kLater = 8;
constexpr size_t kSoon = 4;

bool EndsLine(char c) { return c == '\r' || c == '\n'; }

// Blocks after the first begin where a line of the processor's cache does, which saves the indexer split loads.
size_t PastAlignment(const char* block) { return reinterpret_cast<uintptr_t>(block) % 64; }

} // namespace

CZTLStreamSocket::CZTLStreamSocket() : m_buffer(std::make_unique<char[]>(kCapacity + kLineSlack)) {}

void CZTLStreamSocket::Close() {
    m_fill = 0;
    m_halfSent = false;
    m_lastError = 0;
    m_stats.lastMessageTime = {};
    CAsyncSocket::Close();
    OnClose(0);
}

int CZTLStreamSocket::Receive(void* buffer, int length, int flags) {
    const int count = CAsyncSocket::Receive(buffer, length, flags);
    m_lastError = count < 0 ? GetLastError() : 0;
    if (count > 0) m_stats.bytesReceived.value += static_cast<uint32_t>(count);
    return count;
}

int CZTLStreamSocket::Send(const void* buffer, int length, int flags) {
    const int count = CAsyncSocket::Send(buffer, length, flags);
    m_lastError = count < 0 ? GetLastError() : 0;
    if (count > 0) m_stats.bytesSent.value += static_cast<uint32_t>(count);
    return count;
}

int CZTLStreamSocket::SendText(std::string_view text) {
    if (!m_halfSent) {
        const int count = Send(text.data(), static_cast<int>(text.size()));
        m_halfSent = count > 0 && static_cast<size_t>(count) < text.size();
        return count;
    }
    const std::string separated = fmt::format("\n{}", text);
    const int count = Send(separated.data(), static_cast<int>(separated.size()));
    if (count < 1) return count;
    m_halfSent = count > 1 && static_cast<size_t>(count) < separated.size();
    return count - 1;
}

bool CZTLStreamSocket::Connect(const char* host, unsigned port) {
    const bool connected = CAsyncSocket::Connect(host, port);
    if (connected) MarkConnected();
    return connected;
}

void CZTLStreamSocket::OnReceive(int error) {
    if (error != 0) {
        m_lastError = error;
        return;
    }
    m_lastReceived = Receive(m_buffer.get() + m_fill, kCapacity - m_fill - 1, 0);
    ProcessReceivedData(m_lastReceived);
}

void CZTLStreamSocket::OnConnect(int error) {
    m_lastError = error;
    if (error == 0) MarkConnected();
}

void CZTLStreamSocket::OnClose(int error) {
    m_stats.connectTime = {};
    m_stats.status = "Not Connected";
    m_lastError = error;
}

void CZTLStreamSocket::OnMessage(std::string_view) {}

void CZTLStreamSocket::OnMessagesAhead(std::string_view, std::string_view) {}

void CZTLStreamSocket::MarkConnected() {
    m_stats.status = "Connected";
    m_stats.connectTime = Now();
}

void CZTLStreamSocket::ProcessReceivedData(int count) {
    if (count < 1) return;
    m_stats.bytesReceived.value += static_cast<uint32_t>(count);
    const CDeleteWatch watch(*this);
    char* const end = m_buffer.get() + m_fill + count;
    *end = '\0';
    char* line = m_buffer.get();
    // The clock is read once for all the lines of a read: its whole seconds hardly ever differ in between.
    SDateTime now;
    uint16_t ends[kLineBlock / 2 + 2];
    size_t size = 0;
    for (char* block = line + m_fill; block < end; block += size) {
        size = std::min(kLineBlock - PastAlignment(block), static_cast<size_t>(end - block));
        const SLineEnds found = IndexLineEnds(block, size, ends);
        m_nulsWait = m_nulsWait || found.hasNul;
        const auto lineAt = [&](size_t i) {
            const char* begin = block + ends[i - 1] + 1;
            if (EndsLine(*begin)) ++begin;
            return std::string_view(begin, static_cast<size_t>(std::max<ptrdiff_t>(0, block + ends[i] - begin)));
        };
        for (size_t i = 0; i < found.count; ++i) {
            if (i + kLater < found.count) OnMessagesAhead(lineAt(i + kLater), lineAt(i + kSoon));
            char* const lineEnd = block + ends[i];
            char* next = lineEnd;
            do *next++ = '\0';
            while (EndsLine(*next));
            const size_t length = m_nulsWait ? std::strlen(line) : static_cast<size_t>(lineEnd - line);
            const std::string_view text{std::exchange(line, next), length};
            if (text.empty()) continue;
            if (!now.valid) now = Now();
            m_stats.lastMessageTime = now;
            ++m_stats.messagesReceived.value;
            OnMessage(text);
            if (watch.Deleted()) return;
        }
    }
    m_fill = static_cast<int>(end - line);
    m_nulsWait = m_nulsWait && std::memchr(line, '\0', static_cast<size_t>(m_fill)) != nullptr;
    if (line > m_buffer.get()) std::memmove(m_buffer.get(), line, static_cast<size_t>(m_fill));
}

} // namespace vx
