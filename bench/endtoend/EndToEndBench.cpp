// SPDX-License-Identifier: MIT
// The whole program under load: from a line on loopback to the pixels of its cell, from a key to those of the focus,
// and what the program costs meanwhile.

#include "LinesInput.h"
#include "endtoend/LoopbackFeed.h"
#include "endtoend/ProgramOnScreen.h"

#include <QCoreApplication>

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <thread>

using namespace vx;
using namespace vx::bench;

namespace {

constexpr double kMs = 1e6; ///< Nanoseconds of a millisecond.
constexpr int kSecondMs = 1000;
constexpr int kSecondsOfQuick = 3;
constexpr int kSecondsOfAll = 8;
constexpr auto kLookEvery = std::chrono::microseconds(500);
constexpr int kStill = 900;       ///< Milliseconds after which nothing moves any more: a beat, and what was lit is out.
constexpr int kWarmUp = 1500;     ///< Milliseconds of load before the measured time.
constexpr int kPatience = 30'000; ///< Milliseconds until a program that does not do its part is given up.
constexpr double kBehindMs = 100; ///< So much waits at the end: the program does not keep up.
constexpr int64_t kLookAtSockets = 100'000'000;
constexpr int kLooksOfEnd = 10; ///< The last second.
constexpr int kMostCellWidth = 90;
constexpr int kMostCellHeight = 40;
constexpr int kRowOfKeys = 12;

struct SCase {
    size_t symbols;
    SPace pace;
};

constexpr SPace kSingle{5'000, 5'000}; // Each line in a send of its own.
constexpr SPace kUsual{5'000, 2'350};  // Two or three lines a send.
constexpr SPace kPeak{523'000, 1'000};

void Pause(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

template <class TCondition> void Await(const char* what, TCondition&& isSo) {
    for (int ms = 0; !isSo(); ++ms) {
        if (ms >= kPatience) throw std::runtime_error(what);
        Pause(1);
    }
}

std::string WriteList(const CProgramOnScreen& screen, size_t symbols) {
    std::string list = fmt::format(
        "Window=0;0;{};{};FALSE;FALSE\r\nTrailingRows=1\r\nLockedColumns=1\r\nShowRowNumbers=TRUE\r\n"
        "ShowToolBar=TRUE\r\nSort=-1;TRUE;FALSE;5\r\n"
        "Columns=Symbol:1200;Last:900;Change:900;% Chg:900;Volume:1000;Bid:900;Ask:900;B Size:800;A Size:800;High:900;"
        "Low:900;Open:900;Close:900;Spread:800;VWAP:900;T Time:1300;\r\nSymbols={}:1,;",
        CProgramOnScreen::kWidth, CProgramOnScreen::kHeight, CLoopbackFeed::kProbe);
    for (size_t row = 2; row <= symbols; ++row)
        list += fmt::format("{}:{},;", Lines(symbols - 1).symbols[row - 2], row);
    test::WriteFile(screen.Folder() / "Load.vxw", list + "\r\n");
    return screen.Folder() / "Load.vxw";
}

void WritePorts(const CProgramOnScreen& screen, const CLoopbackFeed& feed) {
    std::filesystem::create_directory(screen.Folder() / "zantrel");
    test::WriteFile(
        screen.Folder() / "zantrel/registry.txt",
        fmt::format("zantrel registry 1\n[Software\\\\Norv\\\\Zantrel\\\\Startup]\n\"AdminPort\" = text \"{}\"\n"
                    "\"LookupPort\" = text \"{}\"\n\"Level1Port\" = text \"{}\"\n\nend\n",
                    feed.Port(CLoopbackFeed::kAdmin), feed.Port(CLoopbackFeed::kLookup),
                    feed.Port(CLoopbackFeed::kLevel1)));
}

/// Times of one kind of change, from its cause to the screen. Causes come at random times, so that they meet each part
/// of a beat alike.
class CProbe {
public:
    explicit CProbe(uint32_t mostPauseMs) : m_mostPauseMs(mostPauseMs) {}

    bool IsDue(int64_t now) const { return !m_waits && now >= m_next; }
    bool Waits() const { return m_waits; }
    void Begins() { m_waits = true; }
    void IsSeen(int64_t now, int64_t since) {
        m_times.push_back(static_cast<double>(now - since) / kMs);
        m_waits = false;
        m_next = now + static_cast<int64_t>(m_random.Below(m_mostPauseMs * 1000)) * 1000;
    }
    std::string Text() {
        if (m_times.empty()) return fmt::format("{:>22} ", "never seen");
        std::sort(m_times.begin(), m_times.end());
        const auto at = [&](size_t percent) { return m_times[(m_times.size() * percent + 99) / 100 - 1]; };
        return fmt::format("{:6.1f}{:6.1f}{:6.1f}{:5}", at(50), at(90), at(99), m_times.size());
    }

private:
    test::CRandom m_random{7};
    uint32_t m_mostPauseMs;
    int64_t m_next = 0;
    bool m_waits = false;
    std::vector<double> m_times;
};

/// The present memory of the first list, which that of the others is compared with.
struct SMemory {
    double megabytes = 0;
    size_t symbols = 0;
};

/// The program on one list under one load.
class CRun {
public:
    CRun(const SCase& load, bool evenly, const std::string& program) : m_load(load), m_feed(load.symbols, evenly) {
        WritePorts(m_screen, m_feed);
        m_screen.Start(program, WriteList(m_screen, load.symbols));
        m_screen.Focus();
        Await("the program does not watch its symbols", [&] { return m_feed.IsWatched(); });
        Await("the program does not read the summaries", [&] { return m_feed.BytesUnread() == 0; });
        FindPlaces();
    }

    /// Returns the row of the table.
    std::string Measure(int seconds, std::optional<SMemory>& first) {
        m_feed.SetPace(m_load.pace);
        Pause(kWarmUp);
        const SSent sent = m_feed.Sent();
        const double read = BytesRead(), cpu = m_screen.CpuSeconds(), kernel = m_screen.KernelSeconds(),
                     held = m_screen.HeldSeconds();
        const int64_t began = Now();
        Watch(seconds * kSecondMs, true);
        const double took = static_cast<double>(Now() - began) / kMs / kSecondMs;
        const double cpuTook = m_screen.CpuSeconds() - cpu, kernelTook = m_screen.KernelSeconds() - kernel,
                     heldTook = m_screen.HeldSeconds() - held;
        const double taken = (BytesRead() - read) / m_feed.BytesALine() / took;
        const SSent now = m_feed.Sent();
        Watch(kPatience, false);
        if (m_line.Waits()) m_line.IsSeen(Now(), m_feed.StampedAt()); // Later still.
        if (m_key.Waits()) m_key.IsSeen(Now(), m_pressedAt);

        const SMemory memory{m_screen.Megabytes("VmRSS"), m_load.symbols};
        if (!first) first = memory;
        std::string row = fmt::format(
            "{:7}{:9}{:8.0f}{:9.0f}{:7.0f}{:7.1f}{:7.0f}{:7.1f}   {}   {}{:8.1f}{:7.1f}", m_load.symbols,
            m_load.pace.lines, static_cast<double>(now.sends - sent.sends) / took, taken,
            *std::max_element(m_waited.begin(), m_waited.end()), cpuTook / took * 100, kernelTook / cpuTook * 100,
            heldTook / took * 100, m_line.Text(), m_key.Text(), memory.megabytes, m_screen.Megabytes("VmHWM"));
        row += memory.symbols == first->symbols
                   ? fmt::format("{:>7}", "")
                   : fmt::format("{:7.2f}", (memory.megabytes - first->megabytes) * 1024 /
                                                static_cast<double>(memory.symbols - first->symbols));
        if (*std::min_element(m_waited.end() - std::min<ptrdiff_t>(kLooksOfEnd, std::ssize(m_waited)), m_waited.end()) >
            kBehindMs)
            row += now.refused > sent.refused ? "  falls behind" : "  the sender was late: measure again";
        return row;
    }

private:
    // Where data are, and where nothing but the focus changes: without the bar at the bottom, which shows their age.
    static constexpr SBox kBoard{0, 0, CProgramOnScreen::kWidth, CProgramOnScreen::kHeight - 80};
    static constexpr SBox kLeftEdge{0, 0, 100, kBoard.height};

    CProgramOnScreen::Picture Still(const SBox& part) const {
        Pause(kStill);
        return m_screen.Look(part);
    }
    // By what a stamp and a key change while nothing else does.
    void FindPlaces() {
        m_feed.Stamp();
        const auto low = Still(kBoard);
        m_feed.Stamp();
        m_cell = CProgramOnScreen::Changed(low, Still(kBoard), kBoard);
        const int ink = m_screen.Ink(m_cell);
        m_feed.Stamp();
        Pause(kStill);
        m_inkBetween = (ink + m_screen.Ink(m_cell)) / 2;
        if (m_cell.width > kMostCellWidth || m_cell.height > kMostCellHeight || IsHigh() == (ink > m_inkBetween))
            throw std::runtime_error("the stamped cell is not found");
        for (int row = 1; row < kRowOfKeys; ++row) m_screen.Press("Down");
        const auto before = Still(kLeftEdge);
        PressKey();
        m_focus = CProgramOnScreen::Changed(before, Still(kLeftEdge), kLeftEdge);
        if (m_focus.width == 0 || m_focus.height > 3 * kMostCellHeight)
            throw std::runtime_error("the key changes nothing");
    }
    bool IsHigh() const { return m_screen.Ink(m_cell) > m_inkBetween; }
    void PressKey() {
        m_screen.Press(m_isDown ? "Up" : "Down");
        m_isDown = !m_isDown;
    }

    double BytesRead() const {
        return static_cast<double>(m_feed.Sent().bytes) - static_cast<double>(m_feed.BytesUnread());
    }
    // How long the present load takes to send what waits.
    double WaitingMs() const {
        const SSent sent = m_feed.Sent();
        const double lines = static_cast<double>(sent.due - sent.lines) +
                             static_cast<double>(m_feed.BytesUnread()) / m_feed.BytesALine();
        return lines / m_load.pace.lines * kSecondMs;
    }

    // Causes changes and looks for them; when it causes none, until all were seen.
    void Watch(int ms, bool causes) {
        const int64_t end = Now() + static_cast<int64_t>(ms * kMs);
        int64_t now;
        while ((now = Now()) < end && (causes || m_line.Waits() || m_key.Waits())) {
            if (causes && m_line.IsDue(now)) {
                m_wasHigh = IsHigh();
                m_line.Begins();
                m_feed.Stamp();
            } else if (m_line.Waits() && IsHigh() != m_wasHigh) {
                m_line.IsSeen(now, m_feed.StampedAt());
            }
            if (causes && m_key.IsDue(now)) {
                m_before = m_screen.Look(m_focus);
                m_key.Begins();
                m_pressedAt = Now();
                PressKey();
            } else if (m_key.Waits() && m_screen.Look(m_focus) != m_before) {
                m_key.IsSeen(now, m_pressedAt);
            }
            if (causes && now >= m_nextWaited) {
                m_nextWaited = now + kLookAtSockets;
                m_waited.push_back(WaitingMs());
            }
            std::this_thread::sleep_for(kLookEvery);
        }
    }

    SCase m_load;
    CLoopbackFeed m_feed;
    CProgramOnScreen m_screen;
    SBox m_cell, m_focus;
    int m_inkBetween = 0;
    bool m_wasHigh = false, m_isDown = false;
    CProgramOnScreen::Picture m_before;
    int64_t m_pressedAt = 0, m_nextWaited = 0;
    CProbe m_line{250}, m_key{100}; // Lines: a beat, so that they meet all of it alike.
    std::vector<double> m_waited;
};

constexpr const char* kHead =
    "                                 waits    CPU kernel   held      line to pixel, ms         key to pixel, ms"
    "              MB   KB a\n"
    "symbols  lines/s sends/s  taken/s    ms      %      %      %   median   90    99    n   median   90    99    n"
    "     now   peak symbol";

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    std::string program =
        std::filesystem::path(std::filesystem::read_symlink("/proc/self/exe")).parent_path().parent_path() /
        "zantrel-watchlist";
    bool all = false, evenly = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--program" && i + 1 < argc) {
            program = argv[++i];
        } else if (argument == "--all" || argument == "--quick") {
            all = argument == "--all";
        } else if (argument == "--evenly") {
            evenly = true;
        } else {
            std::fputs("bench_end_to_end [--quick | --all] [--evenly] [--program PATH]\n", stderr);
            return 2;
        }
    }
    if (const std::string missing = CProgramOnScreen::Missing(); !missing.empty()) {
        std::printf("%s is not installed: nothing is measured end to end.\n", missing.c_str());
        return 0;
    }
    std::vector<SCase> cases{{500, kUsual}, {10'000, kPeak}, {100'000, kPeak}};
    if (all) {
        cases.clear();
        for (const size_t symbols : {500, 10'000, 100'000})
            for (const SPace pace : {kSingle, kUsual, SPace{50'000, 1'000}, SPace{200'000, 1'000}, kPeak})
                cases.push_back({symbols, pace});
    }
    std::printf("%s\n%dx%d, no window manager; traffic %s; CPU: %% of one core\n%s\n", program.c_str(),
                CProgramOnScreen::kWidth, CProgramOnScreen::kHeight, evenly ? "spread evenly" : "by Zipf's law", kHead);
    std::optional<SMemory> first;
    int status = 0;
    for (const SCase& each : cases) {
        try {
            std::puts(CRun(each, evenly, program).Measure(all ? kSecondsOfAll : kSecondsOfQuick, first).c_str());
        } catch (const std::runtime_error& error) {
            std::printf("%7zu%9u  not measured: %s\n", each.symbols, each.pace.lines, error.what());
            status = 1;
        }
        std::fflush(stdout);
    }
    return status;
}
