#include "base/ErrorText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace vx {

namespace {

struct SReason {
    int error;
    const char* text;
};

constexpr std::array kReasons = {
    SReason{ENOENT, "there is no such file or folder"},
    SReason{EISDIR, "it is a folder"},
    SReason{ENOTDIR, "a part of its path is no folder"},
    SReason{EINVAL, "it is no file but a pipe, a device or a socket"},
    SReason{EACCES, "you are not allowed to"},
    SReason{EPERM, "you are not allowed to"},
    SReason{EROFS, "the disk is read-only"},
    SReason{ENOSPC, "the disk is full"},
    SReason{EDQUOT, "your share of the disk is full"},
    SReason{EFBIG, "it is too large"},
    SReason{ENAMETOOLONG, "its name is too long"},
    SReason{ELOOP, "its links lead nowhere"},
    SReason{EIO, "the disk reports an error"},
};

} // namespace

std::string ErrorText(int error) {
    const auto* found = std::ranges::find(kReasons, error, &SReason::error);
    if (found != kReasons.end()) return found->text;
    return fmt::format("{} (error {})", std::generic_category().message(error), error);
}

} // namespace vx
