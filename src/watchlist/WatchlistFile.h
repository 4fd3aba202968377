#pragma once

#include "base/AtomicFile.h"
#include "watchlist/FileGenerations.h"
#include "watchlist/SupplementFiles.h"
#include "watchlist/WatchlistFrame.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vx {

class CReadReport;
class CWatchlistDoc;
struct SRecovery;

enum class EFileOutcome {
    Done,
    ChangedOnDisk, ///< Nothing was written: another program changed the file since it was opened or saved.
    FormerNotKept, ///< Nothing was written: the content that the save replaces could not be kept as a generation.
    Failed
};

/// What a save may do although something is lost by it; each only after the user was told by a save's result.
struct SSaveConsent {
    bool overwriteChanged = false; ///< Replace what another program wrote. Asked for by ChangedOnDisk.
    bool withoutFormer = false;    ///< Replace a content that cannot be kept. Asked for by FormerNotKept.
};

/// What came of opening or saving, in words for the user (Windows-1252).
struct SFileResult {
    EFileOutcome outcome = EFileOutcome::Done;
    std::string error;                ///< What failed, with the file's name and the reason; empty when done.
    std::vector<std::string> notices; ///< What worked, but not as expected; a sentence each.

    bool IsDone() const { return outcome == EFileOutcome::Done; }
};

/// The file of the open watchlist: opens and saves it so that nothing a user wrote is lost.
///
/// Shape   paths are bytes as the system takes them; 8 to 256 MB of text are nothing unusual for it
/// Errors  every failure is a result with its words; the document, and the file, stay as they were
/// Owns    nothing: the document outlives it
/// Thread  GUI thread only
class CWatchlistFile {
public:
    /// More is no watchlist: the longest one, with all formats and alerts that it may have, is smaller.
    static constexpr size_t kMostBytes = size_t{256} * 1024 * 1024;

    explicit CWatchlistFile(CWatchlistDoc& doc);
    CWatchlistFile(CWatchlistDoc& doc, std::string stateFolder);

    /// Puts the watchlist of a file into the document.
    SFileResult Open(const std::string& path);
    /// Puts a recovered watchlist into the document, which is modified then. Saving goes to the file that it had.
    SFileResult OpenRecovered(const SRecovery& recovery);
    /// Puts a former content of the document's file into the document, which is modified then: a save would make it the
    /// file's content again.
    SFileResult OpenFormer(const SGeneration& generation);

    /// Writes the document to its file. The content that this replaces is kept as a generation.
    ///
    /// Units   placement: where the window stands
    /// Errors  ChangedOnDisk and FormerNotKept unless the consent covers them, in this order, with a sentence that says
    ///         what is at stake: ask the user and call again with both consents given so far. Failed without a path.
    ///         The document stays modified unless all of it is on disk
    SFileResult Save(const SPlacement& placement, SSaveConsent consent = {});
    /// As Save, to another file, which is the document's from then on. Never ChangedOnDisk: the user chose the file.
    SFileResult SaveAs(const std::string& path, const SPlacement& placement, SSaveConsent consent = {});
    /// The document is a new one, or closed.
    void Forget();

    /// Empty for a document without a file.
    const std::string& Path() const { return m_path; }
    /// The hash of the content that the file had when it was opened or saved.
    uint64_t KnownHash() const { return m_knownHash; }
    /// The contents that saves of the document's file replaced, newest first.
    std::vector<SGeneration> Generations() const;

private:
    SFileResult Write(const std::string& path, const SPlacement& placement, SSaveConsent consent);
    SFileResult Replace(const std::string& path, const SPlacement& placement, const std::string& text);
    int KeepFormer(const std::string& path, const std::string& text, const SFileImage& before, int readError,
                   std::string& made);
    void NoteSaved(const std::string& path, const SPlacement& placement);

    CWatchlistDoc& m_doc;
    CFileGenerations m_generations;
    CSupplementFiles m_supplements;
    std::string m_path;
    uint64_t m_knownHash = 0;
    bool m_onDisk = false; ///< m_knownHash stands for a content that is, or was, on disk.
};

} // namespace vx
