#pragma once

#include "base/FileSystem.h"

#include <string>
#include <string_view>

namespace vx {

/// Puts a user's file with new content in the place of the one at the path, which may stand in any folder: written into
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
