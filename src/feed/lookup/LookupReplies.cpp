// SPDX-License-Identifier: MIT
#include "feed/lookup/LookupReplies.h"

#include "base/Text.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/Ports.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kEnd = "!ENDMSG!";
constexpr size_t kTextStart = 15; // Behind "LNewsCounts,LN,"

} // namespace

void CNewsCountsReply::OnLine(std::string_view line) {
    if (ContainsText(line, kEnd)) {
        const std::string text = std::exchange(m_text, {});
        if (!std::exchange(m_tooLong, false) && m_receiver) m_receiver->OnNewsCounts(text);
        return;
    }
    if (m_tooLong) return;
    m_text.append(line.substr(std::min(kTextStart, line.size())));
    if (m_text.size() <= kMostBytes) return;
    m_tooLong = true;
    m_text = {};
    FeedLogOf(kLookupSocket).Failed(fmt::format("a reply with news counts has more than {} bytes", kMostBytes));
}

} // namespace vx
