// SPDX-License-Identifier: MIT
#pragma once

#include "base/FileSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
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
    CSimulatedDisk() {
        m_names["/"] = m_syncedNames["/"] = NewNode(EFileKind::Folder, 0755);
        SetInstance(this);
    }
    CSimulatedDisk(const CSimulatedDisk&) = delete;
    CSimulatedDisk& operator=(const CSimulatedDisk&) = delete;
    ~CSimulatedDisk() override { SetInstance(nullptr); }

    /// A file as it was long ago: on disk, with the folders above it and all names that there were.
    void Put(const std::string& path, std::string_view content) {
        const std::lock_guard guard(m_mutex);
        for (const SStep& step : std::exchange(m_journal, {})) Apply(step, m_syncedNames);
        const std::string clean = Clean(path);
        for (size_t end = clean.find('/', 1); end != std::string::npos; end = clean.find('/', end + 1)) {
            const std::string folder = clean.substr(0, end);
            if (!m_names.contains(folder)) m_names[folder] = m_syncedNames[folder] = NewNode(EFileKind::Folder, 0755);
        }
        auto node = NewNode(EFileKind::Regular, 0644);
        node->content = node->synced = content;
        Touch(*node);
        m_names[clean] = m_syncedNames[clean] = std::move(node);
    }
    /// Nothing when there is no such file.
    std::optional<std::string> Content(const std::string& path) const {
        const std::lock_guard guard(m_mutex);
        const auto node = Find(path);
        return node ? std::optional(node->content) : std::nullopt;
    }
    /// The names in a folder, sorted.
    std::vector<std::string> Names(const std::string& folder) const {
        const std::lock_guard guard(m_mutex);
        std::vector<std::string> out;
        const std::string clean = Clean(folder);
        for (const auto& [path, node] : m_names)
            if (path != "/" && FolderOf(path) == clean) out.push_back(path.substr(path.rfind('/') + 1));
        return out;
    }

    /// From here on calls are counted, and one has this fault.
    void Inject(const SDiskFault& fault) {
        const std::lock_guard guard(m_mutex);
        m_fault = fault;
        m_calls = 0;
    }
    int Calls() const {
        const std::lock_guard guard(m_mutex);
        return m_calls;
    }
    bool HasStopped() const { return m_dead; }

    /// Another process: what was handed over is there, locks and open files are not.
    void Restart() {
        const std::lock_guard guard(m_mutex);
        for (const auto& [path, node] : m_names) node->lockedBy = nullptr;
        m_fault = {};
        m_dead = false;
        ++m_process;
    }
    /// The same after a power cut: content that was not synced is lost, and of the names' journal all but a beginning.
    void LosePower(size_t keptOfJournal) {
        for (size_t i = 0; i < std::min(keptOfJournal, m_journal.size()); ++i) Apply(m_journal[i], m_syncedNames);
        m_journal.clear();
        m_names = m_syncedNames;
        for (const auto& [path, node] : m_names) {
            node->content = node->synced;
            Touch(*node);
        }
        Restart();
    }
    size_t JournalSize() const { return m_journal.size(); }

    int Open(const std::string& path, EOpen how, uint32_t permissions, std::unique_ptr<COpenFile>& file) override {
        std::unique_ptr<COpenFile> replaced; // Closed without the mutex.
        const std::lock_guard guard(m_mutex);
        if (const int error = Begin()) return error;
        auto node = Find(path);
        if (node && how == EOpen::New) return EEXIST;
        if (node && node->status.kind == EFileKind::Folder && how != EOpen::Read) return EISDIR;
        if (!node && (how == EOpen::Read || how == EOpen::Change)) return ENOENT;
        if (!node) {
            if (!HasFolderFor(path)) return ENOENT;
            node = NewNode(EFileKind::Regular, permissions);
            Do({{}, Clean(path), node});
        }
        if (how == EOpen::Overwrite) {
            node->content.clear();
            Touch(*node);
        }
        replaced = std::exchange(file, std::make_unique<CFile>(*this, std::move(node)));
        return 0;
    }
    int Status(const std::string& path, SFileStatus& status) override {
        return On(path, [&](const SNode& node) { return status = node.status, 0; });
    }
    int CheckWritable(const std::string& path) override {
        SFileStatus status;
        return Status(path, status);
    }
    int ReadLink(const std::string& path, std::string&) override {
        SFileStatus status;
        const int error = Status(path, status);
        return error == 0 ? EINVAL : error;
    }
    int Canonical(const std::string& path, std::string& canonical) override {
        const std::lock_guard guard(m_mutex);
        if (const int error = Begin()) return error;
        canonical = Clean(path);
        return 0;
    }
    int Rename(const std::string& from, const std::string& to) override {
        const std::lock_guard guard(m_mutex);
        if (const int error = Begin()) return error;
        const auto node = Find(from);
        if (!node || !HasFolderFor(to)) return ENOENT;
        if (node->status.kind == EFileKind::Folder) return EINVAL; // The program renames files only.
        if (node != Find(to)) Do({Clean(from), Clean(to), node});
        return 0;
    }
    int Remove(const std::string& path) override {
        return On(path, [&](const SNode& node) {
            if (node.status.kind == EFileKind::Folder) return EISDIR;
            Do({Clean(path), {}, nullptr});
            return 0;
        });
    }
    int MakeFolder(const std::string& path, uint32_t permissions) override {
        const std::lock_guard guard(m_mutex);
        if (const int error = Begin()) return error;
        if (Find(path)) return EEXIST;
        if (!HasFolderFor(path)) return ENOENT;
        Do({{}, Clean(path), NewNode(EFileKind::Folder, permissions)});
        return 0;
    }
    int List(const std::string& folder, std::vector<std::string>& names) override {
        const int error = On(folder, [](const SNode&) { return 0; });
        if (error == 0) names = Names(folder);
        return error;
    }
    int SyncFolder(const std::string& folder) override {
        return On(folder, [&](const SNode&) {
            for (const SStep& step : std::exchange(m_journal, {})) Apply(step, m_syncedNames);
            return 0;
        });
    }
    int SetModified(const std::string& path, int64_t ns) override {
        return On(path, [&](SNode& node) { return node.status.signature.modifiedNs = ns, 0; });
    }

