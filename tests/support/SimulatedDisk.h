// SPDX-License-Identifier: MIT
#pragma once

#include "base/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace vx::test {

/// Thrown by the call at which a simulated disk stops the process. Calls of other threads, and all that follow, fail
/// with EIO and change nothing: the process is dead, whatever its destructors still try.
struct SStopped {};

struct SDiskFault {
    enum EWhat {
        None,
        Fail,    ///< The call fails with `error` and does nothing.
        FailOn,  ///< So do all that follow.
        Shorten, ///< A read or a write does half of what it was asked for; other calls work.
        Stop     ///< The process ends before the call; of a write half was handed over.
    };
    EWhat what = None;
    int call = 0; ///< Counted from 0.
    int error = 0;
};

/// Files and folders in memory. It is the program's file system as long as it lives; files that were opened end before.
///
/// Each file has a content and one that is on disk; the names have a journal, in order, whose beginning SyncFolder
/// brings to disk. There are no links, and everything may be read and written.
class CSimulatedDisk final : public CFileSystem {
public:
    CSimulatedDisk();
    CSimulatedDisk(const CSimulatedDisk&) = delete;
    CSimulatedDisk& operator=(const CSimulatedDisk&) = delete;
    ~CSimulatedDisk() override;

    /// A file as it was long ago: on disk, with the folders above it and all names that there were.
    void Put(const std::string& path, std::string_view content);
    /// Nothing when there is no such file.
    std::optional<std::string> Content(const std::string& path) const;
    /// The names in a folder, sorted.
    std::vector<std::string> Names(const std::string& folder) const;

    /// From here on calls are counted, and one has this fault.
    void Inject(const SDiskFault& fault);
    int Calls() const;
    bool HasStopped() const { return m_dead; }

    /// Another process: what was handed over is there, locks and open files are not.
    void Restart();
    /// The same after a power cut: content that was not synced is lost, and of the names' journal all but a beginning.
    void LosePower(size_t keptOfJournal);
    size_t JournalSize() const { return m_journal.size(); }

    int Open(const std::string& path, EOpen how, uint32_t permissions, std::unique_ptr<COpenFile>& file) override;
    int Status(const std::string& path, SFileStatus& status) override;
    int CheckWritable(const std::string& path) override;
    int ReadLink(const std::string& path, std::string& target) override;
    int Canonical(const std::string& path, std::string& canonical) override;
    int Rename(const std::string& from, const std::string& to) override;
    int Remove(const std::string& path) override;
    int MakeFolder(const std::string& path, uint32_t permissions) override;
    int List(const std::string& folder, std::vector<std::string>& names) override;
    int SyncFolder(const std::string& folder) override;
    int SetModified(const std::string& path, int64_t ns) override;

private:
    friend class CSimulatedFile;
    struct SNode {
        SFileStatus status;
        std::string content, synced;
        const COpenFile* lockedBy = nullptr;
    };
    using Names_t = std::map<std::string, std::shared_ptr<SNode>>;
    /// A step of the journal: `from` goes, `to` gets the node; either may be empty.
    struct SStep {
        std::string from, to;
        std::shared_ptr<SNode> node;
    };

    int Begin(bool* isShort = nullptr);
    /// What a call does to what is at a path, unless it fails or nothing is there.
    template <class Work> int On(const std::string& path, Work work);
    bool StopsNext() const { return !m_dead && m_fault.what == SDiskFault::Stop && m_calls == m_fault.call; }
    std::shared_ptr<SNode> Find(const std::string& path) const;
    std::shared_ptr<SNode> NewNode(EFileKind kind, uint32_t permissions);
    bool HasFolderFor(const std::string& path) const;
    void Do(SStep step);
    static void Apply(const SStep& step, Names_t& names);
    void Touch(SNode& node);

    mutable std::mutex m_mutex;
    const std::thread::id m_thread = std::this_thread::get_id();
    Names_t m_names, m_syncedNames;
    std::vector<SStep> m_journal;
    SDiskFault m_fault;
    int m_calls = 0;
    bool m_dead = false;
    int m_process = 0;
    uint64_t m_lastInode = 0;
    int64_t m_nowNs = 1'700'000'000'000'000'000;
};

/// How a step under fault ended.
struct SDiskOutcome {
    bool saidDone = false;
    bool saidFailed = false; ///< Neither: it was stopped.
    bool powerLost = false;  ///< After the step, or where it was stopped.
};

/// Tries a step with each kind of fault at each of its calls in turn, and with a kill and power cuts there, each on a
/// disk of its own. The last run of each kind has no fault in it.
///
/// prepare  what is there before, without a fault
/// step     whether it says that it was done; no file that it opened outlives it
/// check    looks at what is left for the next process
void TryEveryFault(const std::function<void(CSimulatedDisk&)>& prepare, const std::function<bool()>& step,
                   const std::function<void(CSimulatedDisk&, const SDiskOutcome&)>& check);

} // namespace vx::test
