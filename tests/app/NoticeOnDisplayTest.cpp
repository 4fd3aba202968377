// SPDX-License-Identifier: MIT
// Notices among the windows of a desktop: who has the keyboard, who gets the clicks, and what stays of an edit.

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/NoticeQueue.h"
#include "alerts/ui/ResetAlert.h"
#include "app/FrameFixture.h"
#include "app/alerts/AlertController.h"
#include "app/alerts/MissedAlerts.h"
#include "app/frame/FramePlacement.h"
#include "support/Display.h"
#include "support/FakeClock.h"

#include <QVBoxLayout>
#include <QWindow>

#include <optional>

using namespace vx;
using namespace vx::test;

namespace {

/// One display for all cases of a run.
class CAlertsNoticeOnDisplay : public CFrameFixture {
protected:
    static void SetUpTestSuite() {
        if (CDisplay::MissingProgram(CDisplay::UsualWindowManager()).empty())
            s_display.emplace(s_home.emplace().Path(), CDisplay::UsualWindowManager());
    }
    static void TearDownTestSuite() {
        s_display.reset();
        s_home.reset();
    }
    void SetUp() override {
        if (!s_display) GTEST_SKIP() << CDisplay::MissingProgram(CDisplay::UsualWindowManager()) << " is not installed";
        Frame().ShowSized(700, 400);
        ASSERT_TRUE(IsActive(*frame));
        Settle();
    }
    /// An alert on IBM's last price fires.
    void Fire(int threshold = 10) {
        const A_INFO alert{1, 0, 0, double(threshold), AlertFieldId("Last").value(), 1, 0, {}};
        CAlertsMap& alerts = doc->AlertRules();
        alerts.Add("IBM", alert);
        alerts.EvaluateFieldAlert("IBM", alerts.IndexOf("IBM", alert), 99, 99, 99, 99);
    }
    CNoticeQueue& Queue() { return frame->Alerts().Notices(); }
    CAlertsNotice* Shown() { return Queue().Shown(); }
    /// The notice comes, and the desktop has put it on the screen.
    bool Comes() {
        return WaitUntil([&] { return Shown() && Shown()->windowHandle()->isExposed(); });
    }
    static bool IsActive(const QWidget& window) {
        return WaitUntil([&] { return window.isActiveWindow(); });
    }
    static QPoint MiddleOf(const QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }
    void ClickButton(const char* name) { CDisplay::Click(MiddleOf(Named<QPushButton>(*Shown(), name))); }
    /// Whether it goes when a button of it is clicked.
    bool GoesBy(const char* button) {
        ClickButton(button);
        return IsGone();
    }
    bool IsGone() {
        return WaitUntil([&] { return !Shown(); }, 3000);
    }
    /// Everything that was sent has arrived.
    static void Settle() {
        for (int i = 0; i < 3; ++i) {
            CDisplay::Tool({QStringLiteral("get_num_desktops")});
            TurnEventLoop(20);
        }
    }
    QLineEdit& Editor() { return Child<QLineEdit>("gridEditor"); }

    CFakeClock clock;

private:
    static inline std::optional<CTempFolder> s_home;
    static inline std::optional<CDisplay> s_display;
};

} // namespace

TEST_F(CAlertsNoticeOnDisplay, AnotherProgramKeepsTheKeyboardAndGetsEveryKey) {
    COtherProgram other;
    CDisplay::Press("b e f");
    for (int i = 0; i < 3; ++i) Fire(10 + i);
    ASSERT_TRUE(Comes());
    CDisplay::Press("n o Return Escape a f t");
    EXPECT_TRUE(WaitUntil([&] { return other.Keys() == 10; }, 3000)) << other.Keys();
    ASSERT_TRUE(Shown());
    EXPECT_FALSE(Shown()->isActiveWindow());
    EXPECT_TRUE(other.IsActive());
    EXPECT_TRUE(GoesBy("dismissAll"));
}

