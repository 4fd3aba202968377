// SPDX-License-Identifier: MIT
#include "base/Registry.h"

#include "base/Clock.h"
#include "base/FileSystem.h"
#include "base/Log.h"

#include <fmt/format.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace vx {

namespace {

constexpr size_t kMaxFileBytes = 16 * 1024 * 1024;
/// How long a file that looks damaged may still be on its way from an editor that writes it in place.
constexpr int kSettleMs = 50;

/// The error numbers of LastError's list.
int ShownError(int error) {
    switch (error) {
    case 0:
        return 0;
    case EACCES:
    case EPERM:
        return 5;
    case EROFS:
        return 19;
    case EWOULDBLOCK:
        return 33;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return 112;
    case EUCLEAN:
        return 1392;
    default:
        return 31;
    }
}

std::string TimeStamp() {
    const SLocalTime now = CClock::Instance().Now();
    return fmt::format("{:04}{:02}{:02}-{:02}{:02}{:02}", now.year, now.month, now.day, now.hour, now.minute,
                       now.second);
}

/// A name for a damaged file that no file has yet; the caller holds the lock.
std::string FreeDamagedName(const std::string& folder) {
    const std::string stem = fmt::format("{}/registry.damaged-{}", folder, TimeStamp());
    // ENOENT is the answer for what is not there, EINVAL for what is no link.
    const auto isTaken = [](const std::string& path) {
        std::string target;
        const int error = Disk().ReadLink(path, target);
        return error == 0 || error == EINVAL;
    };
    std::string name = stem + ".txt";
    for (int i = 2; isTaken(name); ++i) name = fmt::format("{}-{}.txt", stem, i);
    return name;
}

} // namespace

/// One change of the store: without a name the key is made, without a value the value goes.
struct CRegistry::SChange {
    std::string key;
    std::optional<std::string> name;
    std::optional<SRegistryValue> value;

    /// Returns whether the content is another one now.
    bool ApplyTo(RegistryContent& content) const {
        if (!value && name) {
            const auto found = content.find(key);
            return found != content.end() && found->second.erase(*name) > 0;
        }
        auto [entry, added] = content.try_emplace(key);
        if (!name) return added;
        auto [old, isNew] = entry->second.try_emplace(*name, *value);
        if (!isNew && old->second == *value) return added;
        old->second = *value;
        return true;
    }
};

CRegistry& CRegistry::CurrentUser() {
    static CRegistry registry{SEnvironment{}};
    return registry;
}

CRegistry::CRegistry(std::string folder, int lockWaitMs)
    : m_followsEnvironment(false), m_lockWaitMs(lockWaitMs), m_folder(std::move(folder)),
      m_path(m_folder + "/registry.txt") {}

CRegistry::CRegistry(SEnvironment) : m_followsEnvironment(true), m_lockWaitMs(kLockWaitMs) {}

CRegistry::~CRegistry() = default;

void CRegistry::UseFolder() {
    if (!m_followsEnvironment) return;
    std::string folder = UserConfigFolder();
    if (folder == m_folder) return;
    m_folder = std::move(folder);
    m_path = m_folder + "/registry.txt";
    m_loaded = false;
}

/// Brings m_content and m_state up to date with the file, without a lock: the file is whole at every moment.
void CRegistry::Load() {
    SFileSignature signature;
    if (m_loaded && m_state != EState::Unreadable && ReadSignature(m_path, signature) == 0 &&
        signature == m_image.signature)
        return;
    m_loaded = true;
    m_content.clear();
    m_readError = ReadWholeFile(m_path, kMaxFileBytes, m_image);
    if (m_readError != 0 && m_readError != EFBIG) {
        m_state = EState::Unreadable;
        return;
    }
    const std::string text = std::move(m_image.content);
    m_image.content.clear();
    m_state = EState::Read;
    if (m_image.signature == SFileSignature{}) return;
    m_damage = "it is larger than 16 MiB";
    std::optional<RegistryContent> content;
    if (m_readError == 0) content = ParseRegistry(text, &m_damage);
    m_state = content ? EState::Read : EState::Damaged;
    if (content) m_content = std::move(*content);
}

/// Loads for a reader: a damaged file is set aside, and what cannot be read is logged once.
void CRegistry::Refresh() {
    UseFolder();
    Load();
    if (m_state == EState::Unreadable) {
        if (m_readError != m_loggedReadError)
            LogInformation(fmt::format("Settings: {} cannot be read ({}). Defaults apply and nothing is saved.", m_path,
                                       std::strerror(m_readError)));
        m_loggedReadError = m_readError;
        return;
    }
    m_loggedReadError = 0;
    if (m_state != EState::Damaged || m_image.signature == m_leftInPlace) return;
    int error = 0;
    {
        const CFileLock lock(m_folder + "/registry.lock", m_lockWaitMs);
        error = lock.IsHeld() ? SetAside() : lock.Error();
    }
    if (error == 0) return;
    m_leftInPlace = m_image.signature;
    LogInformation(
        fmt::format("Settings: {} is damaged ({}) and cannot be set aside ({}). Defaults apply and nothing is saved.",
                    m_path, m_damage, std::strerror(error)));
}

