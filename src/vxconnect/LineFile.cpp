#include "vxconnect/LineFile.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>

namespace vx::sim {

std::string CLineFile::Open(const std::string& path) {
    m_lines = {};
    m_ended = false;
    // Without waiting: a pipe that nobody writes into would hold the program for ever.
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    m_file.reset(fdopen(descriptor, "rb"));
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) return {};
    m_file.reset();
    if (S_ISDIR(status.st_mode)) return "is a folder, not a file";
    return "not a file; \"-\" reads a stream from standard input";
}

std::optional<SInputLine> CLineFile::Next() {
    constexpr size_t kBlock = 64 * 1024;
    for (;;) {
        if (auto line = m_lines.Next()) return line;
        if (m_ended || !m_file) return std::nullopt;
        std::array<char, kBlock> block;
        const size_t count = std::fread(block.data(), 1, block.size(), m_file.get());
        m_lines.Append({block.data(), count});
        m_ended = count == 0;
        if (m_ended) m_lines.End();
    }
}

} // namespace vx::sim
