// SPDX-License-Identifier: MIT
#include "app/workspace/Workspace.h"

#include "app/workspace/RunningWindows.h"
#include "base/Number.h"
#include "base/Registry.h"
#include "base/Windows1252.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace vx {

namespace {

constexpr std::string_view kProgram = kWatchlistProgram;
constexpr const char* kApplication = "Zantrel Watchlist";

// As one word of a shell's line.
std::string Quoted(std::string_view text) {
    std::string out(1, '"');
    for (const char c : text) {
        if (std::string_view("\"\\$`").find(c) != std::string_view::npos) out += '\\';
        out += c;
    }
    return out += '"';
}

std::string StateText(const SWorkspaceWindow& window) {
    const SPlacement& at = window.placement;
    if (at.maximised) return " -max";
    if (window.minimised) return " -min";
    return fmt::format(" -top {} -bottom {} -left {} -right {}", at.top, at.top + at.height, at.left,
                       at.left + at.width);
}

// A window's number among ours; 0 for a value of another program.
int NumberOf(std::string_view name) {
    if (!name.starts_with(kProgram) || name.size() <= kProgram.size() + 1) return 0;
    const int number = ReadInt32(name.substr(kProgram.size() + 1));
    return number > 0 && name == WorkspaceValueName(number) ? number : 0;
}

// Each running window counts as one of the workspace.
bool TakeOpen(std::vector<SRunningWindow>& running, const CNorvCommandLineInfo& wanted) {
    const auto same = std::ranges::find_if(running, [&](const SRunningWindow& window) {
        return wanted.file.empty() ? window.shows.file.empty() && window.shows.Symbols() == wanted.Symbols()
                                   : IsSameFile(window.shows.file, wanted.file);
    });
    if (same == running.end()) return false;
    running.erase(same);
    return true;
}

} // namespace

std::string WorkspaceValueName(int number) { return fmt::format("{} {}", kProgram, number); }

std::string WorkspaceText(const SWorkspaceWindow& window) {
    std::string text(kProgram);
    const auto add = [&](std::string_view option, std::string_view value) {
        if (!value.empty()) text += fmt::format(" {}{}", option, Quoted(value));
    };
    add("", window.file);
    if (window.file.empty()) add("-symbol ", window.symbols);
    add("-type ", window.type);
    add("-interval ", window.interval);
    return text += StateText(window);
}

std::optional<std::vector<std::string>> WorkspaceArguments(std::string_view text) {
    std::vector<std::string> words;
    bool quoted = false, inWord = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (!quoted && (text[i] == ' ' || text[i] == '\t')) {
            inWord = false;
            continue;
        }
        if (!std::exchange(inWord, true)) words.emplace_back();
        if (text[i] == '"')
            quoted = !quoted;
        else if (text[i] == '\\' && i + 1 < text.size())
            words.back() += text[++i];
        else
            words.back() += text[i];
    }
    if (quoted || words.empty() || words.front() != kProgram) return {};
    words.erase(words.begin());
    return words;
}

int SaveToWorkspace(CRegistry& registry, const SWorkspaceWindow& window, const std::function<bool(int)>& runs) {
    const std::string name = WorkspaceValueName(window.number);
    if (!registry.CreateKey(kWorkspacesKey) || !registry.WriteText(kWorkspacesKey, name, WorkspaceText(window)))
        return registry.LastError();
    for (const SNamedRegistryValue& value : registry.EnumerateValues(kWorkspacesKey)) {
        const int number = NumberOf(value.name);
        if (number > 0 && number != window.number && !runs(number)) registry.Delete(kWorkspacesKey, value.name);
    }
    return 0;
}

SOpenedWorkspace OpenWorkspace(CRegistry& registry, std::vector<SRunningWindow> running,
                               const std::function<int(const std::vector<std::string>&)>& start) {
    std::map<int, std::string> stored;
    for (const SNamedRegistryValue& value : registry.EnumerateValues(kWorkspacesKey))
        if (const int number = NumberOf(value.name)) stored[number] = value.value.text;
    SOpenedWorkspace out;
    for (const auto& [number, command] : stored) {
        ++out.stored;
        const auto arguments = WorkspaceArguments(command);
        const CNorvCommandLineInfo wanted(arguments.value_or(std::vector<std::string>{}));
        std::error_code ignored;
        if (!arguments)
            out.problems.push_back(
                fmt::format("What is stored as \"{}\" starts no window.", WorkspaceValueName(number)));
        else if (TakeOpen(running, wanted))
            ++out.open;
        else if (!wanted.file.empty() && !std::filesystem::exists(wanted.file, ignored))
            out.problems.push_back(fmt::format("\"{}\" is no longer there.", Windows1252FromUtf8(wanted.file)));
        else if (const int error = start(*arguments))
            out.problems.push_back(WindowStartError(error));
        else
            ++out.started;
    }
    return out;
}

std::string WorkspaceProblems(const SOpenedWorkspace& opened) {
    if (opened.stored == 0) return "No workspace is stored. File > Save Workspace notes the windows that are open.";
    std::string text = "Not every window of the workspace could be opened:\n";
    for (const std::string& problem : opened.problems) text += "\n" + problem;
    return text;
}

std::string WorkspaceError(const std::string& name, int error) {
    return fmt::format("Unable to open workspace with name {} in application {}. Error:{}", name, kApplication, error);
}

} // namespace vx
