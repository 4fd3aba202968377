// SPDX-License-Identifier: MIT
#include "base/CsvWriter.h"

#include <algorithm>
#include <utility>

namespace vx {

void CCsvWriter::Plain(std::string_view text) {
    if (std::exchange(m_inRecord, true)) m_out += m_separator;
    m_out += text;
}

void CCsvWriter::OneLine(std::string_view text) {
    Plain(text);
    const auto breaks = [](char c) { return c == '\t' || c == '\n' || c == '\r'; };
    std::replace_if(m_out.end() - static_cast<std::ptrdiff_t>(text.size()), m_out.end(), breaks, ' ');
}

void CCsvWriter::Quoted(std::string_view text) {
    constexpr std::string_view kFormulaBegins = "=+-@\t\r";
    Plain("\"");
    if (!text.empty() && kFormulaBegins.find(text.front()) != std::string_view::npos) m_out += '\'';
    for (const char c : text) {
        if (c == '"') m_out += '"';
        m_out += c;
    }
    m_out += '"';
}

void CCsvWriter::EndRecord() {
    m_out += m_lineEnd;
    m_inRecord = false;
}

std::string CCsvWriter::Take() {
    m_inRecord = false;
    return std::exchange(m_out, {});
}

} // namespace vx
