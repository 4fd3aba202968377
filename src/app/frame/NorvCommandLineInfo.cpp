// SPDX-License-Identifier: MIT
#include "app/frame/NorvCommandLineInfo.h"

#include "base/CommandLine.h"
#include "base/Number.h"
#include "base/Text.h"

#include <cstdint>
#include <utility>

namespace vx {

namespace {

using Info = CNorvCommandLineInfo;

SOptionValue Edge(std::optional<int>& where) {
    return {{}, [&where](const std::string& value) {
                where = ReadInt32(value);
                return true;
            }};
}

SOptionValue Number(std::optional<int>& where, int least, int most) {
    return WholeNumber(static_cast<uint64_t>(least), static_cast<uint64_t>(most),
                       [&where](uint64_t value) { where = static_cast<int>(value); });
}

SOptionValue Scale(std::string& where) {
    return {"a number from 0.5 to 8", [&where](const std::string& value) {
                where = value;
                const auto scale = ReadWholeDouble(value);
                return scale && *scale >= Info::kSmallestScale && *scale <= Info::kLargestScale;
            }};
}

SOptionValue Theme(std::string& where) {
    return {"system, light or dark", [&where](const std::string& value) {
                where = LowerAscii(value);
                return where == "system" || where == "light" || where == "dark";
            }};
}

SOptionValue ShowAs(Info& info, Info::EShow show) {
    return {{}, [&info, show](const std::string&) {
                if (info.show == Info::EShow::Normal) info.show = show;
                return true;
            }};
}

// Those with one dash are shared by all display programs: they take any value, so that one program can start another
// with options that it does not know.
std::vector<SCommandOption> Table(Info& i) {
    const std::string file = "the name of a file";
    return {
        {"-symbol", "IBM,MSFT", "puts these symbols into rows 1, 2, ... (at most 100)", TextValue(i.symbol, {})},
        {"-top", "N", "upper edge of the window in pixels", Edge(i.top)},
        {"-bottom", "N", "lower edge", Edge(i.bottom)},
        {"-left", "N", "left edge", Edge(i.left)},
        {"-right", "N", "right edge", Edge(i.right)},
        {"-max", "", "starts maximised", ShowAs(i, Info::EShow::Maximised)},
        {"-min", "", "starts minimised", ShowAs(i, Info::EShow::Minimised)},
        {"-type", "TYPE", "", TextValue(i.type, {})},
        {"-interval", "INTERVAL", "", TextValue(i.interval, {})},
        {"--starter", "", "opens an untitled copy of the starter list", Flag(i.starter)},
        {"--theme", "NAME", "system, light or dark, for this run", Theme(i.theme)},
        {"--log", "", "shows the log on standard error too, in colour", Flag(i.log)},
        {"--new-window", "", "opens FILE in a window of its own, even if another one has it", Flag(i.newWindow)},
        {"--resume", "FILE", "", TextValue(i.resume, file)},
        {"--save-workspace", "", "has every running window note its place and its file, and ends",
         Flag(i.saveWorkspace)},
        {"--open-workspace", "", "starts the windows noted so that are not open, and ends", Flag(i.openWorkspace)},
        {"--screenshot", "FILE", "renders the live window without a display and writes a PNG",
         TextValue(i.screenshot, file)},
        {"--seconds", "N", "... after N seconds (default 4)", Number(i.seconds, 0, 3600)},
        {"--width", "N", "... of this width (default 1320)", Number(i.width, 1, 8192)},
        {"--height", "N", "... of this height (default 760)", Number(i.height, 1, 8192)},
        {"--scale", "N", "... with N device pixels to a pixel (default 1)", Scale(i.scale)},
        {"--about", "", "... with the about box open", Flag(i.about)},
        {"--help", "", "this text", Flag(i.help)},
        {"-h", "", "", Flag(i.help)},
        {"--version", "", "the version", Flag(i.version)},
    };
}

// Pasted lists bring tabs and line ends along.
std::string_view TrimSpace(std::string_view text) {
    const auto isSpace = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

} // namespace

CNorvCommandLineInfo::CNorvCommandLineInfo(const std::vector<std::string>& arguments) {
    SCommandLine line = ReadCommandLine(arguments, Table(*this), EDashes::OneOrTwo);
    unknown = std::move(line.unknown);
    error = std::move(line.error);
    if (line.others.empty()) return;
    file = line.others.front();
    otherFiles.assign(line.others.begin() + 1, line.others.end());
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

std::string CommandLineHelp() {
    Info none;
    return "Usage: zantrel-watchlist [options] [FILE]\n\nFILE is a watchlist to open.\n\n" + OptionsHelp(Table(none));
}

} // namespace vx
