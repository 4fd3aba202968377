#include "app/NorvCommandLineInfo.h"

#include "base/Number.h"
#include "base/Text.h"

#include <functional>

namespace vx {

namespace {

using Info = CNorvCommandLineInfo;

struct SOption {
    const char* name;
    bool takesValue;
    void (*apply)(Info&, const std::string& value);
};

void ShowAs(Info& info, Info::EShow show) {
    if (info.show == Info::EShow::Normal) info.show = show;
}

// One row per option.
constexpr SOption kOptions[] = {
    {"symbol", true, [](Info& i, const std::string& v) { i.symbol = v; }},
    {"top", true, [](Info& i, const std::string& v) { i.top = ReadInt32(v); }},
    {"bottom", true, [](Info& i, const std::string& v) { i.bottom = ReadInt32(v); }},
    {"left", true, [](Info& i, const std::string& v) { i.left = ReadInt32(v); }},
    {"right", true, [](Info& i, const std::string& v) { i.right = ReadInt32(v); }},
    {"max", false, [](Info& i, const std::string&) { ShowAs(i, Info::EShow::Maximised); }},
    {"min", false, [](Info& i, const std::string&) { ShowAs(i, Info::EShow::Minimised); }},
    {"type", true, [](Info& i, const std::string& v) { i.type = v; }},
    {"interval", true, [](Info& i, const std::string& v) { i.interval = v; }},
    {"starter", false, [](Info& i, const std::string&) { i.starter = true; }},
    {"save-workspace", false, [](Info& i, const std::string&) { i.saveWorkspace = true; }},
    {"screenshot", true, [](Info& i, const std::string& v) { i.screenshot = v; }},
    {"seconds", true, [](Info& i, const std::string& v) { i.seconds = ReadInt32(v); }},
    {"width", true, [](Info& i, const std::string& v) { i.width = ReadInt32(v); }},
    {"height", true, [](Info& i, const std::string& v) { i.height = ReadInt32(v); }},
    {"scale", true, [](Info& i, const std::string& v) { i.scale = v; }},
    {"theme", true, [](Info& i, const std::string& v) { i.theme = LowerAscii(v); }},
    {"about", false, [](Info& i, const std::string&) { i.about = true; }},
    {"help", false, [](Info& i, const std::string&) { i.help = true; }},
    {"version", false, [](Info& i, const std::string&) { i.version = true; }},
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
        if (!option) {
            unknown.push_back(argument);
        } else if (!option->takesValue) {
            option->apply(*this, {});
        } else if (equals != std::string::npos) {
            option->apply(*this, body.substr(equals + 1));
        } else if (i + 1 < arguments.size()) {
            option->apply(*this, arguments[++i]);
        } else {
            unknown.push_back(argument);
        }
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
           "  --save-workspace         has every running window note its place and its file, and ends\n"
           "  --screenshot FILE        renders the live window without a display and writes a PNG\n"
           "      --seconds N          ... after N seconds (default 4)\n"
           "      --width N --height N ... of this size (default 1320 by 760)\n"
           "      --scale N            ... with N device pixels to a pixel (default 1)\n"
           "      --about              ... with the about box open\n"
           "  --help, --version        this text; the version\n";
}

} // namespace vx
