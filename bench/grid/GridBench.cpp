// SPDX-License-Identifier: MIT
// What a pass of changes costs the grid control, beside a QTableWidget that shows the same board: process CPU time
// around applying the changes and processing the events that paint them.
//
//   bench_grid [picture.png]     the picture shows what was painted
//
// Cases run in random order, nine times each; least, median and worst are printed. A bar compares the least: what other
// programs on the machine do only ever adds to a case, and adds most to the one that lives from the caches. That the
// number of rows costs nothing is shown on one window that has few rows and many by turns: two windows differ in more
// than that, in where their pixels and their board's numbers lie in memory and in the scroll bars they need. The
// program fails when a pass without a visible change paints, when what is seen is not painted, or when a bar is missed.

#include "base/qt/QtText.h"
#include "grid/BoardSource.h"
#include "grid/GridCtrl.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QScrollBar>
#include <QTableWidget>
#include <QThread>
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vx;

constexpr int kRepetitions = 9;
constexpr int kTurns = 41;
constexpr int kFewRows = 1300;
constexpr int kManyRows = 100'000;
constexpr double kPass = 0.25; // seconds of feed in a pass
constexpr int kQuiet = 5'000;  // changes a second; of 1,300 rows 53 are seen, so about 50 cells are painted a pass
constexpr int kFlood = 500'000;
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kColumnWidth = 114; // sixteen of them fill the window, with the row numbers of the longest list

double CpuMs() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

struct SChange {
    int row;
    int column;
};
using Changes = std::vector<SChange>;

/// A window that shows a board and can be told of changes.
struct SBoardWindow {
    explicit SBoardWindow(int rows) : board(rows, false) {}
    virtual ~SBoardWindow() = default;
    virtual void Apply(const Changes& changes) = 0;

    CBoardSource board;
};

struct SOurs : SBoardWindow {
    CNorvGridCtrl grid;

    /// Shows the first rows of a board.
    SOurs(int rows, bool flash, int boardRows) : SBoardWindow(boardRows) {
        grid.ApplyTheme("light");
        grid.ApplyViewSettings(true, true, true, !flash);
        grid.SetSource(&board);
        grid.SetColumnCount(CBoardSource::kColumns, kColumnWidth);
        grid.SetRowCount(rows);
        grid.resize(kWidth, kHeight);
        grid.show();
    }
    void Apply(const Changes& changes) override {
        for (const SChange& change : changes) {
            board.Change(change.row, change.column);
            grid.MarkCellChanged(change.row, change.column);
        }
        grid.FlushChanges();
    }
    /// Moves a page down, or back to the beginning from the end.
    void Page() {
        QScrollBar& bar = *grid.verticalScrollBar();
        bar.setValue(bar.value() == bar.maximum() ? 0 : bar.value() + bar.pageStep());
    }
    int LastRow() const { return grid.Geometry().LastVisibleRow(); }
};

struct STable : SBoardWindow {
    QTableWidget table;

    explicit STable(int rows) : SBoardWindow(rows), table(rows, CBoardSource::kColumns) {
        table.verticalHeader()->setDefaultSectionSize(20);
        table.horizontalHeader()->setDefaultSectionSize(kColumnWidth);
        table.setFont(QFont(QStringLiteral("Arial"), 9));
        for (int row = 1; row <= rows; ++row)
            for (int column = 1; column <= CBoardSource::kColumns; ++column) {
                auto* item = new QTableWidgetItem;
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                table.setItem(row - 1, column - 1, item);
                Show(row, column);
            }
        table.resize(kWidth, kHeight);
        table.show();
    }
    /// Text and direction colour, as the board shows them.
    void Show(int row, int column) {
        SCell cell;
        board.FillCell(row, column, cell);
        QTableWidgetItem* item = table.item(row - 1, column - 1);
        item->setText(QtText(cell.Text()));
        const QColor color = QColor::fromRgb(kLightGridTheme.RoleColor(cell.role));
        if (item->foreground().color() != color) item->setForeground(color);
    }
    void Apply(const Changes& changes) override {
        for (const SChange& change : changes) {
            board.Change(change.row, change.column);
            Show(change.row, change.column);
        }
    }
};

struct SCase {
    std::string name;
    SBoardWindow* window;
    std::function<Changes(int pass)> changes;
    int passes;         // averaged in one repetition
    bool waitForLights; // the beat's lights going out are part of it
    std::vector<double> ms;

