// SPDX-License-Identifier: MIT
// Takes arbitrary bytes as the reply to a table request, arriving in arbitrary pieces, with the product and with plain
// code on C strings; both must come to the same text and the same entries. The first byte chooses the pieces.

#include "feed/lookup/LookupSystemInfo.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

using namespace vx;

namespace {

struct SPlainReply {
    std::string text;

    bool Take(const std::string& received) {
        const char* begin = received.c_str();
        if (const char* end = std::strstr(begin, "!ENDMSG!")) {
            while (*begin == '\r' || *begin == '\n') ++begin;
            text += std::string(begin, end);
            return false;
        }
        if (std::strstr(begin, "!SYNTAX_ERROR!")) return text.clear(), false;
        text += begin;
        return true;
    }
};

using Table = std::array<std::array<std::string, kMostTableTexts>, kTableEntries>;

// The id as the C library reads it; one that it cannot hold is outside the table in any case.
long IdOf(const std::string& field) { return std::strtol(field.c_str(), nullptr, 10); }

int FillPlain(const std::string& reply, Table& table) {
    int count = 0;
    std::string line;
    std::vector<std::string> lines;
    for (const char c : reply + "\n") {
        if (c != '\n')
            line += c;
        else
            lines.push_back(std::exchange(line, ""));
    }
    for (std::string& each : lines) {
        if (!each.empty() && each.back() == '\r') each.pop_back();
        std::vector<std::string> fields{""};
        for (const char c : each) {
            if (c == ',')
                fields.emplace_back();
            else
                fields.back() += c;
        }
        if (fields.back().empty()) fields.pop_back();
        if (fields.empty() || fields[0].empty()) continue;
        const long id = IdOf(fields[0]);
        if (id < 0 || id >= kTableEntries) continue;
        ++count;
        for (size_t i = 0; i < kMostTableTexts && i + 1 < fields.size(); ++i)
            table[static_cast<size_t>(id)][i] = fields[i + 1];
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0 || size > 60000) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    CTableReply reply;
    SPlainReply plain;
    uint32_t pieceSeed = data[0];
    for (size_t at = 0; at < bytes.size();) {
        pieceSeed = pieceSeed * 1664525u + 1013904223u;
        const size_t piece = data[0] == 0 ? bytes.size() : 1 + (pieceSeed >> 24) % (data[0] + 1u);
        const std::string received = bytes.substr(at, piece);
        at += piece;
        const bool goesOn = reply.Take(received);
        if (goesOn != plain.Take(received) || reply.Text() != plain.text) std::abort();
        const bool holdsEnd =
            std::strstr(plain.text.c_str(), "!ENDMSG!") || std::strstr(plain.text.c_str(), "!SYNTAX_ERROR!");
        if (reply.HoldsSplitEnd() != holdsEnd) std::abort();
        if (!goesOn) break;
    }
    Table table;
    int count = 0;
    ReadTableReply(reply.Text(), [&](int id, std::span<const std::string_view> texts) {
        if (texts.size() > kMostTableTexts) std::abort();
        for (size_t i = 0; i < texts.size(); ++i) table[static_cast<size_t>(id)][i] = texts[i];
        ++count;
    });
    Table plainTable;
    if (FillPlain(plain.text, plainTable) != count || table != plainTable) std::abort();
    return 0;
}
