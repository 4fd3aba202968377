// SPDX-License-Identifier: MIT
#include "watchlist/file/RecoveryFile.h"

#include "base/AtomicFile.h"
#include "base/Hash.h"
#include "base/Log.h"
#include "base/Text.h"
#include "base/Windows1252.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <ctime>

namespace vx {

namespace {

constexpr size_t kMostBytes = size_t{1024} * 1024 * 1024;
constexpr std::string_view kFirstLine = "zantrel watchlist recovery 1";
constexpr std::string_view kExtension = ".recovery";
constexpr std::string_view kLockExtension = ".lock";
constexpr int64_t kUnusedLockSeconds = 24 * 3600;
constexpr int64_t kNsPerSecond = 1'000'000'000;

// Reads "key value" with a whole number, decimal or hexadecimal.
template <typename Number>
bool TakeNumber(std::string_view& text, std::string_view key, Number& number, int base = 10) {
    std::string_view line = TakeUntil(text, '\n');
    if (TakeUntil(line, ' ') != key) return false;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number, base);
    return error == std::errc{} && end == line.data() + line.size();
}

bool TakePath(std::string_view& text, std::string& path) {
    std::string_view line = TakeUntil(text, '\n');
    return TakeUntil(line, ' ') == "path" && UnescapeBytes(line, path);
}

// A program that died before it wrote anything leaves its lock alone.
void RemoveUnusedLock(const std::string& lock) {
    SFileStatus status;
    if (Disk().Status(lock, status) != 0) return;
    if (time(nullptr) - status.signature.modifiedNs / kNsPerSecond < kUnusedLockSeconds) return;
    if (CFileLock(lock, 0).IsHeld()) Disk().Remove(lock);
}

std::optional<SRecovery> Claim(const std::string& file, int waitMs) {
    auto claim = std::make_shared<CFileLock>(RecoveryLockName(file), waitMs);
    if (!claim->IsHeld()) return std::nullopt;
    SFileImage image;
    if (ReadWholeFile(file, kMostBytes, image) != 0 || image.signature.inode == 0) return std::nullopt;
    std::optional<SRecovery> recovery = ParseRecovery(image.content);
    if (!recovery) {
        LogInformation(
            fmt::format("The recovery file \"{}\" is damaged and was left alone.", Windows1252FromUtf8(file)));
        return std::nullopt;
    }
    recovery->file = file;
    recovery->claim = std::move(claim);
    return recovery;
}

// The program died, or was ended, after a save and before its recovery went.
bool WasSaved(const SRecovery& recovery) {
    SFileImage image;
    return !recovery.originalPath.empty() && !recovery.supplement &&
           ReadWholeFile(recovery.originalPath, recovery.text.size(), image) == 0 && image.content == recovery.text;
}

} // namespace

std::string FormatRecovery(const SRecovery& recovery) {
    return fmt::format("{}\npath {}\nknown {:016x}\nsaved {}\nsupplement 0\ntext {}\nhash {:016x}\n\n{}", kFirstLine,
                       EscapeBytes(recovery.originalPath), recovery.knownHash, recovery.savedAt, recovery.text.size(),
                       ContentHash(recovery.text), recovery.text);
}

std::optional<SRecovery> ParseRecovery(std::string_view text) {
    SRecovery out;
    size_t supplementSize = 0, textSize = 0;
    uint64_t hash = 0;
    if (TakeUntil(text, '\n') != kFirstLine || !TakePath(text, out.originalPath) ||
        !TakeNumber(text, "known", out.knownHash, 16) || !TakeNumber(text, "saved", out.savedAt) ||
        !TakeNumber(text, "supplement", supplementSize) || !TakeNumber(text, "text", textSize) ||
        !TakeNumber(text, "hash", hash, 16) || !TakeUntil(text, '\n').empty())
        return std::nullopt;
    if (supplementSize > text.size() || text.size() - supplementSize != textSize) return std::nullopt;
    out.text = text.substr(supplementSize);
    if (ContentHash(out.text) != hash) return std::nullopt;
    if (supplementSize == 0) return out;
    out.supplement = ParseSupplement(text.substr(0, supplementSize));
    if (!out.supplement) return std::nullopt;
    return out;
}

std::string RecoveryLockName(const std::string& file) {
    std::string name = file.substr(0, file.size() - (file.ends_with(kExtension) ? kExtension.size() : 0));
    return name += kLockExtension;
}

std::vector<SRecovery> FindRecoveries(const std::string& stateFolder) {
    RemoveSaveLeftovers(RecoveryFolder(stateFolder));
    std::vector<std::string> names, files, locks;
    Disk().List(RecoveryFolder(stateFolder), names);
    for (const std::string& name : names) {
        const std::string path = RecoveryFolder(stateFolder) + "/" + name;
        if (path.ends_with(kExtension)) files.push_back(path);
        if (path.ends_with(kLockExtension)) locks.push_back(path);
    }
    for (const std::string& file : files) std::erase(locks, RecoveryLockName(file));
    for (const std::string& lock : locks) RemoveUnusedLock(lock);
    std::vector<SRecovery> out;
    for (const std::string& file : files) {
        std::optional<SRecovery> recovery = Claim(file, 0);
        if (recovery && WasSaved(*recovery))
            DiscardRecovery(*recovery);
        else if (recovery)
            out.push_back(std::move(*recovery));
    }
    std::ranges::sort(out, {}, [](const SRecovery& r) { return std::pair(r.savedAt, r.file); });
    return out;
}

std::optional<SRecovery> ClaimRecovery(const std::string& file, int waitMs) {
    // The lock of a file that is not there would be left behind.
    std::unique_ptr<COpenFile> readable;
    return Disk().Open(file, EOpen::Read, 0, readable) == 0 ? Claim(file, waitMs) : std::nullopt;
}

void DiscardRecovery(const SRecovery& recovery) {
    Disk().Remove(recovery.file);
    Disk().Remove(RecoveryLockName(recovery.file));
}

} // namespace vx