private:
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

    class CFile final : public COpenFile {
    public:
        CFile(CSimulatedDisk& disk, std::shared_ptr<SNode> node)
            : m_disk(disk), m_node(std::move(node)), m_process(disk.m_process) {}
        CFile(const CFile&) = delete;
        CFile& operator=(const CFile&) = delete;
        ~CFile() override {
            const std::lock_guard guard(m_disk.m_mutex);
            if (m_node->lockedBy == this) m_node->lockedBy = nullptr;
        }

        int Status(SFileStatus& status) const override {
            return Call([&] { status = m_node->status; });
        }
        int Read(uint64_t position, char* to, size_t bytes, size_t& count) const override {
            const std::lock_guard guard(m_disk.m_mutex);
            bool isShort = false;
            count = 0;
            if (const int error = Begin(&isShort)) return error;
            if (position >= m_node->content.size()) return 0;
            count = std::min(bytes, m_node->content.size() - position);
            if (isShort) count = (count + 1) / 2;
            m_node->content.copy(to, count, position);
            return 0;
        }
        int Write(std::string_view content, size_t& count) override {
            const std::lock_guard guard(m_disk.m_mutex);
            bool isShort = false;
            count = 0;
            if (m_disk.StopsNext()) Append(content.substr(0, content.size() / 2));
            if (const int error = Begin(&isShort)) return error;
            count = isShort ? (content.size() + 1) / 2 : content.size();
            Append(content.substr(0, count));
            return 0;
        }
        int Sync() override {
            return Call([&] { m_node->synced = m_node->content; });
        }
        int Truncate(int64_t bytes) override {
            return Call([&] {
                m_node->content.resize(static_cast<size_t>(bytes));
                m_disk.Touch(*m_node);
            });
        }
        int SetPermissions(uint32_t permissions) override {
            return Call([&] { m_node->status.permissions = permissions; });
        }
        SFileLoss TakeOwnership(const SFileStatus&, const std::string&) override {
            const bool failed = Call([] {}) != 0;
            return {failed, failed, 0};
        }
        int TryLock() override {
            const std::lock_guard guard(m_disk.m_mutex);
            if (const int error = Begin()) return error;
            if (m_node->lockedBy && m_node->lockedBy != this) return EWOULDBLOCK;
            m_node->lockedBy = this;
            return 0;
        }

    private:
        /// What a call does unless it fails.
        template <class Work> int Call(Work work) const {
            const std::lock_guard guard(m_disk.m_mutex);
            const int error = Begin();
            if (error == 0) work();
            return error;
        }
        int Begin(bool* isShort = nullptr) const { return m_process == m_disk.m_process ? m_disk.Begin(isShort) : EIO; }
        // Everything that is written here is written in one go, or at the end.
        void Append(std::string_view content) {
            m_node->content += content;
            m_disk.Touch(*m_node);
        }

        CSimulatedDisk& m_disk;
        const std::shared_ptr<SNode> m_node;
        const int m_process;
    };

    static std::string Clean(const std::string& path) {
        std::string clean = ("/" / std::filesystem::path(path)).lexically_normal().string();
        while (clean.size() > 1 && clean.ends_with('/')) clean.pop_back();
        return clean;
    }
    static std::string FolderOf(const std::string& clean) {
        return clean.substr(0, std::max<size_t>(clean.rfind('/'), 1));
    }

    int Begin(bool* isShort = nullptr) {
        if (m_dead) return EIO;
        const int call = m_calls++;
        if (m_fault.what == SDiskFault::None || call < m_fault.call) return 0;
        if (m_fault.what == SDiskFault::FailOn) return m_fault.error;
        if (call > m_fault.call) return 0;
        if (m_fault.what == SDiskFault::Fail) return m_fault.error;
        if (isShort) *isShort = m_fault.what == SDiskFault::Shorten;
        if (m_fault.what != SDiskFault::Stop) return 0;
        m_dead = true;
        if (std::this_thread::get_id() == m_thread) throw SStopped{};
        return EIO;
    }
    /// What a call does to what is at a path, unless it fails or nothing is there.
    template <class Work> int On(const std::string& path, Work work) {
        const std::lock_guard guard(m_mutex);
        if (const int error = Begin()) return error;
        const auto node = Find(path);
        return node ? work(*node) : ENOENT;
    }
    bool StopsNext() const { return !m_dead && m_fault.what == SDiskFault::Stop && m_calls == m_fault.call; }
    std::shared_ptr<SNode> Find(const std::string& path) const {
        const auto found = m_names.find(Clean(path));
        return found == m_names.end() ? nullptr : found->second;
    }
    std::shared_ptr<SNode> NewNode(EFileKind kind, uint32_t permissions) {
        auto node = std::make_shared<SNode>();
        node->status.kind = kind;
        node->status.permissions = permissions;
        node->status.names = 1;
        node->status.signature.device = 1;
        node->status.signature.inode = ++m_lastInode;
        Touch(*node);
        return node;
    }
    bool HasFolderFor(const std::string& path) const {
        const auto folder = Find(FolderOf(Clean(path)));
        return folder && folder->status.kind == EFileKind::Folder;
    }
    void Do(SStep step) {
        if (const auto replaced = step.to.empty() ? Find(step.from) : Find(step.to)) replaced->status.names = 0;
        if (step.node) step.node->status.names = 1;
        Apply(step, m_names);
        m_journal.push_back(std::move(step));
    }
    static void Apply(const SStep& step, Names_t& names) {
        if (!step.from.empty()) names.erase(step.from);
        if (!step.to.empty()) names[step.to] = step.node;
    }
    void Touch(SNode& node) {
        node.status.signature.size = static_cast<int64_t>(node.content.size());
        node.status.signature.modifiedNs = m_nowNs += 1'000'000;
    }

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
inline void TryEveryFault(const std::function<void(CSimulatedDisk&)>& prepare, const std::function<bool()>& step,
                          const std::function<void(CSimulatedDisk&, const SDiskOutcome&)>& check) {
    struct SKind {
        const char* name;
        SDiskFault::EWhat what;
        int error;
        std::optional<double> keptOfJournal; // Nothing: the power stays on.
    };
    for (const SKind& kind :
         {SKind{"one call fails", SDiskFault::Fail, ENOSPC, {}},
          SKind{"all calls from here on fail", SDiskFault::FailOn, EIO, {}},
          SKind{"half is read or written", SDiskFault::Shorten, 0, {}}, SKind{"a kill", SDiskFault::Stop, 0, {}},
          SKind{"a power cut, no name synced", SDiskFault::Stop, 0, 0.0},
          SKind{"a power cut, half of the names synced", SDiskFault::Stop, 0, 0.5},
          SKind{"a power cut, all names synced", SDiskFault::Stop, 0, 1.0}}) {
        bool wasReached = true;
        for (int call = 0; wasReached; ++call) {
            CSimulatedDisk disk;
            prepare(disk);
            disk.Inject({kind.what, call, kind.error});
            SDiskOutcome outcome;
            try {
                const bool done = step();
                outcome.saidDone = done && !disk.HasStopped();
                outcome.saidFailed = !done && !disk.HasStopped();
            } catch (const SStopped&) {
            }
            wasReached = disk.Calls() > call;
            outcome.powerLost = kind.keptOfJournal.has_value();
            if (outcome.powerLost)
                disk.LosePower(static_cast<size_t>(static_cast<double>(disk.JournalSize()) * *kind.keptOfJournal));
            else
                disk.Restart();
            SCOPED_TRACE(testing::Message() << kind.name << ", call " << call);
            check(disk, outcome);
            if (testing::Test::HasFailure()) return;
        }
    }
}

} // namespace vx::test
