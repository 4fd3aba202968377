// SPDX-License-Identifier: MIT
#include "support/SimulatedDisk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace vx::test {

namespace {

std::string Clean(const std::string& path) {
    std::string clean = ("/" / std::filesystem::path(path)).lexically_normal().string();
    while (clean.size() > 1 && clean.ends_with('/')) clean.pop_back();
    return clean;
}

std::string FolderOf(const std::string& clean) { return clean.substr(0, std::max<size_t>(clean.rfind('/'), 1)); }

} // namespace

class CSimulatedFile final : public COpenFile {
public:
    CSimulatedFile(CSimulatedDisk& disk, std::shared_ptr<CSimulatedDisk::SNode> node)
        : m_disk(disk), m_node(std::move(node)), m_process(disk.m_process) {}
    CSimulatedFile(const CSimulatedFile&) = delete;
    CSimulatedFile& operator=(const CSimulatedFile&) = delete;
    ~CSimulatedFile() override {
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
    const std::shared_ptr<CSimulatedDisk::SNode> m_node;
    const int m_process;
};

CSimulatedDisk::CSimulatedDisk() {
    m_names["/"] = m_syncedNames["/"] = NewNode(EFileKind::Folder, 0755);
    SetInstance(this);
}

CSimulatedDisk::~CSimulatedDisk() { SetInstance(nullptr); }

void CSimulatedDisk::Put(const std::string& path, std::string_view content) {
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

std::optional<std::string> CSimulatedDisk::Content(const std::string& path) const {
    const std::lock_guard guard(m_mutex);
    const auto node = Find(path);
    return node ? std::optional(node->content) : std::nullopt;
}

std::vector<std::string> CSimulatedDisk::Names(const std::string& folder) const {
    const std::lock_guard guard(m_mutex);
    std::vector<std::string> out;
    const std::string clean = Clean(folder);
    for (const auto& [path, node] : m_names)
        if (path != "/" && FolderOf(path) == clean) out.push_back(path.substr(path.rfind('/') + 1));
    return out;
}

void CSimulatedDisk::Inject(const SDiskFault& fault) {
    const std::lock_guard guard(m_mutex);
    m_fault = fault;
    m_calls = 0;
}

int CSimulatedDisk::Calls() const {
    const std::lock_guard guard(m_mutex);
    return m_calls;
}

void CSimulatedDisk::Restart() {
    const std::lock_guard guard(m_mutex);
    for (const auto& [path, node] : m_names) node->lockedBy = nullptr;
    m_fault = {};
    m_dead = false;
    ++m_process;
}

void CSimulatedDisk::LosePower(size_t keptOfJournal) {
    for (size_t i = 0; i < std::min(keptOfJournal, m_journal.size()); ++i) Apply(m_journal[i], m_syncedNames);
    m_journal.clear();
    m_names = m_syncedNames;
    for (const auto& [path, node] : m_names) {
        node->content = node->synced;
        Touch(*node);
    }
    Restart();
}

int CSimulatedDisk::Begin(bool* isShort) {
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

std::shared_ptr<CSimulatedDisk::SNode> CSimulatedDisk::Find(const std::string& path) const {
    const auto found = m_names.find(Clean(path));
    return found == m_names.end() ? nullptr : found->second;
}

std::shared_ptr<CSimulatedDisk::SNode> CSimulatedDisk::NewNode(EFileKind kind, uint32_t permissions) {
    auto node = std::make_shared<SNode>();
    node->status.kind = kind;
    node->status.permissions = permissions;
    node->status.names = 1;
    node->status.signature.device = 1;
    node->status.signature.inode = ++m_lastInode;
    Touch(*node);
    return node;
}

bool CSimulatedDisk::HasFolderFor(const std::string& path) const {
    const auto folder = Find(FolderOf(Clean(path)));
    return folder && folder->status.kind == EFileKind::Folder;
}

void CSimulatedDisk::Do(SStep step) {
    if (const auto replaced = step.to.empty() ? Find(step.from) : Find(step.to)) replaced->status.names = 0;
    if (step.node) step.node->status.names = 1;
    Apply(step, m_names);
    m_journal.push_back(std::move(step));
}

void CSimulatedDisk::Apply(const SStep& step, Names_t& names) {
    if (!step.from.empty()) names.erase(step.from);
    if (!step.to.empty()) names[step.to] = step.node;
}

void CSimulatedDisk::Touch(SNode& node) {
    node.status.signature.size = static_cast<int64_t>(node.content.size());
    node.status.signature.modifiedNs = m_nowNs += 1'000'000;
}

int CSimulatedDisk::Open(const std::string& path, EOpen how, uint32_t permissions, std::unique_ptr<COpenFile>& file) {
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
    replaced = std::exchange(file, std::make_unique<CSimulatedFile>(*this, std::move(node)));
    return 0;
}

template <class Work> int CSimulatedDisk::On(const std::string& path, Work work) {
    const std::lock_guard guard(m_mutex);
    if (const int error = Begin()) return error;
    const auto node = Find(path);
    return node ? work(*node) : ENOENT;
}

int CSimulatedDisk::Status(const std::string& path, SFileStatus& status) {
    return On(path, [&](const SNode& node) { return status = node.status, 0; });
}

int CSimulatedDisk::CheckWritable(const std::string& path) {
    SFileStatus status;
    return Status(path, status);
}

int CSimulatedDisk::ReadLink(const std::string& path, std::string&) {
    SFileStatus status;
    const int error = Status(path, status);
    return error == 0 ? EINVAL : error;
}

int CSimulatedDisk::Canonical(const std::string& path, std::string& canonical) {
    const std::lock_guard guard(m_mutex);
    if (const int error = Begin()) return error;
    canonical = Clean(path);
    return 0;
}

int CSimulatedDisk::Rename(const std::string& from, const std::string& to) {
    const std::lock_guard guard(m_mutex);
    if (const int error = Begin()) return error;
    const auto node = Find(from);
    if (!node || !HasFolderFor(to)) return ENOENT;
    if (node->status.kind == EFileKind::Folder) return EINVAL; // The program renames files only.
    if (node != Find(to)) Do({Clean(from), Clean(to), node});
    return 0;
}

int CSimulatedDisk::Remove(const std::string& path) {
    return On(path, [&](const SNode& node) {
        if (node.status.kind == EFileKind::Folder) return EISDIR;
        Do({Clean(path), {}, nullptr});
        return 0;
    });
}

int CSimulatedDisk::MakeFolder(const std::string& path, uint32_t permissions) {
    const std::lock_guard guard(m_mutex);
    if (const int error = Begin()) return error;
    if (Find(path)) return EEXIST;
    if (!HasFolderFor(path)) return ENOENT;
    Do({{}, Clean(path), NewNode(EFileKind::Folder, permissions)});
    return 0;
}

int CSimulatedDisk::List(const std::string& folder, std::vector<std::string>& names) {
    const int error = On(folder, [](const SNode&) { return 0; });
    if (error == 0) names = Names(folder);
    return error;
}

int CSimulatedDisk::SyncFolder(const std::string& folder) {
    return On(folder, [&](const SNode&) {
        for (const SStep& step : std::exchange(m_journal, {})) Apply(step, m_syncedNames);
        return 0;
    });
}

int CSimulatedDisk::SetModified(const std::string& path, int64_t ns) {
    return On(path, [&](SNode& node) { return node.status.signature.modifiedNs = ns, 0; });
}

void TryEveryFault(const std::function<void(CSimulatedDisk&)>& prepare, const std::function<bool()>& step,
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
