// The notice of a fired alert: its words, its sound, its turn, and what becomes of it.

#include "AlertsUiFixture.h"

#include "alerts/ui/AlertSoundPlayer.h"
#include "alerts/ui/AlertsNotice.h"
#include "alerts/ui/NoticeQueue.h"
#include "alerts/ui/ResetAlert.h"
#include "settings/Settings.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include <sys/stat.h>

using namespace vx;
using namespace vx::test;

namespace {

class NoticeQueue : public CAlertsUiFixture {
protected:
    /// The frame, as far as notices know it.
    class COwner : public QObject {
    public:
        std::vector<std::string> records;

    protected:
        void customEvent(QEvent* event) override {
            if (event->type() == kResetAlertMessage)
                records.push_back(static_cast<CResetAlertMessage*>(event)->Record());
        }
    };

    NoticeQueue() {
        queue.SetEnded([this](const SFiredAlert& fired, EFiringEnd end) {
            ended.push_back(fired.id + ' ' + std::string(EndWord(end)));
        });
        queue.SetTarget([this](const SFiredAlert&) { return target; });
    }
    static SAlertRecord Field(const char* symbol = "IBM") {
        return {.condition = "greater than or equal to",
                .symbol = symbol,
                .value = 250.25,
                .last = 250.25,
                .bid = 250,
                .ask = 250.5,
                .threshold = 250,
                .fieldName = "Last",
                .soundFile = {},
                .otherThresholds = {"300.000000"},
                .headline = {}};
    }
    static SAlertRecord News() {
        SAlertRecord out;
        out.symbol = "IBM";
        out.fieldName = "News";
        out.index = 3;
        out.isNews = true;
        return out;
    }
    void Fire(SAlertRecord notice, EAlertSound sound = EAlertSound::None, bool loop = false) {
        notice.soundType = static_cast<int32_t>(sound);
        notice.loopSound = loop ? 1 : 0;
        queue.Add({.record = std::move(notice),
                   .alert = {},
                   .firedAt = {2024, 1, 31, 9, 5, 0, 0},
                   .id = std::to_string(++m_fired)});
    }
    CAlertsNotice* Shown() {
        WaitUntil([&] { return queue.Shown() != nullptr; }, 2000);
        return queue.Shown();
    }
    static std::string Text(const QDialog& notice) {
        return TextOf(Named<QPlainTextEdit>(notice, "noticeText").toPlainText());
    }

    CFakeClock clock;
    COwner owner;
    SNoticeTarget target;
    CNoticeQueue queue{sounds, owner, nullptr, settings};
    std::vector<std::string> ended;

private:
    int m_fired = 0;
};

const std::string kFieldBody = "The symbol \"IBM\" received a value of \"250.250000\" for field \"Last\" "
                               "which is greater than or equal to your alert of \"250.000000.\"\n\n"
                               "Fired on January 31 at 09:05.\n\n"
                               "Bid: 250.000000\nAsk: 250.500000\nLast: 250.250000";

} // namespace

TEST_F(NoticeQueue, ANoticeSaysWhatFiredAndResetsTheAlert) {
    Fire(Field());
    CAlertsNotice* notice = Shown();
    ASSERT_TRUE(notice);
    EXPECT_EQ(TextOf(notice->windowTitle()), "Norv Vx alert: IBM Last = 250.250000");
    EXPECT_EQ(Text(*notice), kFieldBody);
    EXPECT_FALSE(notice->isModal());
    EXPECT_FALSE(notice->findChild<QLabel*>(QStringLiteral("headline")));
    EXPECT_FALSE(Named<QPushButton>(*notice, "dismissAll").isVisible());

    Click(*notice, "reset");
    auto* reset = notice->findChild<CResetAlert*>();
    ClickStandard(*reset, QDialogButtonBox::Cancel);
    EXPECT_TRUE(notice->isVisible());
    Click(*notice, "reset");
    reset = Open<CResetAlert>();
    Named<CSpinEdit>(*reset, "percent").stepBy(2);
    ClickStandard(*reset, QDialogButtonBox::Ok);
    ASSERT_TRUE(WaitUntil([&] { return !owner.records.empty(); }));
    EXPECT_EQ(owner.records, (std::vector<std::string>{"IBM,0,255.000000"}));
    EXPECT_EQ(ended, (std::vector<std::string>{"1 reset"}));
    EXPECT_FALSE(queue.Shown());
}

