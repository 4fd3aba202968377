// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace vx::test {

/// A feed client without its sockets: takes the commands of the level-1 connection as they are sent and answers in
/// lines, which wait until they are taken out. It knows the symbols of its market, and serves as many as its limit.
class CSimulatedFeed {
public:
    using Quote = std::map<std::string_view, std::string>; ///< Values by the names of update fields.
    struct SLine {
        std::string text, symbol;
        Quote quote;          ///< What a data line carries.
        bool rejects = false; ///< The symbol is unknown.
    };

    /// Another connection: nothing is watched on it yet.
    void Reconnect();
    /// What a send returns: the bytes taken, -1 for none.
    int Take(std::string_view command);
    /// A value of the market changes; a line says so when the symbol is watched.
    void Set(const std::string& symbol, std::string_view field, int value);
    /// All values of all watched symbols, as after a break.
    void Summarise();
    std::string StatusLine(std::string_view status) const;

    std::map<std::string, Quote> market;
    std::set<std::string> watched;
    std::set<std::string> left;         ///< Watched still, since the end of the watch was not taken.
    std::map<std::string, Quote> heard; ///< What the program took of each symbol since it watches it.
    std::deque<SLine> lines;
    uint32_t limit = 500;
    int deaf = 0;        ///< So many sends are not taken, or in part only.
    bool cuts = false;   ///< In part.
    bool missed = false; ///< A send was not taken whole.

private:
    void Obey(const std::string& command);
    void Say(char kind, const std::string& symbol, const Quote& quote, bool rejects = false);

    std::string m_sent; ///< The beginning of a command.
};

} // namespace vx::test
