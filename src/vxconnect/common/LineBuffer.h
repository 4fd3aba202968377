#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// One line of a file or stream.
struct SInputLine {
    uint64_t number = 0;   ///< From 1.
    std::string_view text; ///< Without line end; holds until the buffer is used again.
    bool tooLong = false;  ///< Longer than kMaxLine: its text is only its beginning.
};

/// Cuts a stream of bytes into lines. LF or CR LF ends a line; a byte-order mark of UTF-8 before the first one is
/// dropped.
///
/// Owns    its bytes: never more than a line of kMaxLine and what was appended last
class CLineBuffer {
public:
    static constexpr size_t kMaxLine = 1'048'576;

    void Append(std::string_view bytes);
    /// No more bytes come: what is left is a line.
    void End() { m_ended = true; }
    /// The next whole line, nothing when more bytes are needed or there are none.
    std::optional<SInputLine> Next();

private:
    SInputLine Take(size_t length, size_t lineEnd);

    std::string m_bytes;
    size_t m_begin = 0;
    size_t m_searched = 0; // From the begin.
    uint64_t m_lines = 0;
    bool m_skipping = false; // The rest of a line that is too long.
    bool m_ended = false;
};

} // namespace vx::sim
