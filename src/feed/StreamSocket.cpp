#include "feed/StreamSocket.h"

#include "base/Clock.h"
#include "feed/LineScan.h"

#include <cstring>

namespace vx {

namespace {

SDateTime Now() { return DateTimeFromLocal(CClock::Instance().Now()); }

bool EndsLine(char c) { return c == '\r' || c == '\n'; }

} // namespace

CZTLStreamSocket::CZTLStreamSocket() : m_buffer(std::make_unique<char[]>(kCapacity + kLineScanSlack)) {}

void CZTLStreamSocket::Close() {
    m_fill = 0;
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
    // What waited since earlier reads holds no line end, but it may hold the NUL at which its line's text ends.
    char* textEnd = m_fill > 0 ? static_cast<char*>(std::memchr(line, '\0', static_cast<size_t>(m_fill))) : nullptr;
    SDateTime now;
    for (char* at = line + m_fill; (at = FindLineByte(at)) < end;) {
        if (*at == '\0') {
            if (!textEnd) textEnd = at;
            ++at;
            continue;
        }
        if (!textEnd) textEnd = at;
        do *at++ = '\0';
        while (EndsLine(*at));
        if (textEnd > line) {
            // The clock is read once for all the lines of a read: its whole seconds hardly ever differ in between.
            if (!now.valid) now = Now();
            m_stats.lastMessageTime = now;
            ++m_stats.messagesReceived.value;
            OnMessage({line, static_cast<size_t>(textEnd - line)});
            if (watch.Deleted()) return;
        }
        line = at;
        textEnd = nullptr;
    }
    m_fill = static_cast<int>(end - line);
    if (line > m_buffer.get()) std::memmove(m_buffer.get(), line, static_cast<size_t>(m_fill));
}

} // namespace vx
