// SPDX-License-Identifier: MIT
// Gives arbitrary lines to a session, each line of the input one, and checks what must hold whatever they say.

#include "SessionFuzz.h"

#include <algorithm>
#include <cstdlib>
#include <string>

using namespace vx;

namespace {

class CCheckedSession final : public CFeedSession {
public:
    explicit CCheckedSession(CRegistry& registry) : CFeedSession(registry) {}

    size_t mostPending = 0;

    // Without a port each attempt to send the first pending symbol appends it once more.
    void OnTimeMessage(std::string_view) override { ++mostPending; }
    void OnSystemMessage(std::string_view line) override {
        HandleReadyLine(line);
        // As many fields as commas, one more when text follows the last comma.
        const size_t fields = static_cast<size_t>(std::count(line.begin(), line.end(), ',')) + (line.back() != ',');
        const bool complete = line.starts_with("S,STATS,") && fields >= FeedStats::kFieldCount;
        if (complete != ReadFeedStats(line).has_value()) std::abort();
        if (complete && !Stats().valid) std::abort();
        if (complete && line.find("," + Stats().status + ",") == std::string_view::npos) std::abort();
        if (line.starts_with("S,SYMBOL LIMIT REACHED")) ++mostPending;
        if (LimitedSymbols().Pending().size() > mostPending) std::abort();
        if (!LimitedSymbols().Awaiting().empty()) std::abort(); // There is no port on which one could be sent.
    }

protected:
    void OnFeedConnected() override {
        if (Stats().status != "Connected") std::abort();
    }
    void OnFeedDisconnected() override {
        if (Stats().status != "Not Connected") std::abort();
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return fuzz::ReadBySession<CCheckedSession>(data, size, [](const CCheckedSession&) {});
}
