// SPDX-License-Identifier: MIT
#include "base/RegistryFormat.h"

#include "base/Text.h"

#include <fmt/format.h>

#include <charconv>

namespace vx {

namespace {

constexpr std::string_view kFirstLine = "zantrel registry 1";
constexpr std::string_view kLastLine = "end";
constexpr std::string_view kNote =
    "; Settings of the current user. The program rewrites this file; close its windows before you edit it.\n";

/// Reads one line after the other; blanks at the ends do not count.
class CLines {
public:
    explicit CLines(std::string_view text) : m_rest(text) {}

    bool Next(std::string_view& line) {
        const auto next = TakeLine(m_rest);
        if (!next) return false;
        line = TrimBlanks(*next);
        ++m_number;
        return true;
    }

    int Number() const { return m_number; }

private:
    std::string_view m_rest;
    int m_number = 0;
};

bool IsIgnored(std::string_view line) { return line.empty() || line.front() == ';'; }

/// Takes a text in double quotes off the front of the line.
bool TakeQuoted(std::string_view& line, std::string& out) {
    if (line.empty() || line.front() != '"') return false;
    size_t end = 1;
    while (end < line.size() && line[end] != '"') end += line[end] == '\\' ? 2 : 1;
    if (end >= line.size() || !UnescapeBytes(line.substr(1, end - 1), out)) return false;
    line.remove_prefix(end + 1);
    return true;
}

bool TakeWord(std::string_view& line, std::string_view word) {
    line = TrimBlanks(line);
    if (line.substr(0, word.size()) != word) return false;
    line = TrimBlanks(line.substr(word.size()));
    return true;
}

bool ReadValue(std::string_view line, SRegistryValue& value) {
    if (TakeWord(line, "text")) return TakeQuoted(line, value.text) && line.empty();
    if (!TakeWord(line, "dword")) return false;
    value.kind = ERegistryKind::Dword;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), value.dword);
    return error == std::errc() && end == line.data() + line.size();
}

/// Reads one line between the first and the last; key is where values of the lines that follow belong.
bool ReadLine(std::string_view line, RegistryContent& content, RegistryKey*& key) {
    if (line.front() == '[') {
        std::string path;
        if (line.back() != ']' || !UnescapeBytes(line.substr(1, line.size() - 2), path)) return false;
        key = &content[NormalizeRegistryKey(path)];
        return true;
    }
    std::string name;
    SRegistryValue value;
    if (!key || !TakeQuoted(line, name) || !TakeWord(line, "=") || !ReadValue(line, value)) return false;
    (*key)[name] = std::move(value);
    return true;
}

bool ReadLines(CLines& lines, RegistryContent& content) {
    std::string_view line;
    if (!lines.Next(line) || line != kFirstLine) return false;
    RegistryKey* key = nullptr;
    while (lines.Next(line)) {
        if (line == kLastLine) {
            while (lines.Next(line))
                if (!IsIgnored(line)) return false;
            return true;
        }
        if (!IsIgnored(line) && !ReadLine(line, content, key)) return false;
    }
    return false;
}

} // namespace

std::string NormalizeRegistryKey(std::string_view key) {
    std::string out;
    for (const char c : key)
        if (c != '\\' || (!out.empty() && out.back() != '\\')) out.push_back(c);
    if (!out.empty() && out.back() == '\\') out.pop_back();
    return out;
}

std::string FormatRegistry(const RegistryContent& content) {
    std::string out = fmt::format("{}\n{}", kFirstLine, kNote);
    for (const auto& [path, values] : content) {
        out += fmt::format("\n[{}]\n", EscapeBytes(path));
        for (const auto& [name, value] : values) {
            if (value.kind == ERegistryKind::Dword)
                out += fmt::format("\"{}\" = dword {}\n", EscapeBytes(name), value.dword);
            else
                out += fmt::format("\"{}\" = text \"{}\"\n", EscapeBytes(name), EscapeBytes(value.text));
        }
    }
    return out += fmt::format("\n{}\n", kLastLine);
}

std::optional<RegistryContent> ParseRegistry(std::string_view text, std::string* damage) {
    RegistryContent content;
    CLines lines(text);
    if (ReadLines(lines, content)) return content;
    if (damage) *damage = fmt::format("line {} is not understood or the file ends too early", lines.Number());
    return std::nullopt;
}

} // namespace vx
