// SPDX-License-Identifier: MIT
// The notice of a fired alert: its words, its sound, its turn, and what becomes of it.

#include "alerts/ui/NoticeQueue.h"

#include "AlertsUiFixture.h"

#include "alerts/ui/AlertsNotice.h"
#include "support/FakeClock.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>

#include <sys/stat.h>

using namespace vx;
using namespace vx::test;

namespace {

class CNoticeQueueTest : public CAlertsUiFixture {
protected:
    /// The frame, as far as notices know it.
    class COwner : public QObject {
    public:
        Texts records;

    protected:
        void customEvent(QEvent* event) override {
            if (event->type() == kResetAlertMessage)
                records.push_back(static_cast<CResetAlertMessage*>(event)->Record());
        }
    };

    CNoticeQueueTest() {
        queue.SetEnded([this](const SFiredAlert& fired, EFiringEnd end) {
            ended.push_back(fired.id + ' ' + std::string(EndWord(end)));
        });
        queue.SetTarget([this](const SFiredAlert&) { return target; });
    }
    static SAlertRecord Field() {
        return {.condition = "greater than or equal to",
                .symbol = "IBM",
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
    void Fire(EAlertSound sound = EAlertSound::None, bool loop = false, SAlertRecord notice = Field()) {
        notice.soundType = static_cast<int32_t>(sound);
        notice.loopSound = loop ? 1 : 0;
        queue.Add({.record = std::move(notice),
                   .alert = {},
                   .firedAt = {2024, 1, 31, 9, 5, 0, 0},
                   .id = std::to_string(++m_fired)});
    }
    CAlertsNotice& Shown() {
        if (!WaitUntil([&] { return queue.Shown() != nullptr; }, 2000)) throw std::runtime_error("no notice");
        return *queue.Shown();
    }
    void Dismiss() { Click(Shown(), "dismiss"); }
    bool IsHeldBack() {
        return !WaitUntil([&] { return queue.Shown() != nullptr; }, 100);
    }
    bool IsHeard() {
        return WaitUntil([&] { return sounds.IsPlaying(); });
    }
    std::string Title() { return Shown().windowTitle().toStdString(); }
    std::string Text() { return Named<QPlainTextEdit>(Shown(), "noticeText").toPlainText().toStdString(); }
    CResetAlert& Reset() {
        Click(Shown(), "reset");
        return *Open<CResetAlert>();
    }

    CFakeClock clock;
    COwner owner;
    SNoticeTarget target;
    CNoticeQueue queue{sounds, owner, nullptr, settings};
    Texts ended;

private:
    int m_fired = 0;
};

} // namespace

TEST_F(CNoticeQueueTest, ANoticeSaysWhatFiredAndResetsTheAlert) {
    Fire();
    EXPECT_EQ(Title(), "Norv Vx alert: IBM Last = 250.250000");
    EXPECT_EQ(Text(), "The symbol \"IBM\" received a value of \"250.250000\" for field \"Last\" "
                      "which is greater than or equal to your alert of \"250.000000.\"\n\n"
                      "Fired on January 31 at 09:05.\n\nBid: 250.000000\nAsk: 250.500000\nLast: 250.250000");
    CResetAlert& reset = Reset();
    Step(reset, "percent", 2);
    ClickStandard(reset);
    ASSERT_TRUE(WaitUntil([&] { return !owner.records.empty(); }));
    EXPECT_THAT(owner.records, ElementsAre("IBM,0,255.000000"));
    EXPECT_THAT(ended, ElementsAre("1 reset"));
    SAlertRecord story;
    story.symbol = "IBM";
    story.fieldName = "News";
    story.index = 3;
    story.isNews = true;
    story.headline = "<b>Big</b> news, " + std::string(500, 'x');
    Fire({}, false, story);
    EXPECT_EQ(TextOf(Shown(), "headline"), "<b>Big</b> news, " + std::string(380, 'x') + "...");
    EXPECT_EQ(Title(), "Norv Vx alert: IBM News");
    EXPECT_EQ(Text(), "The symbol \"IBM\" received a news story.\n\nFired on January 31 at 09:05.\n\n");
    ClickStandard(Reset());
    ASSERT_TRUE(WaitUntil([&] { return owner.records.size() == 2; }));
    EXPECT_EQ(owner.records[1], "IBM,3,1.000000");
}

TEST_F(CNoticeQueueTest, AHundredComeOneByOneOrGoTogether) {
    for (int i = 0; i < 100; ++i) Fire();
    EXPECT_EQ(TextOf(Shown(), "dismissAll"), "Dismiss &All (99 more)");
    Dismiss();
    EXPECT_EQ(TextOf(Shown(), "dismissAll"), "Dismiss &All (98 more)");
    Click(Shown(), "dismissAll");
    TurnEventLoop(5);
    EXPECT_FALSE(queue.Shown());
    ASSERT_EQ(ended.size(), 100u);
    EXPECT_EQ(ended[1] + ", " + ended[2], "2 dismissed, 3 together");
    Fire();
    Shown();
}

TEST_F(CNoticeQueueTest, NoKeyActsUntilNoneWasPressedForTwoSeconds) {
    Fire();
    auto& dismiss = Named<QPushButton>(Shown(), "dismiss");
    EXPECT_FALSE(dismiss.isDefault() || dismiss.hasFocus());
    for (const int wait : {0, 1999, 1999}) { // Who is still typing is typing something else.
        clock.elapsedMs += wait;
        dismiss.setFocus();
        for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) QTest::keyClick(&dismiss, key);
        QTest::keyClick(&Shown(), Qt::Key_D, Qt::AltModifier);
    }
    ASSERT_TRUE(Shown().isVisible());
    clock.elapsedMs += 2000;
    QTest::keyClick(&dismiss, Qt::Key_Return);
    EXPECT_FALSE(queue.Shown());
}

TEST_F(CNoticeQueueTest, ItWaitsForTypingToPauseAndTheSoundDoesNot) {
    QLineEdit editor;
    QPushButton button;
    editor.show();
    editor.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return editor.hasFocus(); }));
    QTest::keyClicks(&editor, QStringLiteral("GOO"));
    Fire(EAlertSound::BuiltIn);
    ASSERT_TRUE(IsHeard());
    sounds.End();
    clock.elapsedMs += 4999;
    EXPECT_TRUE(IsHeldBack()) << "a text is being edited";
    editor.clearFocus();
    Dismiss(); // Nothing is edited any more.

    button.show();
    QTest::keyClick(&button, Qt::Key_Left);
    Fire(EAlertSound::BuiltIn, true);
    clock.elapsedMs += 1999;
    EXPECT_TRUE(IsHeldBack());
    EXPECT_EQ(sounds.played.size(), 1u) << "a sound that is repeated begins with its notice";
    clock.elapsedMs += 1;
    Shown();
    EXPECT_TRUE(sounds.IsPlaying());
}

