// SPDX-License-Identifier: MIT
// Where windows are put, on real displays with real window managers.

#include "app/FrameFixture.h"
#include "support/Display.h"

#include <QStatusBar>
#include <QWindow>

using namespace vx;
using namespace vx::test;

namespace {

constexpr QRect kScreen(0, 0, 1600, 1000);

class CFramePlacerOnDisplay : public CFrameFixture, public testing::WithParamInterface<const char*> {
protected:
    ~CFramePlacerOnDisplay() override { DropFrame(); }

    void Show(const std::string& windowManager, const std::string& scale = "1") {
        if (const std::string missing = CDisplay::MissingProgram(windowManager); !missing.empty())
            GTEST_SKIP() << missing << " is not installed";
        display.emplace(folder.Path(), windowManager, scale);
    }
    /// A list whose file places the window so.
    std::string List(const std::string& name, const std::string& window) {
        WriteFile(At(name), "Window=" + window + "\r\nColumns=Symbol:1000;\r\nSymbols=IBM:1,;\r\n");
        return At(name);
    }
    static void Open(CMainFrame& started, const std::string& file) {
        EXPECT_TRUE(file.empty() || started.Files().Open(file));
        started.ShowPlaced();
    }
    testing::AssertionResult Opens(const std::string& path) {
        if (!frame->Files().OpenInstead(path)) return testing::AssertionFailure() << "not opened";
        return Settles(*frame);
    }
    /// The window is no longer moved, and shows what the display has of it; scales that are no whole number are
    /// rounded.
    testing::AssertionResult Settles(const CMainFrame& moved) {
        const auto* timer = moved.findChild<QTimer*>(QStringLiteral("placeTimer"));
        if (!WaitUntil([&] { return moved.windowHandle()->isExposed() && !timer->isActive(); }, 20000))
            return testing::AssertionFailure() << "still moving, exposed " << moved.windowHandle()->isExposed();
        const double scale = qApp->devicePixelRatio();
        QSize shown;
        if (WaitUntil([&] {
                shown = display->Inside(moved).size();
                return std::abs(shown.width() - moved.width() * scale) <= scale &&
                       std::abs(shown.height() - moved.height() * scale) <= scale;
            }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "painted " << moved.width() << "x" << moved.height() << ", shown "
                                           << shown.width() << "x" << shown.height() << " pixels";
    }
    std::string WindowLineOf(const std::string& path) {
        const std::string text = ReadFile(path);
        return text.substr(0, text.find('\r'));
    }
    std::optional<CDisplay> display;
};

class CManagedWindow : public CFramePlacerOnDisplay {
protected:
    void SetUp() override { Show(GetParam()); }
};
class CScaledWindow : public CFramePlacerOnDisplay {
protected:
    void SetUp() override { Show("openbox", GetParam()); }
};

const auto kNames = [](const auto& given) {
    std::string name = given.param;
    std::ranges::replace(name, '.', '_');
    return name;
};

} // namespace

TEST_P(CManagedWindow, AListKeepsItsPlaceHoweverOftenItIsOpenedAndSaved) {
    const std::string maximised = List("Max.vxw", "200;150;800;500;TRUE;FALSE;");
    const std::string normal = List("Normal.vxw", "100;110;600;400;FALSE;FALSE;");
    Open(Frame(), List("First.vxw", "0;0;1590;940;TRUE;FALSE;"));
    ASSERT_TRUE(Opens(maximised)); // After two maximised ones a normal one is as large as it is painted.
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(Opens(normal));
        EXPECT_FALSE(frame->isMaximized());
        EXPECT_EQ(display->Whole(*frame).topLeft(), QPoint(100, 110));
        EXPECT_EQ(display->Inside(*frame).size(), QSize(600, 400));
        Do(ECommand::FileSave);
        EXPECT_EQ(WindowLineOf(normal), "Window=100;110;600;400;FALSE;FALSE");
        ASSERT_TRUE(Opens(maximised));
        EXPECT_TRUE(frame->isMaximized());
        Do(ECommand::FileSave);
        EXPECT_EQ(WindowLineOf(maximised), "Window=200;150;800;500;TRUE;FALSE");
    }
}

TEST_P(CScaledWindow, EveryEdgeIsOnTheScreenHoweverLargeTheWindowWas) {
    std::vector<std::unique_ptr<CMainFrame>> frames;
    for (const char* window : {"140;66;1320;800;FALSE;FALSE;", "900;600;1320;800;FALSE;FALSE;",
                               "-300;-200;700;500;FALSE;FALSE;", "0;0;4000;3000;FALSE;FALSE;"}) {
        frames.push_back(std::make_unique<CMainFrame>(settings, CNorvCommandLineInfo(std::vector<std::string>{})));
        frames.back()->KeepFeedClosed();
        Open(*frames.back(), List("Large" + std::to_string(frames.size()) + ".vxw", window));
    }
    for (const auto& each : frames) {
        EXPECT_TRUE(Settles(*each));
        const QRect whole = display->Whole(*each);
        EXPECT_EQ(whole & kScreen, whole)
            << whole.x() << " " << whole.y() << " " << whole.width() << "x" << whole.height();
        EXPECT_TRUE(each->rect().contains(each->statusBar()->geometry()));
    }
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, CManagedWindow, testing::Values("openbox", "icewm"), kNames);
INSTANTIATE_TEST_SUITE_P(Scales, CScaledWindow, testing::Values("1", "1.25", "1.5", "2", "3"), kNames);
