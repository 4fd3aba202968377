// SPDX-License-Identifier: MIT
#include "vxconnect/data/LineFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace vx::sim {

std::string CBlockFile::Open(const std::string& path) {
    // Without waiting: a pipe that nobody writes into would hold the program for ever.
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    m_file.reset(fdopen(descriptor, "rb"));
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return {};
    m_file.reset();
    if (S_ISDIR(status.st_mode)) return "is a folder, not a file";
    return "neither a file nor a pipe";
}

std::string_view CBlockFile::Read() {
    constexpr size_t kBlock = 64 * 1024;
    m_block.resize(kBlock);
    return {m_block.data(), m_file ? std::fread(m_block.data(), 1, kBlock, m_file.get()) : 0};
}

std::string CLineFile::Open(const std::string& path) {
    m_lines = CLineCutter();
    m_ended = false;
    return m_file.Open(path);
}

std::optional<SStreamLine> CLineFile::Next() {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    for (;;) {
        if (auto line = m_lines.Next()) {
            if (line->number == 1 && line->text.starts_with(kByteOrderMark))
                line->text.remove_prefix(kByteOrderMark.size());
            return line;
        }
        if (m_ended) return std::nullopt;
        const std::string_view bytes = m_file.Read();
        m_lines.Append(bytes);
        m_ended = bytes.empty();
        if (m_ended) m_lines.End();
    }
}

} // namespace vx::sim
