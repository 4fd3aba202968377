// SPDX-License-Identifier: MIT
// How soon the user sees what was asked for, offscreen, in CPU time and in time passed:
// - the first screen of a watchlist of 100,000 rows, from the moment its file has been read;
// - a symbol typed into a list that shows every column there is (bar 1 ms of CPU until the document and the grid have
// it);
// - a beat of 250 ms with 125,000 changed values: what document and grid do with them, and the painting of 50 cells,
// all
//   the way from the records;
// - the longest time for which an auto sort of 100,000 rows holds the window;
// - a key pressed while 5,000 updates come every second: the key arrives behind everything that 250 ms of them have
//   left to do (all their lines, the repaint of their cells), which is the worst moment.

#include "data/catalogue/UpdateFields.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QApplication>
#include <QKeyEvent>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using namespace vx;
using namespace vx::test;

namespace {

constexpr int kRows = 100000;
constexpr int kWatched = 1300;
constexpr int kUpdatesPerBeat = 5000 / 4;
constexpr int kFloodPerBeat = 500'000 / 4;
constexpr int kRuns = 15;
constexpr int kTypedRuns = 200;
constexpr double kTypedBarMs = 1.0;

struct STimes {
    std::vector<double> cpu;
    std::vector<double> passed;
};

/// Adds what it takes until the end of its block.
class CStopWatch {
public:
    explicit CStopWatch(STimes& times)
        : m_times(times), m_cpu(std::clock()), m_start(std::chrono::steady_clock::now()) {}
    ~CStopWatch() {
        m_times.cpu.push_back(1000.0 * static_cast<double>(std::clock() - m_cpu) / CLOCKS_PER_SEC);
        const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - m_start;
        m_times.passed.push_back(passed.count());
    }

private:
    STimes& m_times;
    std::clock_t m_cpu;
    std::chrono::steady_clock::time_point m_start;
};

/// Returns the median of the CPU times.
double Report(const char* what, STimes& times) {
    std::sort(times.cpu.begin(), times.cpu.end());
    std::sort(times.passed.begin(), times.passed.end());
    std::printf("%-64s CPU median %7.2f ms, worst %7.2f; passed median %7.2f, worst %7.2f\n", what,
                times.cpu[times.cpu.size() / 2], times.cpu.back(), times.passed[times.passed.size() / 2],
                times.passed.back());
    return times.cpu[times.cpu.size() / 2];
}

std::string ListText(int rows) {
    std::string symbols, annotations;
    for (int row = 1; row <= rows; ++row) {
        if (row % 20 == 0)
            fmt::format_to(std::back_inserter(annotations), "{}:#Heading of part {};", row, row / 20);
        else
            fmt::format_to(std::back_inserter(symbols), "S{}:{},;", row, row);
    }
    return fmt::format("TrailingRows=3\r\nColumns=Symbol:700;Last:700;Bid:700;Ask:700;Volume:900;High:700;Low:700;\r\n"
                       "Symbols={}\r\nAnnotations={}\r\n",
                       symbols, annotations);
}

struct SBoard {
    SBoard() {
        view.resize(1300, 800);
        view.show();
        QApplication::processEvents();
    }
    CScratchDoc list;
    CWatchlistView view{list.doc, list.doc.Settings(), nullptr};
};

void FirstScreen() {
    const std::string text = ListText(kRows);
    CWatchlistReader reader;
    reader.TakeBlock(text);
    reader.Finish();
    SBoard board;
    STimes times;
    for (int i = 0; i < kRuns; ++i) {
        board.list.doc.CloseDocument();
        QApplication::processEvents();
        CReadReport report;
        const int64_t before = board.view.Grid().Counters().cells;
        {
            const CStopWatch watch(times);
            board.list.doc.OpenContent(reader.Content(), "List", report);
            while (board.view.Grid().Counters().cells == before) QApplication::processEvents();
        }
    }
    Report("first screen of 100,000 rows, from the file being read", times);
}

// Returns whether the bar is kept.
bool TypedSymbol() {
    SBoard board;
    std::string names;
    for (const SFieldEntry& field : Catalogue().subspan(1)) names.append(field.name) += ';';
    board.list.BeginConnected(names);
    board.view.OnGridRebuilt();
    QApplication::processEvents();
    STimes typed, painted;
    for (int row = 1; row <= kTypedRuns; ++row) {
        const std::string symbol = fmt::format("S{}", row);
        const CStopWatch whole(painted);
        {
            const CStopWatch watch(typed);
            EnterCellText(board.list.doc, row, 1, {}, symbol);
        }
        QApplication::processEvents();
    }
    const double median = Report("a symbol typed into a list of 137 columns", typed);
    Report("the same until it is painted", painted);
    return median <= kTypedBarMs;
}

/// A board with that many rows, all of them watched.
struct SWatchedBoard : SBoard {
    explicit SWatchedBoard(int rows) : m_rows(rows) {
        list.Open(ListText(rows));
        list.doc.SetFeedReady();
        QApplication::processEvents();
    }
    std::string Line(int row) {
        std::string out = fmt::format("Q,S{}", row);
        for (size_t i = 0; kUpdateFields[i].name != "Last"; ++i) out += ',';
        return out + fmt::format("{}.{:02},", 100 + random() % 50, random() % 100);
    }
    /// New values for some of the first rows.
    void Receive(int lines, int rows) {
        for (int i = 0; i < lines; ++i)
            list.store.OnLevel1Message(Line(1 + static_cast<int>(random() % static_cast<uint32_t>(rows))));
    }
    void ReceiveAnywhere(int lines) { Receive(lines, m_rows); }
    std::mt19937 random{4711};

private:
    int m_rows;
};

void Beats(int rows, const char* what) {
    SWatchedBoard board(rows);
    STimes beat;
    for (int i = 0; i < kRuns; ++i) {
        board.ReceiveAnywhere(kFloodPerBeat);
        {
            const CStopWatch watch(beat);
            board.view.OnRepaintTimer();
        }
        QApplication::processEvents();
    }
    const double ms = Report(what, beat);
    std::printf("%64s %4.0f ns a value\n", "", ms * 1e6 / kFloodPerBeat);
}

void FewCells() {
    SWatchedBoard board(kRows);
    const CWatchlistGrid& grid = board.view.Grid();
    const int rows = grid.Geometry().LastVisibleRow();
    STimes times;
    const int64_t before = grid.Counters().cells;
    for (int i = 0; i < kRuns * 4; ++i) {
        board.Receive(rows * 4, rows);
        const CStopWatch watch(times);
        board.view.OnRepaintTimer();
        QApplication::processEvents();
    }
    Report("new values in the rows of the screen, painted", times);
    std::printf("%64s %.0f cells\n", "", static_cast<double>(grid.Counters().cells - before) / (kRuns * 4));
}

void AutoSort(const char* column) {
    SWatchedBoard board(kRows);
    CWatchlistDoc& doc = board.list.doc;
    board.ReceiveAnywhere(kRows * 3);
    doc.Update()->Options().sort = {doc.Columns().PositionOf(column), true, true, 5000};
    QApplication::processEvents();
    STimes slices;
    CAutoSort sort(doc);
    for (int i = 0; i < kRuns; ++i) {
        board.ReceiveAnywhere(25'000);
        board.view.OnRepaintTimer();
        QApplication::processEvents();
        for (auto tick = EAutoSortTick::UnderWay; tick == EAutoSortTick::UnderWay;) {
            const CStopWatch watch(slices);
            tick = sort.Tick(false);
        }
    }
    Report(fmt::format("a slice of an auto sort of 100,000 rows by {}", column).c_str(), slices);
}

void KeyInAFlood() {
    SWatchedBoard board(kWatched);
    CWatchlistDoc& doc = board.list.doc;
    std::mt19937& random = board.random;
    STimes key, beat;
    for (int i = 0; i < kRuns * 4; ++i) {
        std::vector<std::string> lines;
        for (int n = 0; n < kUpdatesPerBeat; ++n)
            lines.push_back(board.Line(1 + static_cast<int>(random() % kWatched)));
        const int64_t before = board.view.Grid().Counters().passes;
        QKeyEvent press(QEvent::KeyPress, i % 60 < 30 ? Qt::Key_Down : Qt::Key_Up, Qt::NoModifier);
        {
            const CStopWatch watch(beat);
            for (const std::string& update : lines) doc.Store().OnLevel1Message(update);
            QApplication::processEvents();
            board.view.OnRepaintTimer();
            const CStopWatch alone(key);
            QApplication::sendEvent(&board.view.Grid(), &press);
            while (board.view.Grid().Counters().passes == before) QApplication::processEvents();
        }
    }
    Report("a key's move painted with the cells of one beat", key);
    Report("the same behind 250 ms of 5,000 updates/s handled at once", beat);
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    FirstScreen();
    Beats(1'000, "a beat of 125,000 values in 1,000 rows, drained and marked");
    Beats(kRows, "a beat of 125,000 values in 100,000 rows, drained and marked");
    FewCells();
    AutoSort("Symbol");
    AutoSort("Last");
    KeyInAFlood();
    return TypedSymbol() ? 0 : 1;
}
