#include "feed/lookup/TableReply.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::string_view kEndMarker = "!ENDMSG!";
constexpr std::string_view kSyntaxError = "!SYNTAX_ERROR!";

/// The texts of one line, its id the first of them.
struct SLineTexts {
    std::array<std::string_view, 1 + kMostTableTexts> texts;
    size_t count = 0;

    explicit SLineTexts(std::string_view line) {
        for (size_t comma = 0; count < texts.size() && !line.empty(); line.remove_prefix(comma + 1)) {
            comma = std::min(line.find(','), line.size());
            texts[count++] = line.substr(0, comma);
            if (comma == line.size()) return;
        }
    }
};

} // namespace

bool CTableReply::Take(std::string_view received) {
    received = received.substr(0, received.find('\0'));
    if (const size_t end = received.find(kEndMarker); end != std::string_view::npos) {
        received = received.substr(0, end);
        received.remove_prefix(std::min(received.find_first_not_of("\r\n"), received.size()));
        m_text.append(received);
        return false;
    }
    if (ContainsText(received, kSyntaxError)) {
        m_text.clear();
        return false;
    }
    m_text.append(received);
    return !TooLong();
}

bool CTableReply::HoldsSplitEnd() const {
    return ContainsText(m_text, kEndMarker) || ContainsText(m_text, kSyntaxError);
}

void ReadTableReply(std::string_view reply,
                    const std::function<void(int id, std::span<const std::string_view> texts)>& entry) {
    while (!reply.empty()) {
        const size_t end = std::min(reply.find('\n'), reply.size());
        std::string_view line = reply.substr(0, end);
        reply.remove_prefix(std::min(end + 1, reply.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        const SLineTexts fields(line);
        if (fields.count == 0 || fields.texts[0].empty()) continue;
        const int id = ReadInt32(fields.texts[0]);
        if (id < 0 || id >= kTableEntries) continue;
        entry(id, std::span(fields.texts).subspan(1, fields.count - 1));
    }
}

} // namespace vx
