// SPDX-License-Identifier: MIT
#pragma once

#include "base/FileSystem.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

// Files that other windows of the program may read and write at the same time, and that must stay whole whatever
// happens to the process. Paths and errors are those of CFileSystem.

/// An exclusive lock between processes, and between two locks of one process, for as long as the object lives. The
/// system takes it back when the process dies.
class CFileLock {
public:
    /// Takes the lock on a file that is made when missing and never removed.
    ///
    /// Units   waitMs: how long to try while another one holds it
    /// Thread  blocks the calling thread for at most waitMs
    CFileLock(const std::string& path, int waitMs);

    bool IsHeld() const { return m_error == 0; }
    /// Why the lock is not held: EWOULDBLOCK when another one kept it.
    int Error() const { return m_error; }

private:
    std::unique_ptr<COpenFile> m_file;
    int m_error = 0;
};

/// Asks for the present state of the file at a path; a missing file is no error and gives an empty signature.
int ReadSignature(const std::string& path, SFileSignature& signature);

/// A whole regular file as read. While it lives its file stays open, so that no other file can get the same inode
/// number and the signature stays unique.
struct SFileImage {
    std::unique_ptr<COpenFile> file;
    SFileSignature signature;
    std::string content;
};

/// Reads a whole file. A missing file is no error and gives an empty image.
///
/// Errors  EFBIG for more than maxBytes (the image then holds the signature and the beginning), EINVAL when the path
/// names no regular file (it never waits for a pipe)
int ReadWholeFile(const std::string& path, size_t maxBytes, SFileImage& image);

/// Replaces the file at the path by one with new content: written beside it as "<path>.new", brought to
/// disk, then renamed. At every moment the path holds the old or the new content, whole. A link is followed, so that
/// it still points to the file; the file's permissions stay, a new file is readable by its owner only.
///
/// Errors  after any error the old file is as it was
/// Thread  one writer at a time: hold a CFileLock
int ReplaceFile(const std::string& path, std::string_view content);

/// Writes all bytes to an open file, however many calls that takes.
int WriteAll(COpenFile& file, std::string_view content);

/// Whether a path leads to something.
bool Exists(const std::string& path);

/// Makes a folder and those above it, for its owner only.
int MakeFolders(const std::string& path);

/// Replaces a user's file at the path by one with new content, which may be in any folder: written into
/// a file of its own name beside it, brought to disk, then renamed. At every moment, whenever the process is killed,
/// the path holds the old or the new content, whole. Links are followed; permissions stay, and owner and group as far
/// as the system allows; a new file gets those that the user's mask leaves. What a killed process left beside the file
/// is removed by the next save. loss: what could not be kept; null when nobody asks.
///
/// Errors  an errno value, 0 for success; after any error the old file is as it was. EISDIR and EINVAL when the path
///         names a folder or no regular file, EACCES for a file that may not be written
/// Thread  any; savers of one file at the same time each leave a whole file, the last one stays
int SaveFile(const std::string& path, std::string_view content, SFileLoss* loss = nullptr);

/// As SaveFile, for a file of the program's own: only its owner may read it.
int SavePrivateFile(const std::string& path, std::string_view content);

/// Removes what killed saves left in a folder, whichever files they were of.
void RemoveSaveLeftovers(const std::string& folder);

} // namespace vx