/// Renames the file if it is still damaged, under the caller's lock.
int CRegistry::SetAside() {
    std::this_thread::sleep_for(std::chrono::milliseconds(kSettleMs));
    Load();
    if (m_state != EState::Damaged) return 0;
    const std::string name = FreeDamagedName(m_folder);
    if (const int error = Disk().Rename(m_path, name)) return error;
    LogInformation(
        fmt::format("Settings: {} is damaged ({}). It is kept as {}; defaults apply.", m_path, m_damage, name));
    Load();
    return 0;
}

/// Makes one change under the lock; returns an errno value.
int CRegistry::ApplyLocked(const SChange& change) {
    if (const int error = MakeFolders(m_folder)) return error;
    const CFileLock lock(m_folder + "/registry.lock", m_lockWaitMs);
    if (!lock.IsHeld()) return lock.Error();
    Load();
    if (m_state == EState::Damaged)
        if (const int error = SetAside()) return error;
    if (m_state == EState::Unreadable) return m_readError;
    if (m_state == EState::Damaged) return EUCLEAN;
    RegistryContent content = m_content;
    if (!change.ApplyTo(content)) return 0;
    const std::string text = FormatRegistry(content);
    if (text.size() > kMaxFileBytes) return EFBIG;
    return ReplaceFile(m_path, text);
}

bool CRegistry::Change(SChange change) {
    const std::lock_guard guard(m_mutex);
    Refresh();
    RegistryContent content = m_content;
    change.key = NormalizeRegistryKey(change.key);
    const bool nothingToDo = m_state == EState::Read && !change.ApplyTo(content);
    const int error = nothingToDo ? 0 : ApplyLocked(change);
    m_lastError = ShownError(error);
    if (error != 0)
        LogInformation(
            fmt::format("Settings: \"{}\" of \"{}\" could not be saved in {} ({}). The file stays as it was.",
                        change.name.value_or(""), change.key, m_path, std::strerror(error)));
    return error == 0;
}

bool CRegistry::KeyExists(std::string_view key) {
    const std::lock_guard guard(m_mutex);
    Refresh();
    const std::string path = NormalizeRegistryKey(key);
    if (path.empty()) return m_state != EState::Unreadable;
    if (m_content.count(path) > 0) return true;
    const std::string above = path + '\\';
    const auto below = m_content.lower_bound(above);
    return below != m_content.end() &&
           CompareNoCase(std::string_view(below->first).substr(0, above.size()), above) == 0;
}

bool CRegistry::CreateKey(std::string_view key) { return Change({std::string(key), {}, {}}); }

std::optional<SRegistryValue> CRegistry::Read(std::string_view key, std::string_view name) {
    const std::lock_guard guard(m_mutex);
    Refresh();
    const auto values = m_content.find(NormalizeRegistryKey(key));
    if (values == m_content.end()) return std::nullopt;
    const auto value = values->second.find(name);
    if (value == values->second.end()) return std::nullopt;
    return value->second;
}

std::vector<SNamedRegistryValue> CRegistry::EnumerateValues(std::string_view key) {
    const std::lock_guard guard(m_mutex);
    Refresh();
    std::vector<SNamedRegistryValue> out;
    const auto values = m_content.find(NormalizeRegistryKey(key));
    if (values == m_content.end()) return out;
    for (const auto& [name, value] : values->second) out.push_back({name, value});
    return out;
}

bool CRegistry::IsReadable() {
    const std::lock_guard guard(m_mutex);
    Refresh();
    return m_state != EState::Unreadable;
}

bool CRegistry::WriteText(std::string_view key, std::string_view name, std::string_view text) {
    return Change({std::string(key), std::string(name), SRegistryValue{ERegistryKind::Text, std::string(text), 0}});
}

bool CRegistry::WriteDword(std::string_view key, std::string_view name, uint32_t number) {
    return Change({std::string(key), std::string(name), SRegistryValue{ERegistryKind::Dword, {}, number}});
}

bool CRegistry::Delete(std::string_view key, std::string_view name) {
    return Change({std::string(key), std::string(name), {}});
}

int CRegistry::LastError() {
    const std::lock_guard guard(m_mutex);
    return m_lastError;
}

std::string CRegistry::FilePath() {
    const std::lock_guard guard(m_mutex);
    UseFolder();
    return m_path;
}

} // namespace vx
