#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace vx {

/// Collects the reply to a request on a blocking lookup connection, one receive after the other.
///
/// Each receive is searched for the end of the reply by itself: an end marker that arrives split over two receives is
/// not recognised. A receive counts up to its first NUL. Line ends at the begin of the receive with the end marker are
/// dropped, wherever the receive before was cut.
///
/// Owns    the text
/// Thread  one thread at a time
class CTableReply {
public:
    /// A reply beyond so many bytes is no table: a table of 256 entries has some 20 KiB.
    static constexpr size_t kMostBytes = 4 * 1024 * 1024;

    /// Takes what one receive brought. False when the reply has ended: at its end marker, at a syntax error, which
    /// empties the text, or beyond kMostBytes.
    bool Take(std::string_view received);

    const std::string& Text() const { return m_text; }
    bool TooLong() const { return m_text.size() > kMostBytes; }
    /// Whether the text itself holds an end of a reply, which arrived in two pieces.
    bool HoldsSplitEnd() const;

private:
    std::string m_text;
};

/// Reads the lines of a code table: the id of an entry and its texts, separated by commas.
///
/// Shape   "7,ALPHA,Alpha Stock Exchange,1,EQ" -> 7 and up to four texts, fewer where the line has fewer; a text behind
///         the last comma counts only when it is not empty. One CR at the end of a line is dropped.
/// Errors  lines without an id, or with one outside 0 to 255, are skipped; an id that is no number reads as 0
/// Owns    nothing: the texts are views of the reply
/// Thread  any
/// Source  docs/feed-protocol.md, "Code tables"
void ReadTableReply(std::string_view reply,
                    const std::function<void(int id, std::span<const std::string_view> texts)>& entry);

inline constexpr int kTableEntries = 256;
inline constexpr size_t kMostTableTexts = 4;

} // namespace vx
