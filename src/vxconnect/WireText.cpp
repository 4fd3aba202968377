#include "vxconnect/WireText.h"

#include "base/Escape.h"
#include "base/Windows1252.h"

#include <QStringDecoder>

#include <algorithm>

namespace vx::sim {

bool IsSymbolText(std::string_view text) {
    const auto fits = [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F && c != ','; };
    return !text.empty() && text.size() <= kMaxSymbol && std::all_of(text.begin(), text.end(), fits);
}

std::string WireTextOf(std::string_view text) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(text.begin(), text.end(), isAscii)) return std::string(text);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    if (decoder.hasError()) return std::string(text);
    return Windows1252FromUtf16(
        {reinterpret_cast<const char16_t*>(decoded.utf16()), static_cast<size_t>(decoded.size())});
}

std::string Shown(std::string_view text) {
    constexpr size_t kMost = 60;
    const std::string escaped = EscapeBytes(text.substr(0, kMost));
    return text.size() > kMost || escaped.size() > kMost ? escaped.substr(0, kMost) + "..." : escaped;
}

} // namespace vx::sim
