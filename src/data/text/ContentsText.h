#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vx {

/// Puts the message contents of an update into words: "Cba" reads "ASK/BID/TRADE". The letters are taken from the last
/// to the first; one that has no word stands for itself. "SUMMARY" stays as it is.
///
/// Shape   returns the bytes written; what does not fit the buffer is cut
size_t ContentsText(std::string_view contents, std::span<char> out);

} // namespace vx
