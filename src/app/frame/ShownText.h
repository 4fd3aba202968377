#pragma once

#include "base/qt/QtText.h"

#include <cstddef>
#include <string_view>

namespace vx {

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
