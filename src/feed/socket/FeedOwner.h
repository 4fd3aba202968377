// SPDX-License-Identifier: MIT
#pragma once

#include "base/MessageBox.h"

#include <array>
#include <string_view>

namespace vx {

/// The owner of the feed sockets: takes every received line by its first character.
///
/// Each line handler gets the line whole, first character included, as CZTLStreamSocket::OnMessage describes it: a
/// view into the receive buffer, with a NUL after it, gone when the call returns. Handlers run inside a socket
/// notification: they open no dialog and no event loop of their own, they post instead. Those that are not overridden
/// ignore the line.
class CFeedOwner {
public:
    virtual ~CFeedOwner() = default;

    virtual void OnUpdateMessage(std::string_view) {}      ///< 'Q'
    virtual void OnSummaryMessage(std::string_view) {}     ///< 'P'
    virtual void OnFundamentalMessage(std::string_view) {} ///< 'F', after ReceiveFundamentalLine's own step
    virtual void OnRegionalMessage(std::string_view) {}    ///< 'R'
    virtual void OnNewsMessage(std::string_view) {}        ///< 'N'
    virtual void OnSystemMessage(std::string_view) {}      ///< 'S', after ReceiveSystemLine's own step
    virtual void OnTimeMessage(std::string_view) {}        ///< 'T', after ReceiveTimeLine's own step
    virtual void OnSymbolNotFound(std::string_view) {}     ///< 'n'
    virtual void OnLookupMessage(std::string_view) {}      ///< 'L'
    virtual void OnDepthMessageZ(std::string_view) {}
    virtual void OnDepthMessageM(std::string_view) {}
    virtual void OnDepthMessage0(std::string_view) {}
    virtual void OnDepthMessage2(std::string_view) {}
    virtual void OnDepthMessage3(std::string_view) {}
    virtual void OnDepthMessage4(std::string_view) {}
    virtual void OnDepthMessage5(std::string_view) {}
    virtual void OnDepthMessage6(std::string_view) {}
    virtual void OnDepthMessage7(std::string_view) {}
    virtual void OnDepthMessage8(std::string_view) {}
    virtual void OnDepthMessage9(std::string_view) {}
    virtual void OnMessageq(std::string_view) {}
    virtual void OnMessageA(std::string_view) {}
    virtual void OnUnknownMessage(std::string_view) {} ///< Every other first byte, 0x80 and above included.

    /// Two of the next lines, of any kind; see CZTLStreamSocket::OnMessagesAhead.
    virtual void ExpectMessages(std::string_view /*later*/, std::string_view /*soon*/) {}

    // The session's own steps for three kinds of lines; each calls the virtual handler of its kind when it is done.
    virtual void ReceiveSystemLine(std::string_view line) = 0;
    virtual void ReceiveTimeLine(std::string_view line) = 0;
    virtual void ReceiveFundamentalLine(std::string_view line) = 0;

    /// Shows a message box from the event loop, after those that wait already; returns at once.
    virtual void PostMessageBox(SMessageBox box) = 0;
};

using LineHandler = void (CFeedOwner::*)(std::string_view line);

/// Which handler of the owner takes a line, by the line's first byte.
extern const std::array<LineHandler, 256> kLineHandlers;

} // namespace vx
