// SPDX-License-Identifier: MIT
#include "day/Program.h"

#include "base/Clock.h"
#include "data/catalogue/UpdateFields.h"
#include "day/SimulatedFeed.h"
#include "feed/socket/ClientAppSocket.h"

namespace vx::test {

namespace {

/// A connection that is there at once.
class CSimulatedSocket final : public CZantrelClientAppSocket {
public:
    CSimulatedSocket(CSimulatedFeed* feed, uint32_t retries) : CZantrelClientAppSocket(retries), m_feed(feed) {}

    bool Connect(const char*, unsigned) override {
        OnConnect(0);
        return true;
    }
    bool IsConnected() const override { return true; }
    int Send(const void* bytes, int length, int) override {
        return m_feed ? m_feed->Take({static_cast<const char*>(bytes), static_cast<size_t>(length)}) : length;
    }
    using CZantrelClientAppSocket::OnMessage;

private:
    CSimulatedFeed* m_feed; ///< Null for the connections on which nothing is watched.
};

} // namespace

CProgram::CProgram(CSimulatedFeed& feed) : CFeedSession(registry), m_feed(feed) {
    store.SetCommandPort(&Level1Commands());
    doc.AlertRules().SetReceiver(this);
    doc.NewDocument();
    feed.Reconnect();
    OpenAdminPort();
    Hear(kAdminSocket, feed.StatusLine("Connected"));
    Hear(kLevel1Socket, "S,IP,127.0.0.1,5009");
}

void CProgram::Hear(EFeedSocket which, const std::string& line) {
    static_cast<CSimulatedSocket*>(FeedSocket(which))->OnMessage(line);
}

void CProgram::Turn() {
    store.NewTurn();
    store.SendPendingWatches();
    doc.OnPaintMessage();
}

std::unique_ptr<CZantrelClientAppSocket> CProgram::MakeSocket(EFeedSocket which, uint32_t retries) {
    return std::make_unique<CSimulatedSocket>(which == kLevel1Socket ? &m_feed : nullptr, retries);
}

void CProgram::OnFeedConnected() { OpenDataPorts(UpdateFieldList()); }

void CProgram::OnSystemMessage(std::string_view line) {
    if (!HandleReadyLine(line)) return;
    doc.SetFeedReady();
    store.SendPendingWatches();
}

void CProgram::OnSymbolNotFound(std::string_view line) {
    LimitedSymbols().Forget(line.substr(2));
    doc.SymbolNotFound(line.substr(2));
}

void CProgram::OnSymbolRefused(std::string_view symbol) {
    if (m_unwatched.Has(symbol) && !IsWanted(symbol)) LimitedSymbols().Forget(symbol);
}

void CProgram::OnUnwatched(std::string_view symbol) {
    m_unwatched.Note(symbol);
    if (!IsWanted(symbol)) LimitedSymbols().Forget(symbol);
}

void CProgram::PostFired(std::string record, const A_INFO&) {
    const SAlertRecord read = ReadAlertRecord(record);
    fired.push_back(read.threshold);
    history.NoteFired(FiringOf(read, CClock::Instance().MonotonicMs(), 0));
}

} // namespace vx::test
