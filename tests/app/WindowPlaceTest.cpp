// Where the main window stands, on real displays with real window managers.

#include "app/FrameFixture.h"

#include "app/files/FileController.h"
#include "support/Desktop.h"
#include "support/DialogWalk.h"
#include "support/Dialogs.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"

#include <QProcess>
#include <QStatusBar>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>

using namespace vx;
using namespace vx::test;

namespace {

constexpr QRect kScreen(0, 0, 1600, 1000);

std::string NameOf(std::string text) {
    for (char& c : text)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return text;
}

class CWindowPlaceTest : public CFrameFixture {
protected:
    ~CWindowPlaceTest() override { DropFrame(); }

    void Show(CDesktop::SOptions options) {
        desktop.emplace(folder.Path(), std::move(options));
        boxes.emplace();
    }
    /// A list whose file places the window so.
    std::string List(const std::string& name, const std::string& window) {
        WriteFile(folder / name, "Window=" + window + "\r\nColumns=Symbol:1000;\r\nSymbols=IBM:1,;\r\n");
        return folder / name;
    }
    CMainFrame& Started(const std::vector<std::string>& arguments = {}) {
        CMainFrame& frame = Frame(arguments);
        const std::string& file = frame.CommandLine().file;
        EXPECT_TRUE(file.empty() || frame.Files().Open(file));
        frame.ShowPlaced();
        EXPECT_TRUE(Settles(frame));
        return frame;
    }
    testing::AssertionResult Opens(CMainFrame& frame, const std::string& path) {
        if (!frame.Files().OpenInstead(path)) return testing::AssertionFailure() << "not opened";
        return Settles(frame);
    }
    /// The window is no longer moved, and shows what the display has of it.
    testing::AssertionResult Settles(CMainFrame& frame) {
        const auto timer = frame.findChild<QTimer*>(QStringLiteral("placeTimer"));
        if (!WaitFor([&] { return frame.windowHandle()->isExposed() && !timer->isActive(); }, 20000))
            return testing::AssertionFailure() << "still moving, exposed " << frame.windowHandle()->isExposed();
        QSize shown;
        if (WaitFor([&] { return IsAbout(shown = desktop->Inside(frame).size(), frame.size()); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "painted " << frame.width() << "x" << frame.height() << ", shown "
                                           << shown.width() << "x" << shown.height() << " pixels";
    }
    /// Scales that are no whole number are rounded.
    static bool IsAbout(const QSize& pixels, const QSize& painted) {
        const double scale = qApp->devicePixelRatio();
        return std::abs(pixels.width() - painted.width() * scale) <= scale &&
               std::abs(pixels.height() - painted.height() * scale) <= scale;
    }
    std::string WindowLineOf(const std::string& path) {
        const std::string text = ReadFile(path);
        return text.substr(0, text.find('\r'));
    }

    std::optional<CDesktop> desktop;
    std::optional<CMessageBoxes> boxes;
};

class CManagedWindowTest : public CWindowPlaceTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        if (const std::string missing = CDesktop::MissingProgram(GetParam()); !missing.empty())
            GTEST_SKIP() << missing << " is not installed";
        Show({.windowManager = GetParam()});
    }
};

} // namespace

TEST_P(CManagedWindowTest, AListKeepsItsPlaceHoweverOftenItIsOpenedAndSaved) {
    const std::string maximised = List("Max.vxw", "200;150;800;500;TRUE;FALSE;");
    const std::string normal = List("Normal.vxw", "100;110;600;400;FALSE;FALSE;");
    CMainFrame& frame = Started({maximised});
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(Opens(frame, normal));
        EXPECT_FALSE(frame.isMaximized());
        EXPECT_EQ(desktop->Whole(frame).topLeft(), QPoint(100, 110));
        EXPECT_EQ(desktop->Inside(frame).size(), QSize(600, 400));
        Do("FileSave");
        EXPECT_EQ(WindowLineOf(normal), "Window=100;110;600;400;FALSE;FALSE");
        ASSERT_TRUE(Opens(frame, maximised));
        EXPECT_TRUE(frame.isMaximized());
        Do("FileSave");
        EXPECT_EQ(WindowLineOf(maximised), "Window=200;150;800;500;TRUE;FALSE");
    }
    frame.showNormal();
    EXPECT_TRUE(WaitFor([&] { return desktop->Whole(frame).topLeft() == QPoint(200, 150); }));
    ASSERT_TRUE(Settles(frame));
    EXPECT_EQ(desktop->Inside(frame).size(), QSize(800, 500));
}

