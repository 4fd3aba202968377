// Walks src/ and holds every include to the one-way rule of the README.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Folders = std::set<std::string>;

// Each folder and the folders it may include besides itself.
const std::map<std::string, Folders> kMayInclude = {
    {"base", {}},
    {"data", {"base"}},
    {"settings", {"base", "data"}},
    {"grid", {"base", "data"}},
    {"feed", {"base", "data"}},
    {"alerts", {"base", "data", "settings", "grid", "feed"}},
    {"watchlist", {"base", "data", "settings", "grid", "feed", "alerts"}},
    {"app", {"base", "data", "settings", "grid", "feed", "alerts", "watchlist"}},
    {"vxconnect", {"base"}},
};

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct SInclude {
    std::string target;
    bool quoted;
};

std::vector<SInclude> IncludesOf(const fs::path& file) {
    static const std::regex kInclude(R"rx(^\s*#\s*include\s*(["<])([^">]+)[">])rx");
    std::vector<SInclude> out;
    std::istringstream lines(ReadAll(file));
    for (std::string line; std::getline(lines, line);)
        if (std::smatch match; std::regex_search(line, match, kInclude)) out.push_back({match[2], match[1] == "\""});
    return out;
}

bool IsQtHeader(const SInclude& include) {
    return !include.quoted && include.target.size() > 1 && include.target[0] == 'Q' && std::isupper(include.target[1]);
}

// The stems of the files that a folder's "<library>_ui" target lists; all others of that folder are its core.
std::set<std::string> UiStems(const fs::path& folder) {
    static const std::regex kBlock(R"(zw_library\(\s*zw_\w+_ui([^)]*)\))");
    static const std::regex kFile(R"((\w+)\.cpp)");
    std::set<std::string> out;
    const std::string text = ReadAll(folder / "CMakeLists.txt");
    std::smatch block;
    if (!std::regex_search(text, block, kBlock)) return out;
    const std::string body = block[1];
    for (auto it = std::sregex_iterator(body.begin(), body.end(), kFile); it != std::sregex_iterator(); ++it)
        out.insert((*it)[1]);
    return out;
}

bool MayUseQt(const fs::path& file, const std::string& folder) {
    if (folder == "base" || folder == "data" || folder == "settings") return false;
    if (folder != "alerts" && folder != "watchlist") return true;
    return UiStems(file.parent_path()).count(file.stem().string()) != 0;
}

std::vector<fs::path> SourceFiles(const fs::path& folder) {
    std::vector<fs::path> out;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") out.push_back(entry.path());
    return out;
}

} // namespace

TEST(IncludeRule, EveryIncludePointsLeftAndStartsWithItsFolder) {
    const fs::path root = ZW_SOURCE_DIR "/src";
    size_t files = 0;
    for (const auto& [folder, allowed] : kMayInclude) {
        if (!fs::exists(root / folder)) continue;
        for (const fs::path& file : SourceFiles(root / folder)) {
            ++files;
            for (const SInclude& include : IncludesOf(file)) {
                if (!include.quoted) continue;
                const std::string target = include.target.substr(0, include.target.find('/'));
                EXPECT_TRUE(target == folder || allowed.count(target)) << file << " includes " << include.target;
                EXPECT_TRUE(fs::exists(root / include.target)) << file << " includes " << include.target;
            }
        }
    }
    EXPECT_GT(files, 20u) << "the sources were not found";
}

TEST(IncludeRule, TheCoreKnowsNoQt) {
    const fs::path root = ZW_SOURCE_DIR "/src";
    for (const auto& [folder, allowed] : kMayInclude) {
        if (!fs::exists(root / folder)) continue;
        for (const fs::path& file : SourceFiles(root / folder)) {
            if (MayUseQt(file, folder)) continue;
            for (const SInclude& include : IncludesOf(file)) {
                EXPECT_FALSE(IsQtHeader(include)) << file << " includes " << include.target;
            }
        }
    }
}

TEST(IncludeRule, EveryFolderOfTheSourcesIsCovered) {
    for (const auto& entry : fs::directory_iterator(ZW_SOURCE_DIR "/src")) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(!entry.is_directory() || kMayInclude.count(name)) << name;
    }
}