TEST_F(NoticeQueue, NewsAreReadAndArmedAgain) {
    SAlertRecord story = News();
    story.headline = "<b>Big</b> news, " + std::string(500, 'x');
    Fire(story);
    CAlertsNotice* notice = Shown();
    EXPECT_EQ(TextOf(Named<QLabel>(*notice, "headline").text()), "<b>Big</b> news, " + std::string(380, 'x') + "...");
    EXPECT_EQ(TextOf(notice->windowTitle()), "Norv Vx alert: IBM News");
    EXPECT_EQ(Text(*notice), "The symbol \"IBM\" received a news story.\n\nFired on January 31 at 09:05.\n\n");
    EXPECT_EQ(TextOf(Named<QPushButton>(*notice, "reset").text()), "&Read Story");
    Click(*notice, "reset");
    auto* reset = Open<CResetAlert>();
    EXPECT_EQ(TextOf(Named<QLabel>(*reset, "prompt").text()),
              "Please hit the \"Reset Alert\" button to enable the \"News\" alert for \"%s.\", csSymbol");
    EXPECT_FALSE(Named<CSpinEdit>(*reset, "percent").isVisible());
    ClickStandard(*reset, QDialogButtonBox::Ok);
    ASSERT_TRUE(WaitUntil([&] { return !owner.records.empty(); }));
    EXPECT_EQ(owner.records[0], "IBM,3,1.000000");
}

TEST_F(NoticeQueue, AHundredComeOneByOneOrGoTogether) {
    for (int i = 0; i < 100; ++i) Fire(Field());
    CAlertsNotice* first = Shown();
    EXPECT_EQ(TextOf(Named<QPushButton>(*first, "dismissAll").text()), "Dismiss &All (99 more)");
    Click(*first, "dismiss");
    CAlertsNotice* second = Shown();
    EXPECT_NE(first, second);
    Fire(Field());
    EXPECT_EQ(TextOf(Named<QPushButton>(*second, "dismissAll").text()), "Dismiss &All (99 more)");
    Click(*second, "dismissAll");
    TurnEventLoop(5);
    EXPECT_FALSE(queue.Shown());
    EXPECT_EQ(queue.Waiting(), 0);
    ASSERT_EQ(ended.size(), 101u);
    EXPECT_EQ(ended[1], "2 dismissed");
    EXPECT_EQ(ended[2], "3 together");
    Fire(Field());
    EXPECT_TRUE(Shown());
}

