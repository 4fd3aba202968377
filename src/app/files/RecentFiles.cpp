// SPDX-License-Identifier: MIT
#include "app/files/RecentFiles.h"

#include "base/Registry.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

std::string ValueName(size_t number) { return fmt::format("File{}", number); }

} // namespace

std::vector<std::string> CRecentFiles::List() const {
    std::vector<std::string> out;
    for (size_t number = 1; number <= kMost; ++number) {
        const auto value = m_registry.Read(kRecentFilesKey, ValueName(number));
        if (!value || value->kind != ERegistryKind::Text || value->text.empty()) continue;
        if (std::ranges::find(out, value->text) == out.end()) out.push_back(value->text);
    }
    return out;
}

void CRecentFiles::Add(const std::string& path) {
    std::vector<std::string> paths = List();
    std::erase(paths, path);
    paths.insert(paths.begin(), path);
    Write(paths);
}

void CRecentFiles::Remove(std::string_view path) {
    std::vector<std::string> paths = List();
    std::erase(paths, path);
    Write(paths);
}

void CRecentFiles::Write(const std::vector<std::string>& paths) {
    for (size_t number = 1; number <= kMost; ++number) {
        const std::string name = ValueName(number);
        const auto before = m_registry.Read(kRecentFilesKey, name);
        const std::string text = number <= paths.size() ? paths[number - 1] : std::string();
        if (text.empty() ? !before : before && before->kind == ERegistryKind::Text && before->text == text) continue;
        // A store that does not take one value takes none of them.
        if (!(text.empty() ? m_registry.Delete(kRecentFilesKey, name)
                           : m_registry.WriteText(kRecentFilesKey, name, text)))
            return;
    }
}

} // namespace vx
