// Notices among the windows of a desktop: who has the keyboard, who gets the clicks, and what stays of an edit.

#include "app/FrameFixture.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/InputGate.h"
#include "alerts/ui/NoticeQueue.h"
#include "alerts/ui/ResetAlert.h"
#include "app/alerts/AlertController.h"
#include "app/alerts/MissedAlerts.h"
#include "app/frame/FramePlacement.h"
#include "support/Display.h"
#include "support/EventLoop.h"
#include "support/FakeClock.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

#include <optional>

using namespace vx;
using namespace vx::test;

namespace {

class NoticeOnDisplay : public CFrameFixture {
protected:
    void SetUp() override {
        if (!CDisplay::IsInstalled()) GTEST_SKIP() << "Xvfb, openbox and xdotool are not installed";
        ASSERT_TRUE(CDisplay::IsUp());
        board = &Frame();
        board->ShowSized(700, 400);
        ASSERT_TRUE(WaitUntil([&] { return board->isActiveWindow(); }));
        Settle();
    }
    /// An alert on IBM's last price fires.
    void Fire(int threshold = 10) {
        A_INFO alert;
        alert.enabled = 1;
        alert.value = threshold;
        alert.fieldId = AlertFieldId("Last").value();
        alert.condition = 1;
        CAlertsMap& alerts = board->Document().AlertRules();
        alerts.Add("IBM", alert);
        alerts.EvaluateFieldAlert("IBM", alerts.IndexOf("IBM", alert), 99, 99, 99, 99);
    }
    CAlertsNotice* Shown() { return board->Alerts().Notices().Shown(); }
    /// The notice, once the desktop has put it on the screen.
    CAlertsNotice* Notice() {
        WaitUntil([&] { return Shown() && Shown()->windowHandle()->isExposed(); });
        return Shown();
    }
    bool Gone() {
        return WaitUntil([&] { return !Shown(); }, 3000);
    }
    static QPoint MiddleOf(const QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }
    void ClickButton(const char* name) {
        CDisplay::Click(MiddleOf(*Shown()->findChild<QPushButton*>(QString::fromLatin1(name))));
    }
    /// Everything that was sent has arrived.
    static void Settle() {
        for (int i = 0; i < 5; ++i) {
            CDisplay::Tool({QStringLiteral("get_num_desktops")});
            TurnEventLoop(20);
        }
    }
    QLineEdit& Editor() { return *board->findChild<QLineEdit*>(QStringLiteral("gridEditor")); }

    CFakeClock clock;
    CMainFrame* board = nullptr;
};

} // namespace

TEST_F(NoticeOnDisplay, AnotherProgramKeepsTheKeyboardAndGetsEveryKey) {
    COtherProgram other;
    CDisplay::Type(QStringLiteral("before "));
    for (int i = 0; i < 3; ++i) Fire(10 + i);
    ASSERT_TRUE(Notice());
    CDisplay::Type(QStringLiteral("the notice, "));
    CDisplay::Press(QStringLiteral("Return"));
    CDisplay::Press(QStringLiteral("Escape"));
    CDisplay::Type(QStringLiteral("after"));
    Settle();
    const QString all =
        QStringLiteral("before the notice, <%1><%2>after").arg(Qt::Key_Return, 0, 16).arg(Qt::Key_Escape, 0, 16);
    EXPECT_TRUE(WaitUntil([&] { return other.Keys() == all; }, 3000)) << other.Keys().toStdString();
    ASSERT_TRUE(Shown());
    EXPECT_FALSE(Shown()->isActiveWindow());
    EXPECT_TRUE(other.IsActive());

    ClickButton("dismiss"); // The next one leaves the keyboard where it is as well: nobody asked for it.
    ASSERT_TRUE(WaitUntil([&] { return board->Alerts().Notices().Waiting() == 1; }));
    ASSERT_TRUE(Notice());
    ClickButton("dismissAll");
    EXPECT_TRUE(Gone());
}

