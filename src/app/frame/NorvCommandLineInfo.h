// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vx {

/// What the command line asked for.
///
/// Shape   options start with "-" or "--", as ReadCommandLine has them. An argument that is no option is a watchlist
///         file; a path may begin with "/".
/// Errors  one that is not known, or that all display programs share and that lacks its value, is kept in unknown and
///         otherwise ignored; error says what is wrong with the value of an option of this program alone
/// Units   edges in pixels of the virtual screen; integers are read leniently (text that is no number gives 0)
class CNorvCommandLineInfo {
public:
    enum class EShow { Normal, Maximised, Minimised };

    CNorvCommandLineInfo() = default;
    /// arguments: without the program's own name
    explicit CNorvCommandLineInfo(const std::vector<std::string>& arguments);

    /// The symbols of -symbol: cut at commas, trimmed of white space, upper-cased, empty ones left out, at most
    /// kMaxSymbols.
    std::vector<std::string> Symbols() const;

    bool HasEdges() const { return top || bottom || left || right; }

    static constexpr size_t kMaxSymbols = 100;
    static constexpr double kSmallestScale = 0.5, kLargestScale = 8;

    std::string symbol;                          ///< -symbol IBM,MSFT, as given
    std::optional<int> top, bottom, left, right; ///< initial edges of the frame
    EShow show = EShow::Normal;                  ///< -max or -min, whichever came first
    std::string type;                            ///< -type, kept for the caller
    std::string interval;                        ///< -interval, kept for the caller
    std::string file;                            ///< watchlist to open
    std::vector<std::string> otherFiles;         ///< named besides; a window shows one watchlist
    std::string resume;                          ///< --resume FILE: unsaved changes that a window leaves behind
    bool starter = false;                        ///< --starter: an untitled copy of the starter list
    bool saveWorkspace = false;                  ///< --save-workspace: tell the running windows, and end
    bool openWorkspace = false;                  ///< --open-workspace: start the stored windows, and end
    bool newWindow = false;                      ///< --new-window: a window of its own for a file that is open
    std::string screenshot;                      ///< --screenshot FILE: render offscreen, write a PNG, end
    std::optional<int> seconds;                  ///< --seconds N: how long the window runs before the picture
    std::optional<int> width, height;            ///< --width, --height of the picture
    std::string scale;                           ///< --scale 2: device pixels per pixel; empty: 1
    std::string theme;                           ///< --theme system, light or dark; empty: the setting
    bool log = false;                            ///< --log: the log on standard error too
    bool about = false;                          ///< --about: with --screenshot, the about box is shown too
    bool help = false;
    bool version = false;
    std::vector<std::string> unknown; ///< options that were not understood
    std::string error;                ///< the first bad value, as a sentence that names it; empty: none
};

/// The text of --help.
std::string CommandLineHelp();

} // namespace vx