    // ms is sorted by then
    double Least() const { return ms.front(); }
    double Median() const { return ms[ms.size() / 2]; }
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Run(SCase& entry) {
    double total = 0;
    for (int pass = 0; pass < entry.passes; ++pass) {
        const Changes changes = entry.changes(pass);
        const double start = CpuMs();
        entry.window->Apply(changes);
        QApplication::processEvents();
        if (entry.waitForLights) {
            QThread::msleep(static_cast<unsigned long>(CCellFlash::kRestartMs));
            QApplication::processEvents();
        }
        total += CpuMs() - start;
    }
    entry.ms.push_back(total / entry.passes);
}

/// Every visible cell once, in the order of a feed: any.
Changes EveryVisible(int lastRow, std::mt19937& random) {
    Changes changes;
    for (int row = 1; row <= lastRow; ++row)
        for (int column = 1; column <= CBoardSource::kColumns; ++column) changes.push_back({row, column});
    std::shuffle(changes.begin(), changes.end(), random);
    return changes;
}

Changes Feed(int perSecond, int firstRow, int lastRow, std::mt19937& random) {
    std::uniform_int_distribution<int> row(firstRow, lastRow);
    std::uniform_int_distribution<int> column(1, CBoardSource::kColumns);
    Changes changes(static_cast<size_t>(perSecond * kPass));
    for (SChange& change : changes) change = {row(random), column(random)};
    return changes;
}

/// CPU ms of a page scrolled.
double PageMs(SOurs& ours) {
    std::vector<double> ms;
    for (int i = 0; i < 10 * kRepetitions; ++i) {
        const double start = CpuMs();
        ours.Page();
        QApplication::processEvents();
        ms.push_back(CpuMs() - start);
    }
    ours.grid.verticalScrollBar()->setValue(0);
    return Median(ms);
}

/// CPU ms of the dearest step of the zoom, each to a size that no character was prepared for.
double ZoomMs(SOurs& ours) {
    double most = 0;
    for (const int zoom : {110, 125, 150, 175, 200, 250, 300, 90, 80, 75, 67, 50, 100}) {
        const double start = CpuMs();
        ours.grid.SetScale(zoom, CGridView::kRowPadding);
        QApplication::processEvents();
        most = std::max(most, CpuMs() - start);
    }
    return most;
}

/// What the same changes cost in the same window while it has many rows, beside few rows; the board's numbers are the
/// same ones too. Each turn compares neighbours in time, so that what else the machine does meets both.
double ManyRowsToFew(SOurs& ours, const std::function<Changes(int)>& changes, int passes) {
    std::vector<double> ratios;
    const auto run = [&](int rows) {
        ours.grid.SetRowCount(rows);
        SCase entry{"", &ours, changes, passes, false, {}};
        SCase warm{"", &ours, changes, 4, false, {}};
        Run(warm);
        Run(entry);
        return entry.ms.front();
    };
    for (int turn = 0; turn < kTurns; ++turn) {
        const bool fewFirst = turn % 2 == 0;
        const double first = run(fewFirst ? kFewRows : kManyRows);
        const double second = run(fewFirst ? kManyRows : kFewRows);
        ratios.push_back(fewFirst ? second / first : first / second);
    }
    return Median(ratios);
}

bool Bar(const char* what, double value, double limit) {
    const bool met = value <= limit;
    std::printf("%-58s %8.4f   bar %.4f   %s\n", what, value, limit, met ? "met" : "MISSED");
    return met;
}

/// A pass whose changes all lie off the screen must not end in a paint event.
bool PaintsNothingUnseen(SOurs& ours, std::mt19937& random) {
    QApplication::processEvents();
    const int64_t before = ours.grid.Counters().passes;
    ours.Apply(Feed(kFlood, ours.LastRow() + 1, ours.board.Rows(), random));
    QApplication::processEvents();
    const bool nothing = ours.grid.Counters().passes == before;
    std::printf("a pass without a visible change paints nothing: %s\n", nothing ? "yes" : "NO");
    return nothing;
}

/// Every cell of the screen asked to change must have been painted, and the picture must hold the theme's colours.
bool PaintsWhatIsSeen(SOurs& ours, std::mt19937& random, const char* file) {
    const int64_t before = ours.grid.Counters().cells;
    const Changes all = EveryVisible(ours.LastRow(), random);
    ours.Apply(all);
    QApplication::processEvents();
    const int64_t painted = ours.grid.Counters().cells - before;
    const QImage picture = ours.grid.grab().toImage();
    if (file != nullptr) picture.save(QString::fromLocal8Bit(file));
    int up = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) up += picture.pixel(x, y) == ours.grid.Theme().up;
    std::printf("cells asked %zu, painted %lld; pixels in the up colour %d\n", all.size(),
                static_cast<long long>(painted), up);
    return painted >= static_cast<int64_t>(all.size()) && up > 1000;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::mt19937 random(4711);

