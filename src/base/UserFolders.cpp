#include "base/UserFolders.h"

#include <fmt/format.h>

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace vx {

namespace {

std::string Home() {
    if (const char* home = std::getenv("HOME"); home && *home == '/') return home;
    if (const passwd* user = getpwuid(getuid()); user && user->pw_dir && *user->pw_dir == '/') return user->pw_dir;
    return "/tmp";
}

std::string Folder(const char* variable, const char* belowHome) {
    const char* value = std::getenv(variable);
    return (value && *value == '/' ? std::string(value) : Home() + belowHome) + "/zantrel";
}

} // namespace

std::string UserConfigFolder() { return Folder("XDG_CONFIG_HOME", "/.config"); }

std::string UserStateFolder() { return Folder("XDG_STATE_HOME", "/.local/state"); }

std::string UserRuntimeFolder() {
    const char* value = std::getenv("XDG_RUNTIME_DIR");
    return value && *value == '/' ? std::string(value) + "/zantrel" : fmt::format("/tmp/zantrel-{}", geteuid());
}

} // namespace vx
