// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// A file that is read from its beginning, as often as wanted.
///
/// Owns    the open file
class CBlockFile {
public:
    /// Opens a file, or begins it anew.
    ///
    /// Returns why it cannot be read, empty for success
    std::string Open(const std::string& path);
    /// The next bytes, which hold until the next call; none at the end.
    std::string_view Read();

private:
    struct SClose {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, SClose> m_file;
    std::vector<char> m_block;
};

/// The same, line by line.
class CLineFile {
public:
    std::string Open(const std::string& path);
    /// The next line; nothing at the end. A byte-order mark of UTF-8 is dropped.
    std::optional<SStreamLine> Next();

private:
    CBlockFile m_file;
    CLineCutter m_lines;
    bool m_ended = false;
};

} // namespace vx::sim
