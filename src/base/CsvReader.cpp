// SPDX-License-Identifier: MIT
#include "base/CsvReader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kSeparators = ",;\t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnds = "\r\n";

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

} // namespace

char CsvSeparatorOf(std::string_view firstLine) {
    std::array<size_t, kSeparators.size()> counts{};
    bool quoted = false;
    for (const char c : firstLine) {
        if (c == '"') quoted = !quoted;
        const size_t place = quoted ? std::string_view::npos : kSeparators.find(c);
        if (place != std::string_view::npos) ++counts[place];
    }
    return kSeparators[static_cast<size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

void CCsvReader::Append(std::string_view bytes) {
    if (m_whole) BeginRecord();
    m_bytes.erase(0, m_begin);
    m_begin = 0;
    m_bytes += bytes;
}

std::string_view CCsvReader::Field(size_t index) const {
    if (index >= m_fields.size()) return {};
    const SField& field = m_fields[index];
    if (field.unescaped != kNone) return m_unescaped[field.unescaped];
    return Text().substr(field.begin, field.size);
}

bool CCsvReader::Next() {
    if (m_whole) BeginRecord();
    if (!Ready()) return false;
    for (;;) {
        const std::string_view text = Text();
        if (m_at < text.size()) {
            Step(text);
        } else if (!m_ended) {
            return false;
        } else if (m_state == EState::Quoted) {
            TakeQuoteAsText();
            continue;
        } else {
            m_unended = true;
            m_state == EState::Closed ? EndQuotedField(text) : EndField(m_fieldBegin, text.size());
            EndRecord(0);
        }
        if (m_whole) return true;
    }
}

// Drops what lies between two records; false when the next one has not begun.
bool CCsvReader::Ready() {
    if (!SkipMark() || !SkipRest() || Text().empty()) return false;
    if (m_separator != kFindSeparator) return true;
    const std::string_view text = Text();
    const size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const size_t end = text.find_first_of(kLineEnds, begin);
    if (end == std::string_view::npos && !m_ended && text.size() <= kMaxRecord) return false;
    m_separator = CsvSeparatorOf(text.substr(begin, end - begin));
    return true;
}

bool CCsvReader::SkipMark() {
    const std::string_view text = Text();
    if (m_atStart && !m_ended && text.size() < kByteOrderMark.size() && kByteOrderMark.starts_with(text)) return false;
    if (m_atStart && text.starts_with(kByteOrderMark)) {
        m_begin += kByteOrderMark.size();
        m_taken += kByteOrderMark.size();
    }
    m_atStart = false;
    return true;
}

// The rest of a record that is too long, and the LF of a line end whose CR was the end of the record before.
bool CCsvReader::SkipRest() {
    if (m_skipping) {
        const std::string_view text = Text();
        const size_t end = std::min(text.find_first_of(kLineEnds), text.size());
        m_begin += end;
        m_taken += end;
        if (end == text.size()) return false;
        m_skipping = false;
        m_afterCr = text[end] == '\r';
        ++m_begin;
        ++m_taken;
    }
    if (!m_afterCr || Text().empty()) return true;
    m_afterCr = false;
    if (Text().front() == '\n') {
        ++m_begin;
        ++m_taken;
    }
    return true;
}

void CCsvReader::BeginRecord() {
    m_begin += m_consumed;
    m_fields.clear();
    m_unescapedCount = 0;
    m_state = EState::FieldBegin;
    m_at = m_fieldBegin = 0;
    m_badQuote = m_tooLong = m_unended = m_whole = false;
}

void CCsvReader::Step(std::string_view text) {
    switch (m_state) {
    case EState::FieldBegin:
        m_at = std::min(text.find_first_not_of(' ', m_at), text.size());
        if (m_at == text.size()) break;
        m_state = text[m_at] == '"' ? EState::Quoted : EState::Plain;
        if (m_state == EState::Plain) return;
        m_quote = m_at++;
        m_quotedLines = 0;
        m_doubled = false;
        return;
    case EState::Plain:
        while (m_at < text.size() && text[m_at] != m_separator && !IsLineEnd(text[m_at])) ++m_at;
        if (m_at == text.size() || m_at > kMaxRecord) break;
        EndField(m_fieldBegin, m_at);
        return LeaveField(text);
    case EState::Quoted:
        StepQuoted(text);
        break;
    case EState::Closed:
        return StepClosed(text);
    }
    if (m_at <= kMaxRecord) return;
    EndField(m_fieldBegin, kMaxRecord);
    m_at = kMaxRecord;
    m_tooLong = m_skipping = true;
    EndRecord(0);
}

void CCsvReader::StepQuoted(std::string_view text) {
    for (; m_at < text.size() && text[m_at] != '"'; ++m_at)
        m_quotedLines += text[m_at] == '\r' || (text[m_at] == '\n' && text[m_at - 1] != '\r');
    if (m_quotedLines > kMostQuotedLines || m_at > kMaxRecord) return TakeQuoteAsText();
    if (m_at == text.size()) return;
    m_closing = m_at++;
    m_state = EState::Closed;
}

// The next character shows whether a quote was the closing one.
void CCsvReader::StepClosed(std::string_view text) {
    const char next = text[m_at];
    if (next == '"' && m_at == m_closing + 1) {
        m_doubled = true;
        m_state = EState::Quoted;
        ++m_at;
    } else if (next == ' ') {
        ++m_at;
    } else if (next == m_separator || IsLineEnd(next)) {
        EndQuotedField(text);
        LeaveField(text);
    } else {
        TakeQuoteAsText();
    }
}

void CCsvReader::TakeQuoteAsText() {
    m_badQuote = true;
    m_state = EState::Plain;
    m_at = m_fieldBegin;
}

void CCsvReader::EndField(size_t begin, size_t end) { m_fields.push_back({begin, end - begin}); }

// Over the separator to the next field, or to the end of the record.
void CCsvReader::LeaveField(std::string_view text) {
    if (IsLineEnd(text[m_at])) return EndRecord(text.substr(m_at, 2) == kLineEnds ? 2 : 1);
    m_fieldBegin = ++m_at;
    m_state = EState::FieldBegin;
}

void CCsvReader::EndQuotedField(std::string_view text) {
    m_extraLines += m_quotedLines;
    EndField(m_quote + 1, m_closing);
    if (!m_doubled) return;
    if (m_unescapedCount == m_unescaped.size()) m_unescaped.emplace_back();
    m_fields.back().unescaped = m_unescapedCount;
    std::string& out = m_unescaped[m_unescapedCount++];
    out.clear();
    for (size_t i = m_quote + 1; i < m_closing; ++i) {
        out += text[i];
        i += text[i] == '"';
    }
}

void CCsvReader::EndRecord(size_t lineEnd) {
    m_consumed = m_at + lineEnd;
    m_taken += m_consumed;
    m_line = m_nextLine;
    m_nextLine += 1 + std::exchange(m_extraLines, 0);
    m_afterCr = lineEnd == 1 && Text()[m_at] == '\r';
    m_whole = true;
}

} // namespace vx
