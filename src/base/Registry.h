// SPDX-License-Identifier: MIT
#pragma once

#include "base/AtomicFile.h"
#include "base/RegistryFormat.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

// The keys that the program uses in the registry of the current user, each spelled only here.

/// How the program starts: the feed client's ports and the log folder.
inline constexpr std::string_view kStartupKey = "Software\\Norv\\Zantrel\\Startup";
/// One text per program and saved workspace.
inline constexpr std::string_view kWorkspacesKey = "Software\\Norv\\Zantrel\\Workspaces";
/// What the display programs share: recent files and window state of the application framework.
inline constexpr std::string_view kApplicationProfileKey = "Software\\Norv\\Zantrel\\DisplayApps";
/// The watchlist files that were opened or saved last: texts "File1" to "File10", the latest first.
inline constexpr std::string_view kRecentFilesKey = "Software\\Norv\\Zantrel\\DisplayApps\\Watchlist\\Recent File List";
/// The application-wide settings of the watchlist; docs/settings.md lists them.
inline constexpr std::string_view kApplicationSettingsKey =
    "Software\\Norv\\Zantrel\\DisplayApps\\Watchlist\\Application Settings";

/// Values of kStartupKey: decimal port numbers as text, and the log folder.
inline constexpr std::string_view kLevel1PortValue = "Level1Port";
inline constexpr std::string_view kLookupPortValue = "LookupPort";
inline constexpr std::string_view kAdminPortValue = "AdminPort";
inline constexpr std::string_view kLogPathValue = "LogPath";

struct SNamedRegistryValue {
    std::string name;
    SRegistryValue value;
};

/// The typed store of the current user's settings, shared by every program and window that runs: keys are paths whose
/// parts a backslash joins ("Software\\Norv\\Zantrel\\Startup"), each holds named values of two kinds.
///
/// Keys and names are found without regard to ASCII case and keep the spelling they were first written with. Reading
/// costs one question to the file system while nothing has changed, and sees what other processes wrote. A write
/// takes the lock, reads the file again, changes its one value and replaces the file, so that no value of another
/// writer is lost and the file is whole at every moment. A file that cannot be understood is renamed to
/// "registry.damaged-<date>-<time>.txt", the log says so, and the store is empty.
///
/// Shape   texts hold any bytes; the file holds at most 16 MiB
/// Errors  nothing throws; a failed write returns false, leaves the file as it was, sets LastError and logs one line
/// Thread  any; a write may wait for another process, as long as the constructor says
/// Source  docs/settings.md
class CRegistry {
public:
    static constexpr int kLockWaitMs = 2000;

    /// The store below UserConfigFolder(), asked for at each call so that a changed environment counts.
    static CRegistry& CurrentUser();

    /// A store in a folder of its own, which the first write makes.
    explicit CRegistry(std::string folder, int lockWaitMs = kLockWaitMs);
    ~CRegistry();

    /// Whether the key, or one below it, was ever made.
    bool KeyExists(std::string_view key);
    /// Makes the key and those above it; true when it is there already.
    bool CreateKey(std::string_view key);

    /// Nothing when there is no such value or the store cannot be read; IsReadable tells the two apart.
    std::optional<SRegistryValue> Read(std::string_view key, std::string_view name);
    /// The values of a key, sorted by name.
    std::vector<SNamedRegistryValue> EnumerateValues(std::string_view key);
    /// Whether the store could be read: a missing or damaged file reads as an empty store, one without permission does
    /// not read.
    bool IsReadable();

    /// Writes a value in place of one of the same name, whatever its kind; the key is made when missing.
    bool WriteText(std::string_view key, std::string_view name, std::string_view text);
    bool WriteDword(std::string_view key, std::string_view name, uint32_t number);
    /// Removes a value; true when there was none.
    bool Delete(std::string_view key, std::string_view name);

    /// Why the last write failed, for error texts: 5 access denied, 19 write protected, 33 locked by another program,
    /// 112 disk full, 1392 damaged, 31 anything else; 0 when it worked.
    ///
    /// Source  the system error numbers that the program's error texts show everywhere
    int LastError();

    /// The file that holds the store.
    std::string FilePath();

private:
    enum class EState { Read, Unreadable, Damaged };
    struct SChange;

    void UseFolder();
    void Load();
    void Refresh();
    int SetAside();
    bool Change(SChange change);
    int ApplyLocked(const SChange& change);

    std::mutex m_mutex;
    const bool m_followsEnvironment;
    const int m_lockWaitMs;
    std::string m_folder;
    std::string m_path;
    SFileImage m_image; ///< The file that m_content was read from; its text is not kept.
    RegistryContent m_content;
    EState m_state = EState::Read;
    bool m_loaded = false;
    int m_readError = 0;
    int m_loggedReadError = 0;
    std::string m_damage;
    SFileSignature m_leftInPlace; ///< The damaged file that could not be set aside.
    int m_lastError = 0;

    struct SEnvironment {};
    explicit CRegistry(SEnvironment);
};

} // namespace vx
