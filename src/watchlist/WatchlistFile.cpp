#include "watchlist/WatchlistFile.h"

#include "base/ContentHash.h"
#include "base/ErrorText.h"
#include "base/Log.h"
#include "base/SaveFile.h"
#include "base/UserFolders.h"
#include "base/Utf8Text.h"
#include "settings/Settings.h"
#include "watchlist/RecoveryFile.h"
#include "watchlist/StateFiles.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistReader.h"
#include "watchlist/WatchlistWriter.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vx {

namespace {

SFileResult Failure(std::string_view what, const std::string& path, const std::string& reason) {
    SFileResult result{EFileOutcome::Failed, {}, {}};
    result.error = fmt::format("The watchlist \"{}\" could not be {}: {}.", Windows1252FromUtf8(path), what, reason);
    LogInformation(result.error);
    return result;
}

// What can be said of a file without opening it: opening a device may do something.
int CheckReadable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    return static_cast<uint64_t>(status.st_size) > CWatchlistFile::kMostBytes ? EFBIG : 0;
}

int ReadFile(const std::string& path, SFileImage& image) {
    if (const int error = CheckReadable(path)) return error;
    return ReadWholeFile(path, CWatchlistFile::kMostBytes, image);
}

std::string ReadReason(int error) {
    if (error == EFBIG)
        return fmt::format("it is larger than {} MB, which no watchlist is", CWatchlistFile::kMostBytes >> 20);
    return ErrorText(error);
}

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

void TellNotKept(const std::string& path, int error, bool agreed, SFileResult& result) {
    const std::string words = fmt::format("The former content of \"{}\" could not be kept: {}.",
                                          Windows1252FromUtf8(path), ReadReason(error));
    if (agreed)
        result.notices.push_back(words);
    else
        result = {EFileOutcome::FormerNotKept, words, {}};
}

} // namespace

CWatchlistFile::CWatchlistFile(CWatchlistDoc& doc) : CWatchlistFile(doc, UserStateFolder()) {}

CWatchlistFile::CWatchlistFile(CWatchlistDoc& doc, std::string stateFolder)
    : m_doc(doc), m_generations(stateFolder), m_supplements(stateFolder) {}

SFileResult CWatchlistFile::Open(const std::string& asked) {
    const std::string path = AbsolutePath(asked);
    SFileImage image;
    if (const int error = ReadFile(path, image)) return Failure("opened", path, ReadReason(error));
    CWatchlistReader reader;
    ReadInBlocks(reader, image.content);
    SFileResult result;
    const uint64_t hash = ContentHash(image.content);
    ReadSupplement(m_supplements, path, hash, reader.Content(), result);
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(path)), reader.Report());
    LogReport(path, reader.Report());
    if (reader.Content().knownLines == 0 && !image.content.empty()) {
        const std::string nothing =
            fmt::format("Nothing in the file \"{}\" could be read as a watchlist.", Windows1252FromUtf8(path));
        LogInformation(nothing);
        m_doc.ShowProgress(nothing); // No box: what cannot be read in a file is no error.
    }
    for (const std::string& notice : result.notices) LogInformation(notice);
    m_path = path;
    m_knownHash = hash;
    m_onDisk = true;
    return result;
}

SFileResult CWatchlistFile::OpenRecovered(const SRecovery& recovery) {
    CWatchlistReader reader;
    ReadInBlocks(reader, recovery.text);
    if (recovery.supplement) MergeSupplement(*recovery.supplement, reader.Content());
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(recovery.originalPath)), reader.Report());
    LogReport(recovery.originalPath, reader.Report());
    m_doc.SetModified(true);
    m_path = recovery.originalPath;
    m_knownHash = recovery.knownHash;
    m_onDisk = !m_path.empty();
    return {};
}