TEST_F(NoticeOnDisplay, OurOtherWindowsTakeNothingWhileItIsUp) {
    board->View().Grid().SetFocusCell(1, 1);
    Fire();
    ASSERT_TRUE(Notice());
    ASSERT_TRUE(WaitUntil([&] { return Shown()->isActiveWindow(); })) << "our window was the active one";
    CWatchlistGrid& grid = board->View().Grid();
    const SGridCell first{1, 1};
    const QPoint cell = grid.viewport()->mapToGlobal(grid.Geometry().CellRect(1, 3).center());
    CDisplay::Click(cell);
    Settle();
    EXPECT_EQ(grid.FocusCell(), first);
    ASSERT_TRUE(WaitUntil([&] { return Shown()->isActiveWindow(); })) << "who turns to our window turns to the notice";
    CDisplay::Type(QStringLiteral("x"));
    for (const char* key : {"Return", "space", "Escape", "alt+d", "ctrl+n", "Delete", "alt+F4"})
        CDisplay::Press(QString::fromLatin1(key));
    Settle();
    ASSERT_TRUE(Shown()) << "keys that were meant for something else";
    EXPECT_FALSE(grid.IsEditing());
    const QPoint closeButton = board->frameGeometry().topRight() + QPoint(-12, 10);
    CDisplay::Click(closeButton);
    Settle();
    EXPECT_TRUE(board->isVisible());
    clock.elapsedMs += CInputGate::kKeyGuardMs;
    ASSERT_TRUE(WaitUntil([&] { return Shown()->isActiveWindow(); }));
    CDisplay::Press(QStringLiteral("Escape"));
    EXPECT_TRUE(Gone());
    EXPECT_TRUE(WaitUntil([&] { return board->isActiveWindow(); }));
    CDisplay::Click(cell);
    EXPECT_TRUE(WaitUntil([&] { return grid.FocusCell() == SGridCell{1, 3}; })) << "open again";
    board->Document().MarkSaved();
    CDisplay::Click(closeButton);
    EXPECT_TRUE(WaitUntil([&] { return !board->isVisible(); }));
}

TEST_F(NoticeOnDisplay, ItCanBeUsedOverAModalDialogAndItsResetToo) {
    QDialog modal(board);
    modal.setWindowTitle(QStringLiteral("modal"));
    auto* button = new QPushButton(QStringLiteral("press"));
    (new QVBoxLayout(&modal))->addWidget(button);
    int pressed = 0;
    QObject::connect(button, &QPushButton::clicked, &modal, [&] { ++pressed; });
    modal.setModal(true);
    modal.show();
    ASSERT_TRUE(WaitUntil([&] { return modal.isActiveWindow(); }));
    Fire();
    ASSERT_TRUE(Notice());
    CDisplay::Click(MiddleOf(*button));
    Settle();
    EXPECT_EQ(pressed, 0);
    ClickButton("reset");
    ASSERT_TRUE(WaitUntil(
        [&] { return Shown()->findChild<CResetAlert*>() && Shown()->findChild<CResetAlert*>()->isActiveWindow(); }));
    CDisplay::Press(QStringLiteral("Return"));
    EXPECT_TRUE(Gone());
    EXPECT_TRUE(WaitUntil([&] { return board->Document().Alerts().Get("IBM")[0].enabled == 1; }));
    CDisplay::Click(MiddleOf(*button));
    EXPECT_TRUE(WaitUntil([&] { return pressed == 1; }));

    clock.elapsedMs += CNoticeQueue::kQuietMs;
    modal.hide(); // A modal window that comes up later is below the notice, and waits.
    Fire(20);
    ASSERT_TRUE(Notice());
    modal.show();
    ASSERT_TRUE(WaitUntil([&] { return modal.windowHandle()->isExposed(); }));
    Settle();
    ClickButton("dismiss");
    EXPECT_TRUE(Gone());
    CDisplay::Click(MiddleOf(*button));
    EXPECT_TRUE(WaitUntil([&] { return pressed == 2; }));
}

TEST_F(NoticeOnDisplay, TypingSymbolAfterSymbolLosesNoCharacterAndDismissesNothing) {
    board->View().Grid().SetFocusCell(1, 1);
    const QStringList symbols = {QStringLiteral("GOOGLE"), QStringLiteral("IBM"), QStringLiteral("MSFT")};
    int fired = 0;
    for (const QString& symbol : symbols) {
        for (const QChar letter : symbol) {
            CDisplay::Press(letter);
            ASSERT_TRUE(WaitUntil([&] { return Editor().isVisible() && Editor().text().endsWith(letter); }));
            Fire(10 + ++fired);
            Settle();
            EXPECT_FALSE(Shown());
            clock.elapsedMs += 1000; // One key a second.
        }
        CDisplay::Press(QStringLiteral("Return"));
        Settle();
        clock.elapsedMs += 1000;
    }
    for (int row = 1; row <= symbols.size(); ++row)
        EXPECT_EQ(board->Document().RowSymbol(row), symbols[row - 1].toStdString());
    clock.elapsedMs += 1000;
    ASSERT_TRUE(Notice()) << "no editor is open: two seconds without a key";
    EXPECT_EQ(board->Alerts().Notices().Waiting(), fired - 1);
    ClickButton("dismissAll");
    EXPECT_TRUE(Gone());
}

