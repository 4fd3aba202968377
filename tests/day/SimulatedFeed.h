// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/QuoteFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

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
    void Reconnect() {
        watched.clear();
        left.clear();
        heard.clear();
        lines.clear();
        deaf = 0;
        m_sent.clear();
    }
    /// What a send returns: the bytes taken, -1 for none.
    int Take(std::string_view command) {
        const size_t verb = command.find_first_not_of('\n');
        const std::string symbol(command.substr(verb + 1, command.find_last_not_of('\n') - verb));
        if (command[verb] == 'r') heard.erase(symbol);
        size_t taken = command.size();
        if (deaf > 0) {
            --deaf;
            missed = true;
            taken = cuts ? taken / 2 : 0;
            if (command[verb] == 'r' && watched.contains(symbol)) left.insert(symbol);
        }
        for (const char c : command.substr(0, taken))
            if (c != '\n')
                m_sent += c;
            else
                Obey(std::exchange(m_sent, {}));
        return taken > 0 ? static_cast<int>(taken) : -1;
    }
    /// A value of the market changes; a line says so when the symbol is watched.
    void Set(const std::string& symbol, std::string_view field, int value) {
        market[symbol][field] = std::to_string(value);
        if (watched.contains(symbol)) Say('Q', symbol, {{field, market[symbol][field]}});
    }
    /// All values of all watched symbols, as after a break.
    void Summarise() {
        for (const std::string& symbol : watched) Say('P', symbol, market[symbol]);
    }
    std::string StatusLine(std::string_view status) const {
        return fmt::format("S,STATS,,,{},{},,,,,,,{},,,,,,,,,", limit, watched.size(), status);
    }

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
    void Obey(const std::string& command) {
        const std::string symbol = command.substr(std::min<size_t>(command.size(), 1));
        if (symbol.empty() || (command.front() != 'w' && command.front() != 'r')) return;
        left.erase(symbol);
        if (command.front() == 'r') {
            watched.erase(symbol);
        } else if (!market.contains(symbol)) {
            // Feed clients say it in either way.
            if (symbol.back() % 2 == 0)
                Say('P', symbol, {{"Last", "Not Found"}}, true);
            else
                lines.push_back({"n," + symbol, symbol, {}, true});
        } else if (watched.size() >= limit && !watched.contains(symbol)) {
            lines.push_back({"S,SYMBOL LIMIT REACHED," + symbol, {}, {}, false});
        } else {
            watched.insert(symbol);
            Say('F', symbol, {});
            Say('P', symbol, market[symbol]);
        }
    }
    void Say(char kind, const std::string& symbol, const Quote& quote, bool rejects = false) {
        std::string text = fmt::format("{},{},", kind, symbol);
        for (size_t slot = 1; slot < kUpdateFieldCount && !quote.empty(); ++slot) {
            const auto value = quote.find(kUpdateFields[slot].name);
            if (value != quote.end()) text += value->second;
            text += ',';
        }
        lines.push_back({std::move(text), symbol, quote, rejects});
    }

    std::string m_sent; ///< The beginning of a command.
};

} // namespace vx::test
