#include "app/frame/NorvCommandLineInfo.h"

#include "base/Number.h"
#include "base/Text.h"

#include <fmt/format.h>

#include <charconv>
#include <functional>
#include <optional>

namespace vx {

namespace {

using Info = CNorvCommandLineInfo;

struct SOption {
    const char* name;
    bool takesValue;
    /// False: the value is not what the option takes.
    bool (*apply)(Info&, const std::string& value);
    /// What an option of this program alone takes; null for those that every display program shares: they take any
    /// value, so that one program can start another with options that it does not know.
    const char* wanted = nullptr;
};

bool Keep(std::string& where, const std::string& value) {
    where = value;
    return true;
}

bool KeepEdge(std::optional<int>& where, const std::string& value) {
    where = ReadInt32(value);
    return true;
}

bool KeepNumber(std::optional<int>& where, const std::string& value, int least, int most) {
    int number = 0;
    const auto [end, status] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (status != std::errc() || end != value.data() + value.size() || number < least || number > most) return false;
    where = number;
    return true;
}

bool KeepScale(Info& info, const std::string& value) {
    const auto scale = ReadWholeDouble(value);
    return scale && *scale >= Info::kSmallestScale && *scale <= Info::kLargestScale && Keep(info.scale, value);
}

bool KeepTheme(Info& info, const std::string& value) {
    const std::string name = LowerAscii(value);
    return (name == "system" || name == "light" || name == "dark") && Keep(info.theme, name);
}

bool ShowAs(Info& info, Info::EShow show) {
    if (info.show == Info::EShow::Normal) info.show = show;
    return true;
}

// One row per option.
constexpr SOption kOptions[] = {
    {"symbol", true, [](Info& i, const std::string& v) { return Keep(i.symbol, v); }},
    {"top", true, [](Info& i, const std::string& v) { return KeepEdge(i.top, v); }},
    {"bottom", true, [](Info& i, const std::string& v) { return KeepEdge(i.bottom, v); }},
    {"left", true, [](Info& i, const std::string& v) { return KeepEdge(i.left, v); }},
    {"right", true, [](Info& i, const std::string& v) { return KeepEdge(i.right, v); }},
    {"max", false, [](Info& i, const std::string&) { return ShowAs(i, Info::EShow::Maximised); }},
    {"min", false, [](Info& i, const std::string&) { return ShowAs(i, Info::EShow::Minimised); }},
    {"type", true, [](Info& i, const std::string& v) { return Keep(i.type, v); }},
    {"interval", true, [](Info& i, const std::string& v) { return Keep(i.interval, v); }},
    {"starter", false, [](Info& i, const std::string&) { return i.starter = true; }},
    {"resume", true, [](Info& i, const std::string& v) { return Keep(i.resume, v) && !v.empty(); },
     "the name of a file"},
    {"save-workspace", false, [](Info& i, const std::string&) { return i.saveWorkspace = true; }},
    {"open-workspace", false, [](Info& i, const std::string&) { return i.openWorkspace = true; }},
    {"new-window", false, [](Info& i, const std::string&) { return i.newWindow = true; }},
    {"screenshot", true, [](Info& i, const std::string& v) { return Keep(i.screenshot, v) && !v.empty(); },
     "the name of a file"},
    {"seconds", true, [](Info& i, const std::string& v) { return KeepNumber(i.seconds, v, 0, 3600); },
     "a whole number from 0 to 3600"},
    {"width", true, [](Info& i, const std::string& v) { return KeepNumber(i.width, v, 1, 8192); },
     "a whole number from 1 to 8192"},
    {"height", true, [](Info& i, const std::string& v) { return KeepNumber(i.height, v, 1, 8192); },
     "a whole number from 1 to 8192"},
    {"scale", true, KeepScale, "a number from 0.5 to 8"},
    {"theme", true, KeepTheme, "system, light or dark"},
    {"log", false, [](Info& i, const std::string&) { return i.log = true; }},
    {"about", false, [](Info& i, const std::string&) { return i.about = true; }},
    {"help", false, [](Info& i, const std::string&) { return i.help = true; }},
    {"h", false, [](Info& i, const std::string&) { return i.help = true; }},
    {"version", false, [](Info& i, const std::string&) { return i.version = true; }},
};

const SOption* FindOption(std::string_view name) {
    for (const SOption& option : kOptions)
        if (CompareNoCase(option.name, name) == 0) return &option;
    return nullptr;
}

// Pasted lists bring tabs and line ends along.
std::string_view TrimSpace(std::string_view text) {
    const auto isSpace = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

bool IsOption(const std::string& argument) { return argument.size() > 1 && argument[0] == '-'; }

} // namespace

CNorvCommandLineInfo::CNorvCommandLineInfo(const std::vector<std::string>& arguments) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!IsOption(argument)) {
            if (file.empty())
                file = argument;
            else
                otherFiles.push_back(argument);
            continue;
        }
        const std::string body = argument.substr(argument[1] == '-' ? 2 : 1);
        const size_t equals = body.find('=');
        const SOption* option = FindOption(std::string_view(body).substr(0, equals));
        const bool hasNext = i + 1 < arguments.size();
        if (!option || (option->takesValue && !option->wanted && equals == std::string::npos && !hasNext)) {
            unknown.push_back(argument);
            continue;
        }
        std::string value;
        if (equals != std::string::npos)
            value = body.substr(equals + 1);
        else if (option->takesValue && hasNext)
            value = arguments[++i];
        if (option->apply(*this, value) || !error.empty()) continue;
        error = value.empty() ? fmt::format("--{} needs a value: {}", option->name, option->wanted)
                              : fmt::format("--{}: \"{}\" is not {}", option->name, value, option->wanted);
    }
}

std::vector<std::string> CNorvCommandLineInfo::Symbols() const {
    std::vector<std::string> out;
    for (const std::string_view piece : SplitCountingTail(symbol, ',')) {
        if (out.size() == kMaxSymbols) break;
        const std::string_view trimmed = TrimSpace(piece);
        if (!trimmed.empty()) out.push_back(UpperAscii(trimmed));
    }
    return out;
}

const char* CommandLineHelp() {
    return "Usage: zantrel-watchlist [options] [FILE]\n"
           "\n"
           "  FILE                     opens a watchlist\n"
           "  -symbol IBM,MSFT         puts these symbols into rows 1, 2, ... (at most 100)\n"
           "  -top N -bottom N -left N -right N\n"
           "                           edges of the window in pixels\n"
           "  -max, -min               starts maximised or minimised\n"
           "  --starter                opens an untitled copy of the starter list\n"
           "  --theme NAME             system, light or dark, for this run\n"
           "  --log                    shows the log on standard error too, in colour\n"
           "  --new-window             opens FILE in a window of its own, even if another one has it\n"
           "  --save-workspace         has every running window note its place and its file, and ends\n"
           "  --open-workspace         starts the windows noted so that are not open, and ends\n"
           "  --screenshot FILE        renders the live window without a display and writes a PNG\n"
           "      --seconds N          ... after N seconds (default 4)\n"
           "      --width N --height N ... of this size (default 1320 by 760)\n"
           "      --scale N            ... with N device pixels to a pixel (default 1)\n"
           "      --about              ... with the about box open\n"
           "  --help, --version        this text; the version\n";
}

} // namespace vx
