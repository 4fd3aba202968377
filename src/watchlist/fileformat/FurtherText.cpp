// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherText.h"

#include "base/Number.h"
#include "base/Text.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <algorithm>

namespace vx {

namespace {

constexpr char kEntryEnd = ';';
constexpr char kFieldEnd = ' ';
constexpr char kQuote = '"';
constexpr char kEscape = '\\';

/// The position after the quote that ends a quoted text; the text's size when none does.
size_t EndOfQuoted(std::string_view text, size_t begin) {
    size_t end = begin + 1;
    while (end < text.size() && text[end] != kQuote) end += text[end] == kEscape ? 2 : 1;
    return std::min(end + 1, text.size());
}

} // namespace

void CFurtherWriter::BeginField() {
    if (m_inEntry) m_out += kFieldEnd;
    m_inEntry = true;
}

CFurtherWriter& CFurtherWriter::Quote(std::string_view text) {
    BeginField();
    m_out += kQuote;
    m_out += EscapeBytes(text);
    m_out += kQuote;
    return *this;
}

void CFurtherWriter::EndEntry() {
    m_out += kEntryEnd;
    m_inEntry = false;
}

bool CFurtherReader::Next() {
    size_t end = 0;
    while (end < m_value.size() && m_value[end] != kEntryEnd)
        end = m_value[end] == kQuote ? EndOfQuoted(m_value, end) : end + 1;
    if (end >= m_value.size()) return false;
    m_entry = m_rest = m_value.substr(0, end);
    m_value.remove_prefix(end + 1);
    return true;
}

std::string_view CFurtherReader::Word() { return TakeUntil(m_rest, kFieldEnd); }

int32_t CFurtherReader::Int() { return ReadInt32(Word()); }

double CFurtherReader::Double() { return ReadDouble(Word()); }

std::optional<std::string> CFurtherReader::Text() {
    if (!IsText()) return std::nullopt;
    const size_t end = EndOfQuoted(m_rest, 0);
    std::string text;
    const bool whole = end >= 2 && m_rest[end - 1] == kQuote && (end == m_rest.size() || m_rest[end] == kFieldEnd);
    if (!whole || !UnescapeBytes(m_rest.substr(1, end - 2), text)) return std::nullopt;
    m_rest.remove_prefix(std::min(m_rest.size(), end + 1));
    return text;
}

} // namespace vx
