#include "app/Workspace.h"

#include "base/Number.h"
#include "base/Registry.h"
#include "base/RegistryPaths.h"

#include <fmt/format.h>

#include <string_view>

namespace vx {

namespace {

constexpr std::string_view kProgram = "zantrel-watchlist";
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

int SaveToWorkspace(CRegistry& registry, const SWorkspaceWindow& window, const std::function<bool(int)>& runs) {
    const std::string name = WorkspaceValueName(window.number);
    if (!registry.CreateKey(kWorkspacesKey) || !registry.WriteText(kWorkspacesKey, name, WorkspaceText(window)))
        return registry.LastError();
    for (const SNamedRegistryValue& value : registry.EnumerateValues(kWorkspacesKey)) {
        const std::string_view given = value.name;
        if (!given.starts_with(kProgram) || given.size() <= kProgram.size() + 1) continue;
        const int number = ReadInt32(given.substr(kProgram.size() + 1));
        if (number > 0 && given == WorkspaceValueName(number) && number != window.number && !runs(number))
            registry.Delete(kWorkspacesKey, given);
    }
    return 0;
}

std::string WorkspaceError(const std::string& name, int error) {
    return fmt::format("Unable to open workspace with name {} in application {}. Error:{}", name, kApplication, error);
}

} // namespace vx
