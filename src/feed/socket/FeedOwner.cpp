// SPDX-License-Identifier: MIT
#include "feed/socket/FeedOwner.h"

namespace vx {

namespace {

constexpr std::array<LineHandler, 256> MakeTable() {
    std::array<LineHandler, 256> table{};
    for (LineHandler& handler : table) handler = &CFeedOwner::OnUnknownMessage;
    table['Q'] = &CFeedOwner::OnUpdateMessage;
    table['P'] = &CFeedOwner::OnSummaryMessage;
    table['F'] = &CFeedOwner::ReceiveFundamentalLine;
    table['R'] = &CFeedOwner::OnRegionalMessage;
    table['N'] = &CFeedOwner::OnNewsMessage;
    table['S'] = &CFeedOwner::ReceiveSystemLine;
    table['T'] = &CFeedOwner::ReceiveTimeLine;
    table['n'] = &CFeedOwner::OnSymbolNotFound;
    table['L'] = &CFeedOwner::OnLookupMessage;
    table['Z'] = &CFeedOwner::OnDepthMessageZ;
    table['M'] = &CFeedOwner::OnDepthMessageM;
    table['0'] = &CFeedOwner::OnDepthMessage0;
    table['2'] = &CFeedOwner::OnDepthMessage2;
    table['3'] = &CFeedOwner::OnDepthMessage3;
    table['4'] = &CFeedOwner::OnDepthMessage4;
    table['5'] = &CFeedOwner::OnDepthMessage5;
    table['6'] = &CFeedOwner::OnDepthMessage6;
    table['7'] = &CFeedOwner::OnDepthMessage7;
    table['8'] = &CFeedOwner::OnDepthMessage8;
    table['9'] = &CFeedOwner::OnDepthMessage9;
    table['q'] = &CFeedOwner::OnMessageq;
    table['A'] = &CFeedOwner::OnMessageA;
    return table;
}

} // namespace

constexpr std::array<LineHandler, 256> kLineHandlers = MakeTable();

} // namespace vx
