// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace vx::test {

/// Runs a function in a forked child, which ends without any of the parent's clean-up, and returns the child's id.
inline pid_t Fork(const std::function<int()>& run) {
    const pid_t child = fork();
    if (child == 0) _exit(run());
    return child;
}

/// Waits for a child; -1 when it did not end by itself.
inline int ExitCode(pid_t child) {
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

inline constexpr uid_t kNobody = 65534;
inline constexpr const char* kNoOrdinaryUser = "there is no second user here, as in a rootless container";

/// Whether RunAsOrdinaryUser works. In a rootless container it does not: the only user is the administrator.
inline bool HasOrdinaryUser() {
    return geteuid() != 0 || ExitCode(Fork([] { return setgid(kNobody) != 0 || setuid(kNobody) != 0; })) == 0;
}

/// As Fork and ExitCode, without the rights of the system's administrator, whom no permission stops.
inline int RunAsOrdinaryUser(const std::function<int()>& run) {
    return ExitCode(Fork([&] {
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) return 99;
        return run();
    }));
}

} // namespace vx::test
