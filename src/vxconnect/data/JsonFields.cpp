#include "vxconnect/data/JsonFields.h"

#include "base/Windows1252.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringDecoder>

#include <algorithm>

#include <fmt/format.h>

namespace vx::sim {

namespace {

QByteArray Bytes(std::string_view text) { return {text.data(), static_cast<qsizetype>(text.size())}; }

bool IsUtf8(std::string_view text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString decoded = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return !decoder.hasError();
}

// Walks through an object that is known to be good JSON. Qt's own reader keeps neither the digits of a number nor the
// first of two members of one name.
class CMembers {
public:
    explicit CMembers(std::string_view json) : m_rest(json) {}

    void ReadAll(std::vector<SJsonField>& out) {
        Take('{');
        while (Peek() == '"') {
            SJsonField& field = out.emplace_back();
            field.name = Text(TakeString());
            Take(':');
            ReadValue(field);
            if (Peek() == ',') Take(',');
        }
    }

private:
    char Peek() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
        return m_rest.empty() ? '\0' : m_rest.front();
    }
    void Take(char wanted) {
        if (Peek() == wanted) m_rest.remove_prefix(1);
    }
    std::string_view TakeFirst(size_t length) {
        const std::string_view out = m_rest.substr(0, length);
        m_rest.remove_prefix(out.size());
        return out;
    }

    // A string with its quotes.
    std::string_view TakeString() {
        size_t end = 1;
        while (end < m_rest.size() && m_rest[end] != '"') end += m_rest[end] == '\\' ? 2 : 1;
        return TakeFirst(end + 1);
    }

    static std::string Text(std::string_view quoted) {
        if (quoted.find('\\') == std::string_view::npos) return std::string(quoted.substr(1, quoted.size() - 2));
        return QJsonDocument::fromJson('[' + Bytes(quoted) + ']').array().at(0).toString().toStdString();
    }

    void ReadValue(SJsonField& field) {
        switch (Peek()) {
        case '"':
            field.value = Text(TakeString());
            return;
        case '{':
        case '[':
            field.nested = true;
            return SkipNested();
        default:
            break;
        }
        const std::string_view word = TakeFirst(m_rest.find_first_of(",} \t\r\n"));
        field.value = word == "null" ? "" : word == "true" ? "1" : word == "false" ? "0" : word;
    }

    void SkipNested() {
        int depth = 0;
        do {
            const char next = Peek();
            if (next == '"') {
                TakeString();
                continue;
            }
            depth += next == '{' || next == '[' ? 1 : next == '}' || next == ']' ? -1 : 0;
            TakeFirst(1);
        } while (depth > 0 && !m_rest.empty());
    }

    std::string_view m_rest;
};

} // namespace

std::string ReadJsonLine(std::string_view line, std::vector<SJsonField>& out) {
    out.clear();
    std::string converted;
    if (!IsUtf8(line)) line = converted = Utf8FromWindows1252(line);
    QJsonParseError status;
    const QJsonDocument document = QJsonDocument::fromJson(Bytes(line), &status);
    if (status.error != QJsonParseError::NoError)
        return fmt::format("no JSON object: {} at character {}", status.errorString().toStdString(), status.offset + 1);
    if (!document.isObject()) return "no JSON object";
    CMembers(line).ReadAll(out);
    return {};
}

} // namespace vx::sim