TEST_P(CManagedWindowTest, AfterTwoMaximisedListsANormalOneIsAsLargeAsItIsPainted) {
    const std::string first = List("First.vxw", "0;0;1590;940;TRUE;FALSE;");
    const std::string second = List("Second.vxw", "300;250;1200;700;TRUE;FALSE;");
    CMainFrame& frame = Started({first});
    ASSERT_TRUE(Opens(frame, second));
    ASSERT_TRUE(Opens(frame, List("Normal.vxw", "100;110;600;400;FALSE;FALSE;")));
    EXPECT_EQ(desktop->Inside(frame).size(), QSize(600, 400));
    EXPECT_EQ(desktop->Whole(frame).topLeft(), QPoint(100, 110));
}

TEST_P(CManagedWindowTest, AFileThatIsOpenComesUpInItsWindow) {
    const std::string path = List("Open.vxw", "100;110;600;400;FALSE;FALSE;");
    CMainFrame& frame = Started({path});
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(WaitFor([&] { return desktop->ActiveWindow() == other.winId(); }));
    frame.showMinimized();
    QProcess program;
    program.setProgram(QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"));
    program.setArguments({QString::fromStdString(path)});
    program.start();
    ASSERT_TRUE(WaitFor([&] { return program.state() == QProcess::NotRunning; }, 20000));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(WaitFor([&] { return desktop->ActiveWindow() == frame.winId(); }));
    EXPECT_FALSE(frame.isMinimized());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, CManagedWindowTest, testing::Values("openbox", "icewm"),
                         [](const auto& given) { return std::string(given.param); });

namespace {

class CScaledWindowTest : public CWindowPlaceTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        if (const std::string missing = CDesktop::MissingProgram("openbox"); !missing.empty())
            GTEST_SKIP() << missing << " is not installed";
        Show({.windowManager = "openbox", .scale = GetParam()});
    }
};

} // namespace

TEST_P(CScaledWindowTest, EveryEdgeIsOnTheScreenHoweverLargeTheWindowWas) {
    for (const char* window : {"140;66;1320;800;FALSE;FALSE;", "900;600;1320;800;FALSE;FALSE;",
                               "-300;-200;700;500;FALSE;FALSE;", "0;0;4000;3000;FALSE;FALSE;"}) {
        CMainFrame& frame = Started({List("Large.vxw", window)});
        const QRect whole = desktop->Whole(frame);
        EXPECT_EQ(whole & kScreen, whole)
            << window << " at " << whole.x() << " " << whole.y() << " " << whole.width() << "x" << whole.height();
        EXPECT_TRUE(frame.rect().contains(frame.statusBar()->geometry())) << window;
    }
}

TEST_P(CScaledWindowTest, EveryDialogFitsOnTheScreenAndIsUsedByKeyboard) {
    CMainFrame& frame = Started();
    frame.Document().Update()->EnterSymbol(1, "IBM");
    const auto look = [&](QDialog& dialog, const char* command) {
        EXPECT_TRUE(WaitFor([&] { return dialog.isActiveWindow() && dialog.windowHandle()->isExposed(); })) << command;
        EXPECT_TRUE(WaitFor([&] { return kScreen.contains(desktop->Whole(dialog)); })) << command;
        EXPECT_THAT(CDialogWalk(dialog).Faults(), testing::IsEmpty()) << command;
        dialog.reject();
    };
    for (const char* command : {"EditNote", "ColumnInsert", "FormatCells", "FormatGrid", "SortDialog", "FileExport",
                                "AlertNew", "AlertsEdit", "SymbolSearch", "About"}) {
        bool seen = false;
        WhenOpen<QDialog>([&](QDialog& dialog) {
            look(dialog, command);
            seen = true;
        });
        Do(command);
        EXPECT_TRUE(WaitFor([&] { return seen; })) << command;
    }
    // Windows that stay open beside the board.
    for (const char* command : {"HelpGuide", "HelpKeys", "AlertHistory", "Headlines", "TimeAndSales"}) {
        Do(command);
        const auto windows = frame.findChildren<QDialog*>();
        const auto shown = std::ranges::find_if(windows, [](const QDialog* window) { return window->isVisible(); });
        ASSERT_NE(shown, windows.end()) << command;
        look(**shown, command);
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, CScaledWindowTest, testing::Values("1", "1.25", "1.5", "2", "3"),
                         [](const auto& given) { return NameOf(given.param); });