// What a desktop would send to another window of the program while the notice is up.
TEST_F(CNoticeQueueTest, OtherWindowsAreShutWhileItIsUp) {
    QWidget other;
    QLineEdit line(&other);
    QPushButton button(&other);
    button.move(0, 40);
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_N), &other);
    int done = 0;
    QObject::connect(&shortcut, &QShortcut::activated, &other, [&] { ++done; });
    QObject::connect(&button, &QPushButton::clicked, &other, [&] { ++done; });
    other.show();
    other.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return other.isActiveWindow(); }));
    Fire();
    Shown();
    for (const bool isUp : {true, false}) {
        QTest::keyClicks(&line, QStringLiteral("x"));
        QTest::keyClick(&line, Qt::Key_N, Qt::ControlModifier);
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(line.text(), isUp ? QString() : QStringLiteral("x"));
        EXPECT_EQ(done, isUp ? 0 : 2);
        if (!isUp) break;
        Dismiss();
        ASSERT_TRUE(WaitUntil([&] { return other.isActiveWindow(); })) << "the keyboard comes back";
    }
}

TEST_F(CNoticeQueueTest, ItOpensWhereTheUserPutTheLastOne) {
    settings.WriteText(kNoticePlace, "70,60");
    Fire();
    EXPECT_EQ(Shown().pos(), QPoint(70, 60));
    Dismiss();
    settings.WriteText(kNoticePlace, "99999,-99999");
    Fire();
    EXPECT_TRUE(Shown().screen()->availableGeometry().contains(QRect(Shown().pos(), Shown().size())));
}

TEST_F(CNoticeQueueTest, NothingComesOverAnOpenMenu) {
    QMenu menu;
    menu.addAction(QStringLiteral("x"));
    Fire(EAlertSound::BuiltIn); // Opened while the sound is heard.
    ASSERT_TRUE(IsHeard());
    menu.popup({0, 0});
    sounds.End();
    TurnEventLoop(20);
    EXPECT_FALSE(queue.Shown());
    menu.close();
    Shown();
}

TEST_F(CNoticeQueueTest, ASoundThatIsNotRepeatedIsHeardBeforeItsNoticeAndMuteEndsIt) {
    Fire(EAlertSound::BuiltIn);
    Fire(EAlertSound::WaveFile, true);
    ASSERT_TRUE(IsHeard());
    TurnEventLoop(20);
    EXPECT_FALSE(queue.Shown());
    sounds.End();
    Dismiss();
    Shown();
    EXPECT_TRUE(sounds.IsPlaying()) << "the repeated one continues while its notice is open";
    Dismiss();
    EXPECT_FALSE(sounds.IsPlaying());

    Fire(EAlertSound::BuiltIn);
    ASSERT_TRUE(IsHeard());
    queue.SetMuted(true);
    EXPECT_FALSE(sounds.IsPlaying());
    ASSERT_TRUE(queue.Shown()) << "the notice does not wait for silence";
    Dismiss();
    Fire(EAlertSound::BuiltIn, true);
    Shown();
    EXPECT_EQ(sounds.played, (std::vector<SAlertSound>{{1, "", false}, {2, "", true}, {1, "", false}}));
}

TEST_F(CNoticeQueueTest, WhatAFeedSendsIsTextAndIsCut) {
    SAlertRecord hostile = Field();
    hostile.symbol = "<b>%s\x01" + std::string(60'000, 'W');
    hostile.value = 1e308;
    Fire({}, false, hostile);
    const std::string shown = "<b>%s?" + std::string(191, 'W') + "...";
    EXPECT_THAT(Text(), StartsWith("The symbol \"" + shown + "\" received a value of \"1000"));
    EXPECT_LT(Shown().width(), 900);
    EXPECT_LT(Shown().height(), 700);
}

// What cannot be played has ended at once, and nothing waits for a pipe's other end.
TEST(CEffectSoundPlayer, WhatCannotBePlayedEndsSilently) {
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
    player.Play({1, "", false}, [&] { ended = true; });
    EXPECT_TRUE(WaitUntil([&] { return ended; })) << "the built-in one, with or without an output";
}
