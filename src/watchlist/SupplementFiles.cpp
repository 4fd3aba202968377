#include "watchlist/SupplementFiles.h"

#include "base/AtomicFile.h"
#include "base/ContentHash.h"
#include "base/Escape.h"
#include "base/SaveFile.h"
#include "watchlist/StateFiles.h"
#include "watchlist/WatchlistKeys.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vx {

namespace {

constexpr size_t kMostBytes = size_t{256} * 1024 * 1024;
constexpr const char* kExtension = ".supplement";
constexpr std::string_view kPathKey = "path ";

struct SKept {
    std::string file;
    int64_t modifiedNs;
};

// The supplements whose names begin or end so, newest first.
std::vector<SKept> ListKept(const std::string& folder, const std::string& beginning, const std::string& ending) {
    std::vector<SKept> out;
    std::error_code error;
    for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (!name.starts_with(beginning) || !name.ends_with(ending)) continue;
        SFileSignature signature;
        if (ReadSignature(at->path().string(), signature) == 0)
            out.push_back({at->path().string(), signature.modifiedNs});
    }
    std::ranges::sort(out, std::ranges::greater{}, &SKept::modifiedNs);
    return out;
}

std::string Beginning(const std::string& path) { return HashName(ContentHash(PathKey(path))) + "-"; }

std::string PathOf(std::string_view text) {
    std::string_view line = TakeUntil(text, '\n');
    std::string path;
    if (!line.starts_with(kPathKey) || !UnescapeBytes(line.substr(kPathKey.size()), path)) return {};
    return path;
}

} // namespace

std::string CSupplementFiles::FileName(const std::string& path, uint64_t contentHash) const {
    return RecoveryFolder(m_stateFolder) + "/" + Beginning(path) + HashName(contentHash) + kExtension;
}

int CSupplementFiles::Write(const std::string& path, uint64_t contentHash, const SWatchlistSupplement& supplement) {
    if (const int error = MakeFolders(RecoveryFolder(m_stateFolder))) return error;
    std::string text(kPathKey);
    text += EscapeBytes(PathKey(path));
    text += '\n';
    text += FormatSupplement(supplement);
    return SaveFile(FileName(path, contentHash), text);
}

CSupplementFiles::SFound CSupplementFiles::Find(const std::string& path, uint64_t contentHash) {
    const std::string file = FileName(path, contentHash);
    SFound found;
    if (!Has(path, contentHash) && !TakeFromMovedFile(path, contentHash)) {
        found.otherContent = HasAny(path);
        return found;
    }
    SFileImage image;
    if (ReadWholeFile(file, kMostBytes, image) == 0) {
        std::string_view text = image.content;
        TakeUntil(text, '\n');
        found.supplement = ParseSupplement(text);
    }
    found.damaged = !found.supplement;
    return found;
}

bool CSupplementFiles::TakeFromMovedFile(const std::string& path, uint64_t contentHash) {
    const bool isGeneration = path.starts_with(GenerationsFolder(m_stateFolder) + "/");
    const std::vector<SKept> kept =
        ListKept(RecoveryFolder(m_stateFolder), {}, fmt::format("-{}{}", HashName(contentHash), kExtension));
    for (const SKept& candidate : kept) {
        SFileImage image;
        if (ReadWholeFile(candidate.file, kMostBytes, image) != 0) continue;
        const std::string oldPath = PathOf(image.content);
        if (oldPath.empty() || (!isGeneration && access(oldPath.c_str(), F_OK) == 0)) continue;
        if (const auto supplement =
                ParseSupplement(std::string_view(image.content).substr(image.content.find('\n') + 1))) {
            if (Write(path, contentHash, *supplement) != 0) return false;
            if (!isGeneration) unlink(candidate.file.c_str());
            return true;
        }
    }
    return false;
}

bool CSupplementFiles::Has(const std::string& path, uint64_t contentHash) const {
    return access(FileName(path, contentHash).c_str(), F_OK) == 0;
}

void CSupplementFiles::Remove(const std::string& path, uint64_t contentHash) {
    unlink(FileName(path, contentHash).c_str());
}

bool CSupplementFiles::HasAny(const std::string& path) const {
    return !ListKept(RecoveryFolder(m_stateFolder), Beginning(path), kExtension).empty();
}

void CSupplementFiles::RemoveOld(const std::string& path) {
    const std::vector<SKept> kept = ListKept(RecoveryFolder(m_stateFolder), Beginning(path), kExtension);
    for (size_t i = kKeptOfOnePath; i < kept.size(); ++i) unlink(kept[i].file.c_str());
}

} // namespace vx
