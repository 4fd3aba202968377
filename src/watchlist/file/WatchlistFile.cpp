// SPDX-License-Identifier: MIT
#include "watchlist/file/WatchlistFile.h"

#include "base/AtomicFile.h"
#include "base/FileSystem.h"
#include "base/Hash.h"
#include "base/Log.h"
#include "base/Windows1252.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/fileformat/WatchlistReader.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>

namespace vx {

namespace {

void ReadInBlocks(CWatchlistReader& reader, std::string_view text) {
    while (!text.empty()) {
        const std::string_view block = text.substr(0, CWatchlistReader::kBlockBytes);
        reader.TakeBlock(block);
        text.remove_prefix(block.size());
    }
    reader.Finish();
}

void LogReport(const std::string& path, const CReadReport& report) {
    const std::string name = Windows1252FromUtf8(path);
    for (const std::string& sentence : report.Sentences())
        LogInformation(fmt::format("Watchlist \"{}\", {}.", name, sentence));
    if (report.Count() > report.Sentences().size())
        LogInformation(fmt::format("Watchlist \"{}\": {} more things in it were not understood.", name,
                                   report.Count() - report.Sentences().size()));
}

// A path that stays good when the process's folder changes.
std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error || path.empty() ? path : absolute.string();
}

void ReadSupplement(const CSupplementFiles& files, const std::string& path, uint64_t hash, SWatchlistContent& content,
                    SFileResult& result) {
    const CSupplementFiles::SFound found = files.Find(path, hash);
    if (found.supplement) MergeSupplement(*found.supplement, content);
    if (found.damaged)
        result.notices.emplace_back("What was kept for this watchlist besides its file is damaged and was not read.");
    if (found.otherContent)
        result.notices.emplace_back("The file was changed by another program: notes and other things that were kept "
                                    "for its last saved content were not put back.");
}

} // namespace

CWatchlistFile::CWatchlistFile(CWatchlistDoc& doc) : CWatchlistFile(doc, UserStateFolder()) {}

CWatchlistFile::CWatchlistFile(CWatchlistDoc& doc, const std::string& stateFolder) : m_doc(doc), m_saver(stateFolder) {}

SFileResult CWatchlistFile::Open(const std::string& asked) {
    const std::string path = AbsolutePath(asked);
    SFileImage image;
    if (const int error = ReadWatchlistFile(path, image)) return FileFailure("opened", path, ReadReason(error));
    CWatchlistReader reader;
    ReadInBlocks(reader, image.content);
    SFileResult result;
    const uint64_t hash = ContentHash(image.content);
    ReadSupplement(m_saver.Supplements(), path, hash, reader.Content(), result);
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(path)), reader.Report());
    LogReport(path, reader.Report());
    m_path = path;
    m_knownHash = hash;
    m_onDisk = true;
    FindUnread(reader, image.content.empty(), result);
    for (const std::string& notice : result.notices) LogInformation(notice);
    return result;
}

// Once: the first save asks again.
void CWatchlistFile::FindUnread(CWatchlistReader& reader, bool isEmpty, SFileResult& result) {
    const std::string name = Windows1252FromUtf8(m_path);
    m_unread.clear();
    if (reader.Content().knownLines == 0 && !isEmpty) {
        m_unread = fmt::format("Nothing in the file \"{}\" could be read as a watchlist.", name);
        LogInformation(m_unread);
        result.remark = m_unread; // No box: what cannot be read in a file is no error.
    } else if (const size_t line = reader.HandoverLine()) {
        m_unread = fmt::format(
            "Line {} of \"{}\" begins with \"[\": the file was read in its older layout, and what that does "
            "not know was left out.",
            line, name);
        result.notices.push_back(m_unread);
    }
}

SFileResult CWatchlistFile::OpenRecovered(const SRecovery& recovery) {
    CWatchlistReader reader;
    ReadInBlocks(reader, recovery.text);
    if (recovery.supplement) MergeSupplement(*recovery.supplement, reader.Content());
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(recovery.originalPath)), reader.Report(),
                      false);
    LogReport(recovery.originalPath, reader.Report());
    m_path = recovery.originalPath;
    m_knownHash = recovery.knownHash;
    m_onDisk = !m_path.empty();
    m_unread.clear();
    return {};
}

SFileResult CWatchlistFile::OpenBackup(const SBackup& backup) {
    SFileImage image;
    if (const int error = ReadWatchlistFile(backup.path, image))
        return FileFailure("opened", backup.path, ReadReason(error));
    CWatchlistReader reader;
    ReadInBlocks(reader, image.content);
    const CSupplementFiles::SFound found = m_saver.Supplements().Find(backup.path, ContentHash(image.content));
    if (found.supplement) MergeSupplement(*found.supplement, reader.Content());
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(m_path)), reader.Report(), false);
    LogReport(backup.path, reader.Report());
    return {};
}

void CWatchlistFile::Forget() {
    m_path.clear();
    m_knownHash = 0;
    m_onDisk = false;
    m_unread.clear();
}

SFileResult CWatchlistFile::Save(const SPlacement& placement, SSaveConsent consent) {
    if (m_path.empty()) return {EFileOutcome::Failed, "The watchlist has no file yet.", {}};
    return SaveAs({}, placement, consent);
}

SFileResult CWatchlistFile::SaveAs(const std::string& path, const SPlacement& placement, SSaveConsent consent) {
    SSaveJob job = BeginSave(path, placement);
    job.consent.overwriteChanged |= consent.overwriteChanged;
    job.consent.overwriteUnread |= consent.overwriteUnread;
    job.consent.withoutBackup = consent.withoutBackup;
    SFileResult result = m_saver.Save(job);
    EndSave(job, result);
    return result;
}

SSaveJob CWatchlistFile::BeginSave(const std::string& path, const SPlacement& placement) {
    SSaveJob job;
    job.path = path.empty() ? m_path : AbsolutePath(path);
    RenewJob(job);
    job.consent.overwriteChanged = job.consent.overwriteUnread = !path.empty();
    job.text = WriteWatchlistText(m_doc, placement);
    job.placement = placement;
    job.point = m_doc.Undo().SavePoint();
    return job;
}

void CWatchlistFile::RenewJob(SSaveJob& job) {
    m_doc.ShowProgress(fmt::format("Saving Watchlist \"{}\"", Windows1252FromUtf8(job.path)));
    job.knownHash.reset();
    if (m_onDisk) job.knownHash = m_knownHash;
    job.unread = m_unread;
}

void CWatchlistFile::EndSave(const SSaveJob& job, const SFileResult& result) {
    if (result.IsDone()) {
        if (job.path != m_path) m_doc.SetTitle(Windows1252FromUtf8(TitleOfPath(job.path)));
        m_path = job.path;
        m_knownHash = result.savedHash;
        m_onDisk = true;
        m_unread.clear();
        m_doc.Update()->Options().placement = job.placement;
        m_doc.MarkSaved(job.point);
    }
    m_doc.RestoreStatus();
    if (!result.IsDone()) return;
    const std::string folder = m_path.substr(0, m_path.rfind('/') + 1);
    if (m_doc.Settings().ReadText(kMyWatchlists) != folder) m_doc.Settings().WriteText(kMyWatchlists, folder);
}

std::vector<SBackup> CWatchlistFile::Backups() const {
    return m_path.empty() ? std::vector<SBackup>{} : m_saver.Backups().List(m_path);
}

} // namespace vx
