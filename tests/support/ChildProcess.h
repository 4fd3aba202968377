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

} // namespace vx::test
