// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace vx::test {

/// A new empty folder that goes, with what is in it, when the object does. A forked child must leave with _exit.
class CTempFolder {
public:
    CTempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zantrel-test-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        m_path = name;
    }
    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;
    ~CTempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& Path() const { return m_path; }
    std::string operator/(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// The names of the files in it that begin so, sorted.
    std::vector<std::string> Files(std::string_view beginning = {}) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            if (std::string name = entry.path().filename().string(); name.starts_with(beginning)) names.push_back(name);
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::string m_path;
};

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void WriteFile(const std::string& path, std::string_view content) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
}

} // namespace vx::test
