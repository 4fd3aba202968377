// SPDX-License-Identifier: MIT
// Gives arbitrary lines of the lookup port to a session and to plain code; both must collect the same search results
// and the same news counts, in their order.

#include "SessionFuzz.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

using namespace vx;

namespace {

struct SPlainReplies {
    std::vector<SSearchResult> results;
    std::string text;
    std::vector<std::string> counts;

    void OnLine(const std::string& line) {
        if (line.compare(0, 3, "LSe") == 0) OnSearchLine(line);
        if (line.compare(0, 3, "LNe") == 0) OnNewsLine(line);
    }

private:
    void OnSearchLine(const std::string& line) {
        std::vector<std::string> fields{""};
        for (const char c : line) {
            if (c == ',')
                fields.emplace_back();
            else
                fields.back() += c;
        }
        if (fields.back().empty()) fields.pop_back();
        for (std::string& field : fields) field.resize(std::min(field.size(), size_t{255}));
        if (fields.size() >= 6) {
            if (results.size() < 10000) results.push_back({fields[2], fields[5], fields[3], fields[4]});
        } else if (line.find("LSearch,!ENDMSG!") != std::string::npos && results.empty()) {
            results.push_back({"No Results Found", "", "", ""});
        }
    }
    void OnNewsLine(const std::string& line) {
        if (line.find("!ENDMSG!") != std::string::npos) {
            counts.push_back(text);
            text.clear();
        } else if (line.size() > 15) {
            text += line.substr(15);
        }
    }
};

class CCheckedSession final : public CFeedSession, public CNewsCountsReceiver {
public:
    explicit CCheckedSession(CRegistry& registry) : CFeedSession(registry) {
        LookupReplies().newsCounts.SetReceiver(this);
    }

    SPlainReplies plain;
    std::vector<std::string> counts;

    void OnLookupMessage(std::string_view line) override {
        plain.OnLine(std::string(line));
        CFeedSession::OnLookupMessage(line);
        if (LookupReplies().search.Results().size() != plain.results.size() || counts.size() != plain.counts.size())
            std::abort();
    }
    void OnNewsCounts(std::string_view xml) override { counts.emplace_back(xml); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return fuzz::ReadBySession<CCheckedSession>(data, size, [](CCheckedSession& session) {
        const bool same = session.LookupReplies().search.Results() == session.plain.results;
        if (!same || session.counts != session.plain.counts) std::abort();
    });
}