TEST_F(NoticeQueue, NoKeyActsUntilNoneWasPressedForTwoSeconds) {
    Fire(Field());
    CAlertsNotice* notice = Shown();
    auto& dismiss = Named<QPushButton>(*notice, "dismiss");
    EXPECT_FALSE(dismiss.isDefault() || dismiss.hasFocus());
    const auto pressAll = [&] {
        dismiss.setFocus();
        for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) QTest::keyClick(&dismiss, key);
        QTest::keyClick(notice, Qt::Key_D, Qt::AltModifier);
        QTest::keyClick(notice, Qt::Key_Tab);
        return dismiss.hasFocus();
    };
    EXPECT_TRUE(pressAll());
    clock.elapsedMs += 1999;
    EXPECT_TRUE(pressAll()) << "who is still typing is typing something else";
    clock.elapsedMs += 1999;
    EXPECT_TRUE(pressAll());
    ASSERT_TRUE(notice->isVisible());
    clock.elapsedMs += 2000;
    QTest::keyClick(&dismiss, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_FALSE(dismiss.hasFocus());
    QTest::keyClick(notice, Qt::Key_Tab);
    QTest::keyClick(notice->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(queue.Shown());
}

TEST_F(NoticeQueue, ItWaitsForTypingToPauseAndTheSoundDoesNot) {
    QLineEdit editor;
    QPushButton button;
    editor.show();
    editor.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return editor.hasFocus(); }));
    QTest::keyClicks(&editor, QStringLiteral("GOO"));
    Fire(Field(), EAlertSound::BuiltIn);
    ASSERT_TRUE(WaitUntil([&] { return sounds.IsPlaying(); }));
    sounds.End();
    const auto isHeldBack = [&] { return !WaitUntil([&] { return queue.Shown() != nullptr; }, 150); };
    clock.elapsedMs += 4999;
    EXPECT_TRUE(isHeldBack()) << "a text is being edited";
    QTest::keyClicks(&editor, QStringLiteral("GLE"));
    clock.elapsedMs += 2000;
    EXPECT_TRUE(isHeldBack());
    editor.clearFocus();
    ASSERT_TRUE(Shown()) << "nothing is edited any more";
    Click(*queue.Shown(), "dismiss");
    EXPECT_EQ(editor.text(), QStringLiteral("GOOGLE"));

    button.show();
    QTest::keyClick(&button, Qt::Key_Left);
    Fire(Field(), EAlertSound::BuiltIn, true);
    clock.elapsedMs += 1999;
    EXPECT_TRUE(isHeldBack());
    EXPECT_EQ(sounds.played.size(), 1u) << "a sound that is repeated begins with its notice";
    clock.elapsedMs += 1;
    ASSERT_TRUE(Shown());
    EXPECT_TRUE(sounds.IsPlaying());
}

// What a desktop would send to another window of the program while the notice is up.
TEST_F(NoticeQueue, OtherWindowsAreShutWhileItIsUp) {
    QWidget other;
    QLineEdit line(&other);
    QPushButton button(&other);
    button.move(0, 40);
    line.setAcceptDrops(true);
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_N), &other);
    int done = 0;
    QObject::connect(&shortcut, &QShortcut::activated, &other, [&] { ++done; });
    QObject::connect(&button, &QPushButton::clicked, &other, [&] { ++done; });
    other.show();
    other.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return other.isActiveWindow(); }));
    Fire(Field());
    ASSERT_TRUE(Shown());
    const auto tryAll = [&] {
        QTest::keyClicks(&line, QStringLiteral("x"));
        QTest::keyClick(&line, Qt::Key_N, Qt::ControlModifier);
        QTest::mouseClick(&button, Qt::LeftButton);
        QMimeData data;
        data.setText(QStringLiteral("y"));
        QDragEnterEvent enter({90, 1}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&line, &enter);
        QDropEvent drop({90, 1}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&line, &drop);
    };
    tryAll();
    EXPECT_EQ(line.text(), QString());
    EXPECT_EQ(done, 0);
    Click(*queue.Shown(), "dismiss");
    ASSERT_TRUE(WaitUntil([&] { return other.isActiveWindow(); })) << "the keyboard comes back";
    tryAll();
    EXPECT_EQ(line.text(), QStringLiteral("xy"));
    EXPECT_EQ(done, 2);
}

TEST_F(NoticeQueue, TheAlertThatFiredCanBeArmedAndTheResetNamesTheOneItChanges) {
    target = {.resetsFired = false, .resetLine = "the first one", .taken = {}};
    Fire(Field());
    ASSERT_TRUE(Shown());
    Click(*queue.Shown(), "reset");
    const auto* reset = queue.Shown()->findChild<CResetAlert*>();
    const std::string named = TextOf(Named<QLabel>(*reset, "target").text());
    EXPECT_TRUE(named.find("not the one that fired:\nthe first one\n") != std::string::npos) << named;
    ClickStandard(*reset, QDialogButtonBox::Cancel);
    Click(*queue.Shown(), "arm");
    EXPECT_EQ(ended, (std::vector<std::string>{"1 armed"}));
    EXPECT_TRUE(owner.records.empty());

    target.canArm = target.canReset = false;
    Fire(Field());
    ASSERT_TRUE(Shown());
    for (const char* button : {"arm", "reset"}) EXPECT_FALSE(Named<QPushButton>(*queue.Shown(), button).isEnabled());
}

