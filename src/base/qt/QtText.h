// SPDX-License-Identifier: MIT
#pragma once

#include "base/Windows1252.h"

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

namespace vx {

// The program's texts are Windows-1252 bytes, those of widgets are QString: these two functions convert them.

/// Windows-1252 bytes to a QString.
inline QString QtText(std::string_view bytes) { return QString::fromStdU16String(Utf16FromWindows1252(bytes)); }

/// A QString to Windows-1252 bytes; a character that the code page does not hold becomes "?".
inline std::string BytesFromQt(const QString& text) {
    return Windows1252FromUtf16({reinterpret_cast<const char16_t*>(text.utf16()), static_cast<size_t>(text.size())});
}

/// A text for a tooltip or another place that would take "<b>" from a feed for markup: shown as it stands, long lines
/// wrapped. Empty stays empty.
inline QString PlainTipText(const QString& text) {
    if (text.isEmpty()) return {};
    return QStringLiteral("<p style='white-space:pre-wrap; margin:0'>") + text.toHtmlEscaped() + QStringLiteral("</p>");
}

/// A text of the feed as a list, a label or a title shows it: control characters as blanks, one that is longer than
/// mostBytes cut and ended with "...".
inline QString ShownText(std::string_view bytes, size_t mostBytes) {
    QString text = QtText(bytes.substr(0, mostBytes));
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control) c = QLatin1Char(' ');
    if (bytes.size() > mostBytes) text += QStringLiteral("...");
    return text;
}

/// Of a symbol in a label or a title.
inline constexpr size_t kMostShownSymbol = 40;
/// Of a text in a row of a list, and in its tooltip.
inline constexpr size_t kMostShownRow = 400;
inline constexpr size_t kMostShownTip = 1500;

} // namespace vx