TEST_F(CAlertsNoticeOnDisplay, ItCanBeUsedOverAModalDialogAndItsResetToo) {
    QDialog modal(frame);
    auto* button = new QPushButton(QStringLiteral("press"));
    (new QVBoxLayout(&modal))->addWidget(button);
    int pressed = 0;
    QObject::connect(button, &QPushButton::clicked, &modal, [&] { ++pressed; });
    modal.setModal(true);
    modal.show();
    ASSERT_TRUE(IsActive(modal));
    Fire();
    ASSERT_TRUE(Comes());
    CDisplay::Click(MiddleOf(*button));
    Settle();
    EXPECT_EQ(pressed, 0);
    ClickButton("reset");
    ASSERT_TRUE(WaitUntil([&] {
        const auto* reset = Shown()->findChild<CResetAlert*>();
        return reset && reset->isActiveWindow();
    }));
    CDisplay::Press("Return");
    EXPECT_TRUE(IsGone());
    EXPECT_TRUE(WaitUntil([&] { return doc->Alerts().Get("IBM")[0].enabled == 1; }));
    CDisplay::Click(MiddleOf(*button));
    EXPECT_TRUE(WaitUntil([&] { return pressed == 1; }));

    clock.elapsedMs += CNoticeQueue::kQuietMs;
    modal.hide(); // A modal window that comes up later is below the notice, and waits.
    Fire(20);
    ASSERT_TRUE(Comes());
    modal.show();
    ASSERT_TRUE(WaitUntil([&] { return modal.windowHandle()->isExposed(); }));
    Settle();
    EXPECT_TRUE(GoesBy("dismiss"));
}

TEST_F(CAlertsNoticeOnDisplay, AnEditIsSuspendedWithItsTextAndCaretAndContinues) {
    grid->SetFocusCell(1, 1);
    CDisplay::Press("G O G L E Left Left Left");
    ASSERT_TRUE(
        WaitUntil([&] { return Editor().text() == QStringLiteral("GOGLE") && Editor().cursorPosition() == 2; }));
    Fire();
    clock.elapsedMs += 4900;
    Settle();
    EXPECT_FALSE(Shown());
    clock.elapsedMs += 100;
    ASSERT_TRUE(Comes() && IsActive(*Shown()));
    CDisplay::Press("x Return");
    Settle();
    EXPECT_TRUE(grid->IsEditing());
    ASSERT_TRUE(Shown());
    EXPECT_TRUE(GoesBy("dismiss"));
    ASSERT_TRUE(IsActive(*frame));
    Settle(); // It may come twice, from the window manager and because the program asks for it.
    CDisplay::Press("O Return");
    EXPECT_TRUE(WaitUntil([&] { return doc->RowSymbol(1) == "GOOGLE"; })) << doc->RowSymbol(1);
}

TEST_F(CAlertsNoticeOnDisplay, ItStaysAboveTheBoardAndComesUpWhileThatIsMinimised) {
    frame->Place().SetAlwaysOnTop(true);
    settings.WriteText(kNoticePlace, "100,100");
    frame->move(0, 0);
    Fire();
    ASSERT_TRUE(Comes());
    EXPECT_TRUE(GoesBy("dismiss")) << "a board that is always on top covers its notice";

    frame->showMinimized();
    ASSERT_TRUE(WaitUntil([&] { return frame->isMinimized() && !frame->Alerts().Presence().IsHere(); }));
    Fire(20);
    ASSERT_TRUE(Comes());
    Settle();
    EXPECT_TRUE(frame->isMinimized());
    Q_EMIT frame->Alerts().Missed().Called(); // "Show" on the desktop's notification.
    EXPECT_TRUE(WaitUntil([&] { return !frame->isMinimized() && frame->windowHandle()->isExposed(); }));
    EXPECT_TRUE(IsActive(*Shown())) << "with the notice that the user came for";
    EXPECT_TRUE(GoesBy("dismiss"));
}