TEST_F(NoticeQueue, ItOpensWhereTheUserPutTheLastOne) {
    Fire(Field());
    ASSERT_TRUE(Shown());
    Click(*queue.Shown(), "dismiss");
    EXPECT_EQ(settings.ReadText(kNoticePlace), "") << "not moved";
    Fire(Field());
    ASSERT_TRUE(Shown());
    ASSERT_TRUE(WaitUntil([&] { // Before long it counts as opened where it is.
        queue.Shown()->move(queue.Shown()->x() == 20 ? 30 : 20, 60);
        return queue.Shown()->MovedTo().has_value();
    }));
    const QPoint place = queue.Shown()->pos();
    EXPECT_EQ(queue.Shown()->MovedTo(), place);
    Click(*queue.Shown(), "dismiss");
    EXPECT_EQ(settings.ReadText(kNoticePlace), NoticePlaceText(place));
    Fire(Field());
    ASSERT_TRUE(Shown());
    EXPECT_EQ(queue.Shown()->pos(), place);
    Click(*queue.Shown(), "dismiss");
    settings.WriteText(kNoticePlace, "99999,-99999");
    Fire(Field());
    ASSERT_TRUE(Shown());
    const QRect inside(queue.Shown()->pos(), queue.Shown()->size());
    EXPECT_TRUE(queue.Shown()->screen()->availableGeometry().contains(inside)) << inside.left() << ' ' << inside.top();
}

TEST(NoticePlace, IsBesideTheBoardOrInACornerAndNeverOverItsMiddle) {
    const QSize notice(460, 260);
    const QRect screen(0, 20, 1600, 980);
    struct SCase {
        QRect board;
        QPoint place;
    };
    for (const SCase& c : {SCase{{0, 20, 1000, 600}, {1008, 20}},    // right
                           SCase{{600, 100, 1000, 600}, {132, 100}}, // left
                           SCase{{200, 20, 1300, 600}, {200, 628}},  // below
                           SCase{{200, 400, 1300, 600}, {200, 132}}, // above
                           SCase{screen, {1140, 740}},               // a corner
                           SCase{{}, {1140, 740}}}) {
        EXPECT_EQ(FirstNoticePlace(notice, c.board, screen), c.place) << c.board.left() << ' ' << c.board.top();
    }
    const QRect small(0, 0, 640, 400);
    for (const QRect& board : {QRect(0, 0, 640, 400), QRect(300, 150, 340, 250), QRect(0, 100, 300, 300)}) {
        const QRect covered(FirstNoticePlace(notice, board, small), notice);
        EXPECT_TRUE(small.contains(covered));
        EXPECT_TRUE(!covered.contains(board.center()) || board == QRect(0, 0, 640, 400));
    }
    EXPECT_EQ(FirstNoticePlace(notice, small, {0, 0, 320, 200}), QPoint(0, 0)) << "a screen that is too small";
    for (const char* text : {"", "1", "1,", "1,2,3", "a,b", "1;2", "99999999999,1"})
        EXPECT_FALSE(ReadNoticePlace(text)) << text;
    EXPECT_EQ(ReadNoticePlace(NoticePlaceText({-7, 12})), QPoint(-7, 12));
}