SFileResult CWatchlistFile::OpenFormer(const SGeneration& generation) {
    SFileImage image;
    if (const int error = ReadFile(generation.path, image))
        return Failure("opened", generation.path, ReadReason(error));
    CWatchlistReader reader;
    ReadInBlocks(reader, image.content);
    const CSupplementFiles::SFound found = m_supplements.Find(generation.path, ContentHash(image.content));
    if (found.supplement) MergeSupplement(*found.supplement, reader.Content());
    m_doc.OpenContent(reader.Content(), Windows1252FromUtf8(TitleOfPath(m_path)), reader.Report());
    LogReport(generation.path, reader.Report());
    m_doc.SetModified(true);
    return {};
}

void CWatchlistFile::Forget() {
    m_path.clear();
    m_knownHash = 0;
    m_onDisk = false;
}

SFileResult CWatchlistFile::Save(const SPlacement& placement, SSaveConsent consent) {
    if (m_path.empty()) return {EFileOutcome::Failed, "The watchlist has no file yet.", {}};
    return Write(m_path, placement, consent);
}

SFileResult CWatchlistFile::SaveAs(const std::string& path, const SPlacement& placement, SSaveConsent consent) {
    consent.overwriteChanged = true;
    return Write(AbsolutePath(path), placement, consent);
}

SFileResult CWatchlistFile::Write(const std::string& path, const SPlacement& placement, SSaveConsent consent) {
    m_doc.ShowProgress(fmt::format("Saving Watchlist \"{}\"", Windows1252FromUtf8(path)));
    SFileImage before;
    const int readError = ReadFile(path, before);
    SFileResult result;
    if (readError == EISDIR || readError == EINVAL) {
        result = Failure("saved", path, ErrorText(readError));
    } else if (!consent.overwriteChanged && m_onDisk && readError != ENOENT &&
               (readError != 0 || ContentHash(before.content) != m_knownHash)) {
        result.outcome = EFileOutcome::ChangedOnDisk;
        result.error = fmt::format("The file \"{}\" was changed by another program since it was opened.",
                                   Windows1252FromUtf8(path));
    } else {
        const std::string text = WriteWatchlistText(m_doc, placement);
        std::string made;
        const int notKept = KeepFormer(path, text, before, readError == ENOENT ? 0 : readError, made);
        if (notKept == 0 || consent.withoutFormer) result = Replace(path, placement, text);
        if (notKept != 0) TellNotKept(path, notKept, consent.withoutFormer, result);
        if (!made.empty() && result.IsDone())
            m_generations.RemoveOld(path);
        else if (!made.empty())
            unlink(made.c_str()); // It is still the file's content.
    }
    for (const std::string& notice : result.notices) LogInformation(notice);
    m_doc.RestoreStatus();
    return result;
}

// Keeps what a save is about to replace. An errno value, 0 when nothing is lost.
int CWatchlistFile::KeepFormer(const std::string& path, const std::string& text, const SFileImage& before,
                               int readError, std::string& made) {
    SFileSignature there;
    if (readError != 0) return ReadSignature(path, there) == 0 && there.inode != 0 ? readError : 0;
    if (before.content.empty() || before.content == text) return 0;
    return m_generations.Keep(path, before.content, before.signature.modifiedNs, made);
}

SFileResult CWatchlistFile::Replace(const std::string& path, const SPlacement& placement, const std::string& text) {
    if (const int error = SaveFile(path, text)) return Failure("saved", path, ErrorText(error));
    m_supplements.Retire(path, m_generations.List(path));
    m_knownHash = ContentHash(text);
    m_onDisk = true;
    NoteSaved(path, placement);
    return {};
}

void CWatchlistFile::NoteSaved(const std::string& path, const SPlacement& placement) {
    if (path != m_path) m_doc.SetTitle(Windows1252FromUtf8(TitleOfPath(path)));
    m_path = path;
    m_doc.Options().placement = placement;
    m_doc.SetModified(false);
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    if (m_doc.Settings().ReadText(kMyWatchlists) != folder) m_doc.Settings().WriteText(kMyWatchlists, folder);
}

std::vector<SGeneration> CWatchlistFile::Generations() const {
    return m_path.empty() ? std::vector<SGeneration>{} : m_generations.List(m_path);
}

} // namespace vx
