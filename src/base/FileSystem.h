// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

enum class EFileKind : uint8_t { Regular, Folder, Other };

/// What tells one state of a file from another without reading it.
struct SFileSignature {
    uint64_t device = 0;
    uint64_t inode = 0; ///< 0 with everything else 0: there is no file.
    int64_t size = 0;
    int64_t modifiedNs = 0; ///< Nanoseconds since 1970 UTC.

    bool operator==(const SFileSignature&) const = default;
};

struct SFileStatus {
    SFileSignature signature;
    EFileKind kind = EFileKind::Regular;
    uint32_t permissions = 0; ///< As chmod takes them.
    uint32_t owner = 0;
    uint32_t group = 0;
    uint64_t names = 0; ///< Hard links; 0 for an open file that was removed.
};

/// What a save could not keep of the file that it replaced.
struct SFileLoss {
    bool owner = false;       ///< The owner is now the user who saved it.
    bool permissions = false; ///< Its group, or a list of who else may use it.
    unsigned otherNames = 0;  ///< Other names of the file (hard links); they keep the old content.
};

/// Opening never waits for a pipe.
enum class EOpen : uint8_t {
    Read,
    Change,   ///< To read and write what is there; ELOOP for a link.
    New,      ///< To read and write a file that must not be there yet.
    Lock,     ///< To read and write; made when missing.
    Extend,   ///< To read, and to write at the end; made when missing.
    Append,   ///< To write at the end; made when missing.
    Overwrite ///< To write, emptied; made when missing.
};

/// An open file; the destructor closes it and releases its lock. Errors as in CFileSystem.
class COpenFile {
public:
    virtual ~COpenFile() = default;

    virtual int Status(SFileStatus& status) const = 0;
    /// Reads up to `bytes` bytes from a position on; count 0 at the end.
    virtual int Read(uint64_t position, char* to, size_t bytes, size_t& count) const = 0;
    /// May write less than all; WriteAll does not. count: what was written, also 0 after an error.
    virtual int Write(std::string_view content, size_t& count) = 0;
    /// Brings the content to disk.
    virtual int Sync() = 0;
    virtual int Truncate(int64_t bytes) = 0;
    virtual int SetPermissions(uint32_t permissions) = 0;
    /// Gives the file owner, group and access list of another one, as far as the system allows.
    virtual SFileLoss TakeOwnership(const SFileStatus& from, const std::string& path) = 0;
    /// An exclusive lock between open files, of this process and of others; the system takes it back when the process
    /// dies. EWOULDBLOCK when another one has it.
    virtual int TryLock() = 0;
};

/// The files that the program keeps: saves, settings, recovery, history, log. Everything that a user must not lose
/// passes here, so that tests can replace it by a disk that fails or stops at any call, and another system needs one
/// more implementation and nothing else.
///
/// Shape   paths are bytes as the system takes them; a relative one counts from the current folder
/// Errors  an errno value, 0 for success
/// Thread  any
class CFileSystem {
public:
    virtual ~CFileSystem() = default;

    /// permissions: of a file that is made, less what the user's mask takes away.
    virtual int Open(const std::string& path, EOpen how, uint32_t permissions, std::unique_ptr<COpenFile>& file) = 0;
    /// Of what the path leads to; links are followed.
    virtual int Status(const std::string& path, SFileStatus& status) = 0;
    /// Whether an existing file may be written: 0, or why not.
    virtual int CheckWritable(const std::string& path) = 0;
    /// Where a link leads; EINVAL for what is no link, ENOENT where nothing is.
    virtual int ReadLink(const std::string& path, std::string& target) = 0;
    /// The path from the root on, with all links followed as far as there is something.
    virtual int Canonical(const std::string& path, std::string& canonical) = 0;
    /// In one step; a file that has the new name already is replaced.
    virtual int Rename(const std::string& from, const std::string& to) = 0;
    virtual int Remove(const std::string& path) = 0;
    virtual int MakeFolder(const std::string& path, uint32_t permissions) = 0;
    /// The names in a folder, in no order.
    virtual int List(const std::string& folder, std::vector<std::string>& names) = 0;
    /// Brings what was made, renamed and removed in a folder to disk. Not every file system can.
    virtual int SyncFolder(const std::string& folder) = 0;
    virtual int SetModified(const std::string& path, int64_t ns) = 0;

    /// The file system in use: the system's until SetInstance names another.
    static CFileSystem& Instance();
    /// Owns    nothing: the caller keeps the file system alive until it puts null (the system's one) back. Not while
    ///         another thread uses it
    static void SetInstance(CFileSystem* fileSystem);
};

inline CFileSystem& Disk() { return CFileSystem::Instance(); }

// The folders that belong to the current user, after the XDG base directory rules. A variable that is not an absolute
// path counts as not set. No folder is made here; paths end without "/".

/// The folder of settings: $XDG_CONFIG_HOME/zantrel, else ~/.config/zantrel.
std::string UserConfigFolder();

/// The folder of logs and recovery files: $XDG_STATE_HOME/zantrel, else ~/.local/state/zantrel.
std::string UserStateFolder();

/// The folder of the sockets through which running windows are reached: $XDG_RUNTIME_DIR/zantrel, else a folder of the
/// user's own in /tmp. The caller makes sure that nobody but the user can use it.
std::string UserRuntimeFolder();

/// Why a file could not be read or written, as the end of a sentence and without a full stop: "the disk is full".
///
/// Shape   an errno value in -> ASCII; a number that has no words of its own gives the system's text and the number
/// Thread  any
std::string ErrorText(int error);

} // namespace vx