TEST_F(NoticeQueue, NothingComesOverAnOpenMenu) {
    QMenu menu;
    menu.addAction(QStringLiteral("x"));
    menu.popup({0, 0});
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);
    Fire(Field());
    TurnEventLoop(20);
    EXPECT_FALSE(queue.Shown());
    menu.close();
    ASSERT_TRUE(Shown());
    Click(*queue.Shown(), "dismiss");

    Fire(Field(), EAlertSound::BuiltIn); // Opened while the sound is heard.
    ASSERT_TRUE(WaitUntil([&] { return sounds.IsPlaying(); }));
    menu.popup({0, 0});
    sounds.End();
    TurnEventLoop(20);
    EXPECT_FALSE(queue.Shown());
    menu.close();
    EXPECT_TRUE(Shown());
    EXPECT_EQ(sounds.played.size(), 1u);
}

TEST_F(NoticeQueue, ASoundThatIsNotRepeatedIsHeardBeforeItsNoticeAndMuteEndsIt) {
    Fire(Field(), EAlertSound::BuiltIn);
    Fire(Field(), EAlertSound::WaveFile, true);
    ASSERT_TRUE(WaitUntil([&] { return sounds.IsPlaying(); }));
    TurnEventLoop(20);
    EXPECT_FALSE(queue.Shown());
    sounds.End();
    ASSERT_TRUE(queue.Shown());
    Click(*queue.Shown(), "dismiss");
    ASSERT_TRUE(Shown());
    EXPECT_TRUE(sounds.IsPlaying()) << "the repeated one goes on while its notice is open";
    Click(*queue.Shown(), "dismiss");
    EXPECT_FALSE(sounds.IsPlaying());

    Fire(Field(), EAlertSound::BuiltIn);
    ASSERT_TRUE(WaitUntil([&] { return sounds.IsPlaying(); }));
    queue.SetMuted(true);
    EXPECT_FALSE(sounds.IsPlaying());
    ASSERT_TRUE(queue.Shown()) << "the notice does not wait for silence";
    Click(*queue.Shown(), "dismiss");
    Fire(Field(), EAlertSound::BuiltIn, true);
    ASSERT_TRUE(Shown());
    EXPECT_EQ(sounds.played, (std::vector<SAlertSound>{{1, "", false}, {2, "", true}, {1, "", false}}));
}

TEST_F(NoticeQueue, WhatAFeedSendsIsTextAndIsCut) {
    SAlertRecord hostile = Field();
    hostile.symbol = "<b>%s\x01" + std::string(60'000, 'W');
    hostile.value = 1e308;
    Fire(hostile);
    CAlertsNotice* notice = Shown();
    const std::string shown = "<b>%s?" + std::string(191, 'W') + "...";
    EXPECT_TRUE(Text(*notice).starts_with("The symbol \"" + shown + "\" received a value of \"1000"));
    EXPECT_TRUE(TextOf(notice->windowTitle()).starts_with("Norv Vx alert: " + shown + " Last = 1000"));
    EXPECT_LT(notice->width(), 900);
    EXPECT_LT(notice->height(), 700);
}

// What cannot be played has ended at once, and nothing waits for a pipe's other end.
TEST(EffectSoundPlayer, WhatCannotBePlayedEndsSilently) {
    const CTempFolder folder;
    WriteFile(folder / "empty.wav", "");
    WriteFile(folder / "text.wav", "RIFF no wave at all, but longer than a header of one");
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    CEffectSoundPlayer player;
    for (const std::string& file : {std::string(), folder / "missing.wav", folder / "empty.wav", folder / "text.wav",
                                    folder / "pipe.wav", folder.Path()}) {
        bool ended = false;
        player.Play({2, file, true}, [&] { ended = true; });
        EXPECT_FALSE(ended) << "never from inside";
        EXPECT_TRUE(WaitUntil([&] { return ended; })) << file;
    }
    bool ended = false;
    player.Play({2, folder / "missing.wav", false}, [&] { ended = true; });
    player.Stop();
    TurnEventLoop(5);
    EXPECT_FALSE(ended);
    player.Play({1, "", false}, [&] { ended = true; });
    EXPECT_TRUE(WaitUntil([&] { return ended; })) << "the built-in one, with or without an output";
}
