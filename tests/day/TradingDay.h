// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx::test {

/// What happens next in a simulated trading day. The numbers say where and with what; each step makes of them what the
/// list has, so that a day stays one when steps are taken out of it.
struct SDayStep {
    enum class EKind : uint8_t {
        Paste,
        Insert,
        Delete,
        Move,
        Empty,
        Note,
        Hide,
        Sort,
        Format,
        Column,
        Option,
        Alert,
        Together, ///< Several of those above in one step, which may be cancelled. The last edit.
        Undo,
        Redo,
        Price,
        Wait,
        Setting,
        Save,
        Reopen,
        Limit, ///< So many symbols the feed serves from here on.
        Deaf,  ///< The feed does not take the next commands.
        Break, ///< The feed loses its server and finds it again.
        Disk,  ///< One of the next calls fails, or all from there on, or the process dies in it.
        Kill,
        Count
    };
    EKind kind;
    uint32_t a, b, c;
};
using Day = std::vector<SDayStep>;

Day MakeDay(uint64_t seed, int steps);
/// Lives through a day with the real document, store, alerts, file and recovery, and with a plain list beside them.
///
/// Returns what did not agree first, after which step; empty for nothing
std::string LiveThrough(const Day& day);
/// The shortest day it can find that still fails, as a text: a line for each step and what did not agree.
std::string Shortest(Day day);

} // namespace vx::test
