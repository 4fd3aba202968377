// SPDX-License-Identifier: MIT
// Walks src/ and holds every include to the one-way rule of the README.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;
using Rooms = std::vector<std::string>;

// Each folder and the folders it may include besides itself.
const std::map<std::string, Names> kMayInclude = {
    {"base", {}},
    {"data", {"base"}},
    {"settings", {"base", "data"}},
    {"grid", {"base", "data"}},
    {"feed", {"base", "data"}},
    {"news", {"base", "data"}},
    {"alerts", {"base", "data", "settings", "grid", "feed", "news"}},
    {"watchlist", {"base", "data", "settings", "grid", "feed", "news", "alerts"}},
    {"app", {"base", "data", "settings", "grid", "feed", "news", "alerts", "watchlist"}},
    {"vxconnect", {"base"}},
    {"tools", {}},
};

// The rooms of a folder in their order: each may include those before it. "" is the folder itself.
const std::map<std::string, Rooms> kRooms = {
    {"base", {"fields", "", "qt"}},
    {"data", {"catalogue", "record", "text", "merge", "store"}},
    {"feed", {"socket", "lookup", "session"}},
    {"alerts", {"rules", "ui"}},
    {"watchlist", {"document", "fileformat", "file", "exchange", "edit", "view", "dialogs"}},
    {"app", {"frame", "commands", "windows", "files", "alerts", "workspace", "shell"}},
    {"vxconnect", {"common", "market", "data", "server"}},
};

// The files in which no include of Qt may be.
const std::regex kNoQt("(base(/fields)?|data/.*|settings|news|alerts/rules|"
                       "watchlist/(document|edit|file|fileformat|exchange))/[^/]*");

std::string FolderOf(const std::string& path) { return path.substr(0, path.find('/')); }

// "qt" of "base/qt/QtText.h", "" of "base/Text.h".
std::string RoomOf(const std::string& path) {
    const size_t begin = path.find('/') + 1, end = path.rfind('/');
    return end < begin ? std::string() : path.substr(begin, end - begin);
}

bool MayInclude(const std::string& file, const std::string& target) {
    const std::string from = FolderOf(file), to = FolderOf(target);
    if (from != to) return kMayInclude.count(from) != 0 && kMayInclude.at(from).count(to) != 0;
    const auto rooms = kRooms.find(from);
    if (rooms == kRooms.end()) return true;
    const auto place = [&](const std::string& path) {
        return std::find(rooms->second.begin(), rooms->second.end(), RoomOf(path)) - rooms->second.begin();
    };
    return place(target) <= place(file) && place(file) < static_cast<std::ptrdiff_t>(rooms->second.size());
}

bool IsQt(const std::string& target) {
    return target.size() > 1 && target[0] == 'Q' && (std::isupper(target[1]) || target.starts_with("Qt"));
}

/// What a file includes, and whether in quotes.
std::vector<std::pair<std::string, bool>> Includes(std::istream&& lines) {
    static const std::regex kInclude(R"rx(^\s*#\s*include\s*(["<])([^">]+)[">])rx");
    std::vector<std::pair<std::string, bool>> out;
    std::smatch match;
    for (std::string line; std::getline(lines, line);)
        if (line.find("include") != std::string::npos && std::regex_search(line, match, kInclude))
            out.emplace_back(match[2], match[1] == "\"");
    return out;
}

/// What is wrong with the includes of a file; its path and theirs begin at src/.
std::vector<std::string> Faults(const std::string& file, std::istream&& lines) {
    std::vector<std::string> out;
    for (const auto& [target, quoted] : Includes(std::move(lines)))
        if (quoted ? !MayInclude(file, target) : IsQt(target) && std::regex_match(file, kNoQt)) out.push_back(target);
    return out;
}

using Units = std::map<std::string, Names>;

void Reach(const Units& units, const std::string& from, Names& reached) {
    const auto unit = units.find(from);
    if (unit == units.end()) return;
    for (const std::string& next : unit->second)
        if (reached.insert(next).second) Reach(units, next, reached);
}

std::vector<std::string> SourceFiles() {
    const fs::path root = ZW_SOURCE_DIR "/src";
    const Names kinds = {".h", ".cpp", ".inl", ".def"};
    std::vector<std::string> out;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (kinds.count(entry.path().extension()) != 0) out.push_back(fs::relative(entry.path(), root).string());
    return out;
}

} // namespace

TEST(IncludeRule, EveryIncludePointsLeftAndTheCoreKnowsNoQt) {
    const fs::path root = ZW_SOURCE_DIR "/src";
    const std::vector<std::string> files = SourceFiles();
    EXPECT_GT(files.size(), 100u) << "the sources were not found";
    for (const std::string& file : files)
        for (const std::string& target : Faults(file, std::ifstream(root / file)))
            ADD_FAILURE() << file << " includes " << target;
}

TEST(IncludeRule, EveryFolderAndRoomHasItsPlaceAndIsNoHeap) {
    std::map<std::string, Names> stems;
    for (const std::string& file : SourceFiles()) {
        EXPECT_TRUE(kMayInclude.count(FolderOf(file))) << file;
        const auto rooms = kRooms.find(FolderOf(file));
        const bool hasRoom =
            rooms == kRooms.end() || std::count(rooms->second.begin(), rooms->second.end(), RoomOf(file));
        EXPECT_TRUE(hasRoom) << file;
        stems[fs::path(file).parent_path()].insert(fs::path(file).stem());
    }
    constexpr size_t kMostStems = 25;
    for (const auto& [room, names] : stems) EXPECT_LE(names.size(), kMostStems) << room;
}

// A header and its source are a unit. Two that belong together may know each other.
TEST(IncludeRule, NoMoreThanTwoUnitsIncludeEachOtherInACircle) {
    const auto unitOf = [](const std::string& file) { return file.substr(0, file.rfind('.')); };
    Units units, reached;
    for (const std::string& file : SourceFiles())
        for (const auto& [target, quoted] : Includes(std::ifstream(fs::path(ZW_SOURCE_DIR "/src") / file)))
            if (quoted && unitOf(target) != unitOf(file)) units[unitOf(file)].insert(unitOf(target));
    for (const auto& [unit, targets] : units) Reach(units, unit, reached[unit]);
    for (const auto& [unit, all] : reached)
        EXPECT_LE(std::count_if(all.begin(), all.end(),
                                [&, &name = unit](const std::string& other) { return reached[other].contains(name); }),
                  2)
            << unit;
}

TEST(IncludeRule, SeesWhatItForbids) {
    const std::pair<const char*, const char*> faults[] = {{"data/record/A.h", "\"data/store/B.h\""},
                                                          {"grid/A.h", "\"feed/socket/B.h\""},
                                                          {"base/A.h", "\"base/qt/B.h\""},
                                                          {"nowhere/A.h", "\"base/Text.h\""},
                                                          {"base/A.h", "<QString>"},
                                                          {"watchlist/edit/A.def", "<QtCore/QString>"}};
    for (const auto& [file, include] : faults)
        EXPECT_EQ(Faults(file, std::istringstream(std::string("  # include ") + include)).size(), 1u)
            << file << ' ' << include;
}
