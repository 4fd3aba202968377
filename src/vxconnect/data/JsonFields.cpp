// SPDX-License-Identifier: MIT
#include "vxconnect/data/JsonFields.h"

#include "base/Windows1252.h"
#include "vxconnect/common/WireText.h"

#include <QString>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

namespace vx::sim {

namespace {

// By hand: Qt's reader keeps neither the digits of a number nor the first of two members of one name.
class CJsonText {
public:
    explicit CJsonText(std::string_view text) : m_text(text) {}

    std::string ReadAll(std::vector<SJsonField>& out) {
        if (Peek() != '{') return "no JSON object";
        if (ReadObject(&out, 0) && Peek() == '\0' && m_at == m_text.size()) return {};
        return fmt::format("no JSON object: {} at character {}", m_wrong, m_at + 1);
    }

private:
    static constexpr int kDeepest = 64;

    bool Wrong(const char* what) {
        m_wrong = what;
        return false;
    }
    // The next character that is no blank, NUL at the end.
    char Peek() {
        m_at = std::min(m_text.find_first_not_of(" \t\r\n", m_at), m_text.size());
        return m_at < m_text.size() ? m_text[m_at] : '\0';
    }
    bool Take(char wanted) {
        if (Peek() != wanted) return false;
        ++m_at;
        return true;
    }

    // The members of an object, or nothing of one that is left out.
    bool ReadObject(std::vector<SJsonField>* out, int depth) {
        Take('{');
        if (Take('}')) return true;
        do {
            SJsonField field;
            if (Peek() != '"') return Wrong("a name in quotes is missing");
            if (!ReadString(field.name)) return false;
            if (!Take(':')) return Wrong("a colon is missing");
            if (!ReadValue(field, depth)) return false;
            if (out) out->push_back(std::move(field));
        } while (Take(','));
        return Take('}') || Wrong("a comma or the end of the object is missing");
    }

    bool ReadList(int depth) {
        Take('[');
        if (Take(']')) return true;
        do {
            SJsonField left;
            if (!ReadValue(left, depth)) return false;
        } while (Take(','));
        return Take(']') || Wrong("a comma or the end of the list is missing");
    }

    bool ReadValue(SJsonField& field, int depth) {
        const char first = Peek();
        if (first == '"') return ReadString(field.value);
        if (first != '{' && first != '[') return ReadWord(field.value);
        field.nested = true;
        if (depth == kDeepest) return Wrong("too many lists and objects in each other");
        return first == '{' ? ReadObject(nullptr, depth + 1) : ReadList(depth + 1);
    }

    bool ReadWord(std::string& out) {
        const size_t end = std::min(m_text.find_first_of(",]} \t\r\n", m_at), m_text.size());
        const std::string_view word = m_text.substr(m_at, end - m_at);
        if (word == "true" || word == "false")
            out.assign(1, word == "true" ? '1' : '0');
        else if (IsNumber(word))
            out = word;
        else if (word != "null")
            return Wrong("a value is missing");
        m_at = end;
        return true;
    }

    static bool IsNumber(std::string_view text) {
        const auto take = [&](std::string_view characters) {
            const bool found = !text.empty() && characters.find(text.front()) != std::string_view::npos;
            if (found) text.remove_prefix(1);
            return found;
        };
        const auto digits = [&] {
            const size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
            text.remove_prefix(count);
            return count > 0;
        };
        take("-");
        if (!take("0") && !digits()) return false;
        if (take(".") && !digits()) return false;
        if (take("eE") && (take("+-"), !digits())) return false;
        return text.empty();
    }

    bool ReadString(std::string& out) {
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] != '\\')
                out += m_text[m_at];
            else if (!ReadEscape(out))
                return Wrong("a backslash begins no escape");
        }
        return Take('"') || Wrong("the end of a text is missing");
    }

    // Stops at the last character of the escape.
    bool ReadEscape(std::string& out) {
        constexpr std::string_view kLetters = "\"\\/bfnrt", kBytes = "\"\\/\b\f\n\r\t";
        const char letter = ++m_at < m_text.size() ? m_text[m_at] : '\0';
        if (const size_t known = kLetters.find(letter); known != std::string_view::npos) {
            out += kBytes[known];
            return true;
        }
        char16_t unit = 0;
        if (letter != 'u' || !ReadUnit(unit)) return false;
        std::u16string units(1, unit);
        const bool twoMayCome = QChar::isHighSurrogate(unit) && m_text.substr(m_at + 1, 2) == "\\u";
        if (twoMayCome) {
            m_at += 2;
            if (!ReadUnit(unit)) return false;
            units += unit;
        }
        out += QString::fromStdU16String(units).toStdString();
        return true;
    }

    bool ReadUnit(char16_t& out) {
        constexpr size_t kDigits = 4;
        uint16_t value = 0;
        const std::string_view digits = m_text.substr(m_at + 1, kDigits);
        const auto [end, status] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        m_at += kDigits;
        out = static_cast<char16_t>(value);
        return status == std::errc() && end == digits.data() + kDigits;
    }

    std::string_view m_text;
    size_t m_at = 0;
    const char* m_wrong = "more follows the object";
};

} // namespace

std::string ReadJsonLine(std::string_view line, std::vector<SJsonField>& out) {
    out.clear();
    if (IsUtf8(line)) return CJsonText(line).ReadAll(out);
    return CJsonText(Utf8FromWindows1252(line)).ReadAll(out);
}

} // namespace vx::sim
