// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What an option takes, and where it goes.
struct SOptionValue {
    /// In words, for what is said of another value: "a number from 0.5 to 8". Empty: any value, and an option that
    /// comes last without one is not understood instead of an error.
    std::string wanted;
    std::function<bool(const std::string& value)> take; ///< False: that is not what the option takes.
};

/// The option has no value; it is turned on.
SOptionValue Flag(bool& where);
/// Any text that is not empty.
SOptionValue TextValue(std::string& where, std::string wanted);
/// A whole number within bounds.
SOptionValue WholeNumber(uint64_t least, uint64_t most, std::function<void(uint64_t)> keep);

/// One option of a program, one row of its table.
struct SCommandOption {
    std::string_view name;  ///< With the dashes that the help shows: "--theme", "-symbol".
    std::string_view value; ///< Its value in the help: "N"; empty: it has none.
    std::string_view help;  ///< Empty: the help does not show it.
    SOptionValue takes;
    std::string_view leftOut{}; ///< The value when none follows, for an option whose value may be left out.
};

/// What else a command line has.
struct SCommandLine {
    std::vector<std::string> others;  ///< Arguments that are no options.
    std::vector<std::string> unknown; ///< Options that are not in the table, as they were given.
    std::string error;                ///< The first bad value, in words that name its option; empty: none.
};

enum class EDashes {
    OneOrTwo, ///< "-theme" is "--theme".
    Two       ///< Words after one dash are options of another program: "-version" is not "--version".
};

/// Reads a command line by a table: "--name value" and "--name=value", names in any case. What begins with "--" is an
/// option, never the value of the one before it.
///
/// By hand: the toolkit's parser cannot tell "-version" from "--version", has no values that may be left out, takes the
/// next option for a forgotten value, and loses file names that are no UTF-8.
SCommandLine ReadCommandLine(std::span<const std::string> arguments, std::span<const SCommandOption> options,
                             EDashes dashes);

/// The rows of a table for --help: option and value, and beside them the text, wrapped.
std::string OptionsHelp(std::span<const SCommandOption> options);

} // namespace vx
