// SPDX-License-Identifier: MIT
#include "day/SimulatedFeed.h"

#include "base/fields/QuoteFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx::test {

void CSimulatedFeed::Reconnect() {
    watched.clear();
    left.clear();
    heard.clear();
    lines.clear();
    deaf = 0;
    m_sent.clear();
}

int CSimulatedFeed::Take(std::string_view command) {
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

void CSimulatedFeed::Obey(const std::string& command) {
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

void CSimulatedFeed::Say(char kind, const std::string& symbol, const Quote& quote, bool rejects) {
    std::string text = fmt::format("{},{},", kind, symbol);
    for (size_t slot = 1; slot < kUpdateFieldCount && !quote.empty(); ++slot) {
        const auto value = quote.find(kUpdateFields[slot].name);
        if (value != quote.end()) text += value->second;
        text += ',';
    }
    lines.push_back({std::move(text), symbol, quote, rejects});
}

void CSimulatedFeed::Set(const std::string& symbol, std::string_view field, int value) {
    market[symbol][field] = std::to_string(value);
    if (watched.contains(symbol)) Say('Q', symbol, {{field, market[symbol][field]}});
}

void CSimulatedFeed::Summarise() {
    for (const std::string& symbol : watched) Say('P', symbol, market[symbol]);
}

std::string CSimulatedFeed::StatusLine(std::string_view status) const {
    return fmt::format("S,STATS,,,{},{},,,,,,,{},,,,,,,,,", limit, watched.size(), status);
}

} // namespace vx::test
