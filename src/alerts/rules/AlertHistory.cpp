#include "alerts/rules/AlertHistory.h"

#include "base/AtomicFile.h"
#include "base/ErrorText.h"
#include "base/Escape.h"
#include "base/Log.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <unistd.h>
#include <utility>

namespace vx {

namespace {

constexpr uint32_t kPrivateFile = 0600;

std::string Quoted(std::string_view text) {
    return fmt::format("\"{}\"", EscapeBytes(text.substr(0, CAlertHistory::kMostTextBytes)));
}

bool EndsInTheMiddleOfALine(const COpenFile& file, int64_t size) {
    char last = '\n';
    size_t count = 0;
    return size > 0 && file.Read(static_cast<uint64_t>(size - 1), &last, 1, count) == 0 && count == 1 && last != '\n';
}

int OpenToAppend(const std::string& path, std::unique_ptr<COpenFile>& file, SFileStatus& status) {
    if (const int error = Disk().Open(path, EOpen::Extend, kPrivateFile, file)) return error;
    return file->Status(status) == 0 && status.kind == EFileKind::Regular ? 0 : EINVAL;
}

} // namespace

SAlertFiring FiringOf(const SAlertNotice& notice, int64_t firedMs, int64_t awaySinceMs) {
    SAlertFiring out;
    out.firedMs = firedMs;
    out.awaySinceMs = awaySinceMs;
    out.isNews = notice.isNews;
    out.symbol = notice.symbol;
    out.field = notice.fieldName;
    out.condition = notice.condition;
    out.value = notice.value;
    out.threshold = notice.threshold;
    out.bid = notice.bid;
    out.ask = notice.ask;
    out.last = notice.last;
    return out;
}

std::string CAlertHistory::NoteFired(SAlertFiring firing) {
    firing.id = fmt::format("{}-{}-{}", firing.firedMs, getpid(), ++m_count);
    Append(fmt::format("fired {} {} {} {} {} {} {} {} {} {} {} {} end\n", firing.id, firing.firedMs, firing.awaySinceMs,
                       firing.isNews ? 1 : 0, Quoted(firing.condition), Quoted(firing.symbol), Quoted(firing.field),
                       firing.value, firing.threshold, firing.bid, firing.ask, firing.last));
    return std::move(firing.id);
}

void CAlertHistory::NoteSeen(std::string_view id, int64_t atMs) { Append(fmt::format("seen {} {} end\n", id, atMs)); }

void CAlertHistory::NoteEnded(std::string_view id, EFiringEnd end, int64_t atMs, double newThreshold,
                              std::string_view other) {
    std::string line = fmt::format("{} {} {}", EndWord(end), id, atMs);
    if (end == EFiringEnd::Reset || end == EFiringEnd::ResetOther) line += fmt::format(" {}", newThreshold);
    if (end == EFiringEnd::ResetOther) line += ' ' + Quoted(other);
    Append(line + " end\n");
}

void CAlertHistory::Append(std::string line) {
    const int error = TryAppend(line);
    if (error != 0 && !m_failed)
        LogInformation(fmt::format("Alert history: {} cannot be written: {}", FilePath(), ErrorText(error)));
    m_failed = error != 0;
}

int CAlertHistory::TryAppend(std::string& line) const {
    if (const int error = MakeFolders(m_folder)) return error;
    const CFileLock lock(m_folder + "/alert-history.lock", kLockWaitMs);
    std::unique_ptr<COpenFile> file;
    SFileStatus status;
    if (const int error = OpenToAppend(FilePath(), file, status)) return error;
    // Without the lock another program may be about to do the same.
    if (status.signature.size >= kMostFileBytes && lock.IsHeld()) {
        if (const int error = Disk().Rename(FilePath(), OlderFilePath())) return error;
        if (const int error = OpenToAppend(FilePath(), file, status)) return error;
    }
    if (EndsInTheMiddleOfALine(*file, status.signature.size)) line.insert(line.begin(), '\n');
    return WriteAll(*file, line);
}

std::vector<SAlertFiring> CAlertHistory::Read() const {
    constexpr size_t kMostReadBytes = 2 * static_cast<size_t>(kMostFileBytes);
    std::vector<SAlertFiring> out;
    for (const std::string& path : {OlderFilePath(), FilePath()}) {
        SFileImage image;
        if (ReadWholeFile(path, kMostReadBytes, image) == 0) ParseHistory(image.content, out);
    }
    return out;
}

const SAlertFiring* FindFiring(std::span<const SAlertFiring> firings, const SAlertFiring& like) {
    const auto isLike = [&](const SAlertFiring& firing) {
        return firing.symbol == like.symbol && firing.field == like.field && firing.condition == like.condition &&
               firing.threshold == like.threshold && firing.end != EFiringEnd::Reset;
    };
    const auto found = std::find_if(firings.rbegin(), firings.rend(), isLike);
    return found == firings.rend() ? nullptr : &*found;
}

int64_t LastAbsence(std::span<const SAlertFiring> firings) {
    int64_t out = 0;
    for (const SAlertFiring& firing : firings) out = std::max(out, firing.awaySinceMs);
    return out;
}

} // namespace vx