TEST_F(NoticeOnDisplay, AnEditIsSuspendedWithItsTextAndCaretAndGoesOn) {
    board->View().Grid().SetFocusCell(1, 1);
    CDisplay::Type(QStringLiteral("GOGLE"));
    for (int i = 0; i < 3; ++i) CDisplay::Press(QStringLiteral("Left"));
    ASSERT_TRUE(
        WaitUntil([&] { return Editor().text() == QStringLiteral("GOGLE") && Editor().cursorPosition() == 2; }));
    Fire();
    clock.elapsedMs += 4900;
    Settle();
    EXPECT_FALSE(Shown());
    clock.elapsedMs += 100;
    ASSERT_TRUE(Notice());
    ASSERT_TRUE(WaitUntil([&] { return Shown()->isActiveWindow(); }));
    CDisplay::Type(QStringLiteral("x"));
    CDisplay::Press(QStringLiteral("Return"));
    Settle();
    EXPECT_TRUE(board->View().Grid().IsEditing());
    ASSERT_TRUE(Shown());
    ClickButton("dismiss");
    EXPECT_TRUE(Gone());
    ASSERT_TRUE(WaitUntil([&] { return board->isActiveWindow(); }));
    Settle(); // It may come twice, from the window manager and because the program asks for it.
    CDisplay::Type(QStringLiteral("O"));
    CDisplay::Press(QStringLiteral("Return"));
    EXPECT_TRUE(WaitUntil([&] { return board->Document().RowSymbol(1) == "GOOGLE"; }))
        << board->Document().RowSymbol(1);
}

TEST_F(NoticeOnDisplay, ItComesBackToWhereTheUserDraggedItAndDoesNotDrift) {
    const auto place = [&] { return Shown()->frameGeometry().topLeft(); };
    const auto dismiss = [&] {
        ClickButton("dismiss");
        EXPECT_TRUE(Gone());
    };
    board->move(60, 200);
    Settle();
    Fire();
    ASSERT_TRUE(Notice());
    Settle();
    EXPECT_FALSE(Shown()->frameGeometry().intersects(board->frameGeometry())) << "there is room beside the board";
    QPoint step(60, 40);
    EXPECT_TRUE(WaitUntil([&] { // Before long it counts as opened where it is.
        const QPoint titleBar = place() + QPoint(120, 10);
        CDisplay::Drag(titleBar, titleBar + step);
        Settle();
        step = QPoint(10, 10) - step;
        return Shown()->MovedTo() == place();
    }));
    const QPoint moved = place();
    dismiss();
    for (int i = 0; i < 3; ++i) {
        Fire(20 + i);
        ASSERT_TRUE(Notice());
        Settle();
        EXPECT_EQ(place(), moved) << i;
        dismiss();
    }
}

TEST_F(NoticeOnDisplay, ItStaysAboveTheBoardAndComesUpWhileThatIsMinimised) {
    board->Place().SetAlwaysOnTop(true);
    settings.WriteText(kNoticePlace, "100,100");
    board->move(0, 0);
    Fire();
    ASSERT_TRUE(Notice());
    ClickButton("dismiss");
    EXPECT_TRUE(Gone()) << "a board that is always on top covers its notice";

    board->showMinimized();
    ASSERT_TRUE(WaitUntil([&] { return board->isMinimized() && !QApplication::activeWindow(); }));
    Fire(20);
    ASSERT_TRUE(Notice());
    Settle();
    ClickButton("dismiss");
    EXPECT_TRUE(Gone());
    EXPECT_TRUE(board->isMinimized());

    EXPECT_TRUE(WaitUntil([&] { return !board->Alerts().Presence().IsHere(); }));
    Fire(30);
    ASSERT_TRUE(Notice());
    Q_EMIT board->Alerts().Missed().Called(); // "Show" on the desktop's notification.
    EXPECT_TRUE(WaitUntil([&] { return !board->isMinimized() && board->windowHandle()->isExposed(); }));
    EXPECT_TRUE(WaitUntil([&] { return Shown()->isActiveWindow(); })) << "with the notice that the user came for";
    Fire(40);
    Settle();
    EXPECT_EQ(board->Alerts().Missed().Count(), 2) << "the next one is not missed";
    ClickButton("dismiss");
    EXPECT_TRUE(WaitUntil([&] { return Shown() && board->Alerts().Notices().Waiting() == 0; }));
}
