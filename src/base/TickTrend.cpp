#include "base/TickTrend.h"

#include "base/Windows1252.h"

namespace vx {

std::string Utf8FromTickTrend(std::string_view bytes) {
    std::string out;
    for (const char byte : bytes) {
        switch (byte) {
        case kTickUp:
            out += "\u25B2";
            break;
        case kTickDown:
            out += "\u25BC";
            break;
        case kTickDot:
            out += "\u2022";
            break;
        default:
            out += Utf8FromWindows1252({&byte, 1});
        }
    }
    return out;
}

} // namespace vx
