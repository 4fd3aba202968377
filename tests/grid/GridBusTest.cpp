// SPDX-License-Identifier: MIT
// What assistive technology hears of a grid. The program runs itself again on a display and a session bus of its own:
// without a bus Qt tells nobody anything.

#include "grid/TestGrid.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace vx;

namespace {

constexpr const char* kOnBus = "ZW_TEST_ON_BUS";

using Words = std::vector<std::string>;

/// "name IBM Last 124", "selected IBM Last 124"
Words g_heard;

void Hear(QAccessibleEvent* event) {
    const char* what = event->type() == QAccessible::NameChanged       ? "name "
                       : event->type() == QAccessible::Focus           ? "focus "
                       : event->type() == QAccessible::SelectionAdd    ? "selected "
                       : event->type() == QAccessible::SelectionRemove ? "not selected "
                                                                       : nullptr;
    if (what != nullptr && event->accessibleInterface() != nullptr)
        g_heard.push_back(what + event->accessibleInterface()->text(QAccessible::Name).toStdString());
}

/// A grid whose row 3 is IBM with a price; row 6 is a heading.
class CGridAccessibleOnBusTest : public GridTest {
protected:
    void SetUp() override {
        source.header = [](int column, SCell& cell) { cell.SetText(column == 1 ? "Symbol" : "Last"); };
        source.cell = [this](int row, int column, SCell& cell) {
            if (row == 3 && column == 1) cell.SetText("IBM");
            if (row == 3 && column == 2) cell.SetText(std::to_string(price));
        };
        MakeHeading("Banks");
        if (std::getenv(kOnBus) == nullptr) GTEST_SKIP() << "xvfb-run is not installed";
        GridTest::SetUp();
        QDBusConnection::sessionBus().interface()->startService(QStringLiteral("org.a11y.Bus"));
        ASSERT_TRUE(WaitFor([] { return QAccessible::isActive(); })) << "no accessibility bus";
        grid.activateWindow();
        ASSERT_TRUE(WaitFor([&] { return grid.hasFocus(); }));
        grid.SetFocusCell(3, 2);
        ProcessAll();
        pause->stop();
        g_heard.clear();
        m_before = QAccessible::installUpdateHandler(Hear);
    }
    void TearDown() override { QAccessible::installUpdateHandler(m_before); }

    void PriceIs(int now) {
        price = now;
        grid.FlushChanges();
    }
    /// Since the last call.
    static Words Heard() { return std::exchange(g_heard, {}); }
    void PauseEnds() {
        pause->start(0);
        ASSERT_TRUE(WaitFor([&] { return !pause->isActive() || !g_heard.empty(); }));
    }

    int price = 120;
    QTimer* pause = grid.findChild<QTimer*>(QStringLiteral("focusSpeechPause"));

private:
    QAccessible::UpdateHandler m_before = nullptr;
};

} // namespace

TEST_F(CGridAccessibleOnBusTest, TheFocusCellSaysItsNewestTextOncePerPause) {
    EXPECT_EQ(pause->interval(), 2000);
    PriceIs(121);
    PriceIs(122);
    PriceIs(123);
    EXPECT_EQ(Heard(), Words{"name IBM Last 121"});
    PauseEnds();
    EXPECT_EQ(Heard(), Words{"name IBM Last 123"}) << "the newest";
    PauseEnds();
    EXPECT_EQ(Heard(), Words()) << "nothing new";
    grid.SetFocusCell(4, 2);
    grid.SetFocusCell(3, 2);
    Heard();
    PriceIs(124);
    EXPECT_EQ(Heard(), Words()) << "what was read just now is not talked over";
    PauseEnds();
    EXPECT_EQ(Heard(), Words{"name IBM Last 124"});
    grid.clearFocus();
    Heard();
    PriceIs(125);
    PauseEnds();
    EXPECT_EQ(Heard(), Words());
}

int main(int argc, char** argv) {
    std::vector<char*> command{const_cast<char*>("xvfb-run"), const_cast<char*>("-a"),
                               const_cast<char*>("dbus-run-session"), const_cast<char*>("--")};
    command.insert(command.end(), argv, argv + argc + 1);
    testing::InitGoogleTest(&argc, argv);
    if (std::getenv(kOnBus) == nullptr) {
        for (const auto& [name, value] :
             {std::pair{kOnBus, "1"}, {"QT_QPA_PLATFORM", "xcb"}, {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}})
            setenv(name, value, 1);
        if (!GTEST_FLAG_GET(list_tests)) execvp(command.front(), command.data());
        unsetenv(kOnBus);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication app(argc, argv);
    const int result = RUN_ALL_TESTS();
    std::fflush(nullptr);
    _exit(result); // The toolkit's bridge leaks what it still has on the bus.
}
