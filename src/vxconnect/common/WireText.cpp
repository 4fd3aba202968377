// SPDX-License-Identifier: MIT
#include "vxconnect/common/WireText.h"

#include "base/Text.h"
#include "base/Windows1252.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>

namespace vx::sim {

namespace {

std::optional<QString> FromUtf8(std::string_view text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    if (decoder.hasError()) return std::nullopt;
    return decoded;
}

} // namespace

bool IsSymbolText(std::string_view text) {
    const auto fits = [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F && c != ','; };
    return !text.empty() && text.size() <= kMaxSymbol && std::all_of(text.begin(), text.end(), fits);
}

bool IsUtf8(std::string_view text) { return FromUtf8(text).has_value(); }

std::optional<std::string> WireTextOf(std::string_view text) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(text.begin(), text.end(), isAscii)) return std::string(text);
    const std::optional<QString> decoded = FromUtf8(text);
    if (!decoded) return std::string(text);
    // A letter and its accent may have come apart.
    const std::u16string wanted = decoded->normalized(QString::NormalizationForm_C).toStdU16String();
    std::string out = Windows1252FromUtf16(wanted);
    if (Utf16FromWindows1252(out) != wanted) return std::nullopt;
    return out;
}

std::string WireFieldOf(std::string_view text) {
    const std::optional<QString> decoded = FromUtf8(text);
    std::string out = decoded ? Windows1252FromUtf16(decoded->toStdU16String()) : std::string(text);
    std::erase_if(out, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F || c == ','; });
    return out;
}

std::string Shown(std::string_view text) {
    constexpr qsizetype kMost = 60;
    const QString decoded = FromUtf8(text).value_or(QString::fromStdU16String(Utf16FromWindows1252(text)));
    QString out;
    for (const char32_t c : decoded.left(kMost).toUcs4()) {
        const QString letter = QString::fromUcs4(&c, 1);
        if (QChar::isPrint(c) && c != U'\\' && c != U'"')
            out += letter;
        else
            out += QString::fromStdString(EscapeBytes(letter.toStdString()));
    }
    return out.left(kMost).toStdString() + (decoded.size() > kMost || out.size() > kMost ? "..." : "");
}

} // namespace vx::sim
