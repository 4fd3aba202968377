#include "data/text/ContentsText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

constexpr std::array kWords = std::to_array<std::pair<char, std::string_view>>({{'C', "TRADE"},
                                                                                {'E', "EXTENDED TRADE"},
                                                                                {'O', "OTHER TRADE"},
                                                                                {'b', "BID"},
                                                                                {'a', "ASK"},
                                                                                {'o', "OPEN"},
                                                                                {'h', "HIGH"},
                                                                                {'l', "LOW"},
                                                                                {'c', "CLOSE"},
                                                                                {'s', "SETTLEMENT"},
                                                                                {'v', "VOLUME"}});

} // namespace

size_t ContentsText(std::string_view contents, std::span<char> out) {
    size_t size = 0;
    const auto append = [&](std::string_view text) {
        const size_t part = std::min(text.size(), out.size() - size);
        std::copy_n(text.data(), part, out.data() + size);
        size += part;
    };
    if (contents == "SUMMARY") {
        append(contents);
        return size;
    }
    for (size_t i = contents.size(); i-- > 0 && size < out.size();) {
        if (size > 0) append("/");
        const auto word = std::ranges::find(kWords, contents[i], &std::pair<char, std::string_view>::first);
        append(word == kWords.end() ? contents.substr(i, 1) : word->second);
    }
    return size;
}

} // namespace vx
