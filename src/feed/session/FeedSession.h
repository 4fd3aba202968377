// SPDX-License-Identifier: MIT
#pragma once

#include "base/MessageBox.h"
#include "data/store/L1DataStore.h"
#include "feed/lookup/LookupReplies.h"
#include "feed/session/FeedStats.h"
#include "feed/session/SymbolLimitQueue.h"
#include "feed/socket/FeedOwner.h"
#include "feed/socket/Ports.h"

#include <QObject>

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

class CZantrelClientAppSocket;

/// How the session with the feed client has come to its end; nothing is connected again during a run.
enum class EFeedEnd {
    None,
    Status,     ///< The status port is silent for good, quotes still come.
    Quotes,     ///< No quote will come any more.
    Unreachable ///< One of the two connections was never made.
};

/// The level-1 connection as the store of market data sees it: nothing until the feed client is ready for watches.
///
/// Owns    nothing; the socket must outlive it or be taken away with SetSocket(nullptr)
class CLevel1Port final : public CL1CommandPort {
public:
    void SetSocket(CZantrelClientAppSocket* socket) { m_socket = socket; }

    /// Sends one command and counts it as a message sent, whatever became of it.
    int Send(std::string_view command) override;
    bool IsOpen() const override;

private:
    CZantrelClientAppSocket* m_socket = nullptr;
};

/// Shows message boxes from the event loop, one at a time, in the order they were posted.
///
/// A box opened inside a socket notification would keep that socket silent until the user answers; a posted one lets
/// the feed run on meanwhile.
///
/// Owns    the boxes that wait; they go unseen with the queue
class CMessageBoxQueue {
public:
    void Post(SMessageBox box);

private:
    void Schedule();
    void ShowNext();

    std::deque<SMessageBox> m_waiting;
    bool m_busy = false; ///< A box is open or its turn is posted.
    QObject m_context;   ///< Turns that are still posted go with it.
};

/// The session with the feed client: its sockets, what it says about itself, and the symbols that it refused for now.
///
/// The main frame derives from it and from the framework's window. Its start calls LaunchFeedClient and OpenAdminPort
/// (best after the first paint: a feed client that is not there yet costs 250 ms of the GUI thread per attempt), its
/// OnFeedConnected calls OpenDataPorts, its OnSystemMessage asks HandleReadyLine whether watches may begin.
///
/// Owns    the sockets, each made at most once and living as long as the session
/// Thread  GUI thread only, with an event loop
class CFeedSession : public CFeedOwner {
public:
    explicit CFeedSession(CRegistry& registry = CRegistry::CurrentUser());
    ~CFeedSession() override;

    /// which: one of EFeedSocket, here and below; other numbers have no socket.
    ///
    /// Errors  false when the socket exists already or the system gives none
    bool CreateFeedSocket(int which, uint32_t retries);
    /// Sends a text once and counts one message sent, whatever the send returned.
    ///
    /// Returns what the send returned, -1 without a socket
    int SendToFeed(int which, std::string_view text);
    /// Null before the socket is made.
    CZantrelClientAppSocket* FeedSocket(int which) const;
    /// "Level1", "MarketDepth", "Lookup", "Admin", "Scans", else "Unknown".
    static const char* FeedSocketName(int which);

    /// Starts the feed client; when that fails a message box is posted and nothing else changes.
    void LaunchFeedClient();
    /// Opens the port on which the feed client tells its status, with ten retries.
    void OpenAdminPort();
    /// Opens the lookup port and then the level-1 port, with 240 retries each; those that are taken stay as they are.
    ///
    /// Shape   updateFields: the names of the fields that update lines shall carry, as they stand
    void OpenDataPorts(std::string_view updateFields);

    /// Where the level-1 store sends its commands; open from the first ready line on.
    CL1CommandPort& Level1Commands() { return m_level1Port; }
    /// The last complete status line.
    const FeedStats& Stats() const { return m_stats; }
    /// Symbols refused for the symbol limit and on their way back. Call Forget when nobody watches a symbol any more.
    CSymbolLimitQueue& LimitedSymbols() { return m_limited; }
    const CSymbolLimitQueue& LimitedSymbols() const { return m_limited; }

    /// The state of the connections that quotes and status need.
    EFeedEnd FeedEnd() const;

    /// Asks for symbols on the lookup port, see SymbolSearchRequest; the results so far are dropped.
    ///
    /// Errors  false when the request did not go out, and for an empty text, for which nothing happens
    bool SymbolSearch(ESearchBy by, std::string_view text, std::string_view marketFilter, std::string_view typeFilter);
    /// What has come for searches and requests for news counts.
    CLookupReplies& LookupReplies() { return m_lookupReplies; }

    /// Appends one block per open socket to an emptied text: the socket's name and address, and its message counts.
    virtual void GetConnectionStats(std::string& text) const;

    // The first reads status and symbol-limit lines, the second lets refused symbols try again, the third notes
    // that a symbol was taken; each then calls the virtual handler of its kind.
    void ReceiveSystemLine(std::string_view line) final;
    void ReceiveTimeLine(std::string_view line) final;
    void ReceiveFundamentalLine(std::string_view line) final;

    void OnLookupMessage(std::string_view line) override { m_lookupReplies.OnLine(line); }

    void PostMessageBox(SMessageBox box) override;

protected:
    /// One of the session's sockets, not yet connected.
    virtual std::unique_ptr<CZantrelClientAppSocket> MakeSocket(EFeedSocket which, uint32_t retries);
    /// The status became "Connected" (the first time included) or "Not Connected".
    virtual void OnFeedConnected() {}
    virtual void OnFeedDisconnected() {}
    /// Whether a row holds a symbol, or one of its regions.
    virtual bool IsWanted(std::string_view /*symbol*/) const { return false; }
    /// The feed client has refused a symbol for the symbol limit; LimitedSymbols have it.
    virtual void OnSymbolRefused(std::string_view /*symbol*/) {}

    /// Checks whether a system line says that the feed client is ready for watches. If so, opens Level1Commands, asks
    /// for news, and returns true: the caller then watches its symbols. It may come more than once, on any port.
    bool HandleReadyLine(std::string_view line);

private:
    void OpenPort(EFeedSocket which, uint32_t retries, const SPortSetting& port, std::string_view updateFields);
    void ReceiveStatusLine(std::string_view line);

    CNorvPorts m_ports;
    FeedStats m_stats;
    CSymbolLimitQueue m_limited;
    CLevel1Port m_level1Port;
    CLookupReplies m_lookupReplies;
    CMessageBoxQueue m_messageBoxes;
    std::array<std::unique_ptr<CZantrelClientAppSocket>, kFeedSocketCount> m_sockets;
};

} // namespace vx
