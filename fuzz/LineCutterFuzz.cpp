// SPDX-License-Identifier: MIT
// Cuts arbitrary bytes, arriving in arbitrary pieces, with the product and with a plain byte loop; both must hand over
// the same lines. The first byte chooses how the rest is cut into pieces.

#include "feed/socket/StreamSocket.h"
#include "support/ReadsSocket.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

using namespace vx;

namespace {

class CCollectingSocket final : public test::CReadsSocket<CZTLStreamSocket> {
public:
    std::vector<std::string> lines;

protected:
    void OnMessage(std::string_view line) override {
        if (line.empty() || line.data()[line.size()] != '\0') std::abort();
        lines.emplace_back(line);
    }
};

std::vector<std::string> PlainLines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::string line;
    for (const char c : bytes) {
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        line.resize(line.find('\0') == std::string::npos ? line.size() : line.find('\0'));
        if (!line.empty()) lines.push_back(line);
        line.clear();
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0 || size > 60000) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    CCollectingSocket socket;
    uint32_t pieceSeed = data[0];
    for (size_t at = 0; at < bytes.size();) {
        pieceSeed = pieceSeed * 1664525u + 1013904223u;
        const size_t piece = data[0] == 0 ? bytes.size() : 1 + (pieceSeed >> 24) % (data[0] + 1u);
        socket.Read(std::string_view(bytes).substr(at, piece));
        at += piece;
    }
    if (socket.lines != PlainLines(bytes)) std::abort();
    if (socket.Stats().messagesReceived.value != socket.lines.size()) std::abort();
    return 0;
}
