#pragma once

namespace vx {

// Finds where a line of the feed ends. The fastest way that the processor knows is chosen once at start-up; the others
// are here for the tests and for processors without them.

/// Bytes that must be readable (with any content) behind the byte that ends the search.
inline constexpr int kLineScanSlack = 32;

/// The first NUL, CR or LF at or behind text, of which there must be one.
///
/// Shape   up to kLineScanSlack bytes behind the found byte are read, never judged
using LineScanner = char* (*)(char* text);

extern const LineScanner FindLineByte;

char* FindLineByteScalar(char* text);
#if defined(__x86_64__)
char* FindLineByteSse2(char* text);
/// Only where HasAvx2.
char* FindLineByteAvx2(char* text);
bool HasAvx2();
#endif

} // namespace vx