    SOurs few(kFewRows, false, kFewRows);
    SOurs many(kManyRows, false, kManyRows);
    SOurs turns(kFewRows, false, kManyRows);
    SOurs lights(kFewRows, true, kFewRows);
    SOurs dressed(kFewRows, false, kFewRows);
    dressed.board.Dress(true);
    STable tableFew(kFewRows);
    QApplication::processEvents();
    const int last = few.LastRow();
    const auto every = [&](int) { return EveryVisible(last, random); };
    const auto some = [&](int) { return Feed(kQuiet, 1, kFewRows, random); };

    enum EIndex { FullOurs, FullTable, SomeOurs, SomeTable, FullLit, SomeLit, FullDressed };
    std::vector<SCase> cases = {
        {"every visible cell, grid, 1,300 rows", &few, every, 10, false, {}},
        {"every visible cell, QTableWidget, 1,300 rows", &tableFew, every, 2, false, {}},
        {"5,000 changes/s (about 50 seen), grid, 1,300 rows", &few, some, 40, false, {}},
        {"5,000 changes/s (about 50 seen), QTableWidget, 1,300 rows", &tableFew, some, 10, false, {}},
        {"every visible cell, grid, lit and put out", &lights, every, 1, true, {}},
        {"5,000 changes/s (about 50 seen), grid, lit and put out", &lights, some, 3, true, {}},
        {"every visible cell, grid, borders, two bars, a range", &dressed, every, 10, false, {}},
    };
    for (SCase& entry : cases) {
        Run(entry); // warm
        entry.ms.clear();
    }
    std::vector<size_t> order;
    for (size_t i = 0; i < cases.size(); ++i) order.insert(order.end(), kRepetitions, i);
    std::shuffle(order.begin(), order.end(), random);
    for (const size_t i : order) Run(cases[i]);

    std::printf("%d visible cells; CPU ms per pass\n%-58s %8s %8s %8s\n", last * CBoardSource::kColumns, "", "least",
                "median", "worst");
    for (SCase& entry : cases) {
        std::sort(entry.ms.begin(), entry.ms.end());
        std::printf("%-58s %8.3f %8.3f %8.3f\n", entry.name.c_str(), entry.Least(), entry.Median(), entry.ms.back());
    }
    const auto ratio = [&](EIndex a, EIndex b) { return cases[a].Least() / cases[b].Least(); };
    bool good = true;
    good &= Bar("every visible cell / QTableWidget", ratio(FullOurs, FullTable), 1.0 / 18);
    good &= Bar("5,000 changes/s / QTableWidget", ratio(SomeOurs, SomeTable), 1.0 / 5);
    good &= Bar("every visible cell, 100,000 / 1,300 rows", ManyRowsToFew(turns, every, 5), 1.2);
    good &= Bar("5,000 changes/s, 100,000 / 1,300 rows", ManyRowsToFew(turns, some, 20), 1.2);
    good &= Bar("a page scrolled, ms", PageMs(many), 8);
    good &= Bar("a step of the zoom, the dearest of thirteen, ms", ZoomMs(many), 50);
    good &= Bar("every visible cell, lit and put out / QTableWidget", ratio(FullLit, FullTable), 1.0 / 8);
    good &= Bar("5,000 changes/s, lit and put out / QTableWidget", ratio(SomeLit, SomeTable), 1.0 / 4);
    good &= Bar("every visible cell, borders, two bars, a range / plain", ratio(FullDressed, FullOurs), 2);
    good &= PaintsNothingUnseen(many, random);
    good &= PaintsWhatIsSeen(few, random, argc > 1 ? argv[1] : nullptr);
    return good ? 0 : 1;
}
