// The notice of a fired alert: its words, its sound, its turn, and what becomes of it.

#include "AlertsUiFixture.h"

#include "alerts/AlertMessages.h"
#include "alerts/AlertsNotice.h"
#include "alerts/EffectSoundPlayer.h"
#include "alerts/NoticeQueue.h"
#include "alerts/ResetAlert.h"
#include "alerts/SpinEdit.h"
#include "support/TempFolder.h"

#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

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
        queue.SetEnded([this](const SFiredNotice& notice, EFiringEnd end, double newThreshold) {
            ended.push_back(notice.id + (end == EFiringEnd::Reset ? "=" + std::to_string(newThreshold) : ""));
        });
    }
    static SAlertNotice Field(const char* symbol = "IBM") {
        return {.condition = "greater than or equal to",
                .symbol = symbol,
                .value = 250.25,
                .last = 250.25,
                .bid = 250,
                .ask = 250.5,
                .threshold = 250,
                .fieldName = "Last",
                .soundFile = {},
                .otherThresholds = {"300.000000"}};
    }
    static SAlertNotice News() {
        SAlertNotice out;
        out.symbol = "IBM";
        out.fieldName = "News";
        out.index = 3;
        out.isNews = true;
        return out;
    }
    void Fire(SAlertNotice notice, EAlertSound sound = EAlertSound::None, bool loop = false) {
        notice.soundType = static_cast<int32_t>(sound);
        notice.loopSound = loop ? 1 : 0;
        queue.Add({std::move(notice), SLocalTime{2024, 1, 31, 9, 5, 0, 0}, std::to_string(++m_fired)});
    }
    CAlertsNotice* Shown() {
        WaitUntil([&] { return queue.Shown() != nullptr; }, 2000);
        return queue.Shown();
    }
    static std::string Text(const QDialog& notice) {
        return TextOf(Named<QPlainTextEdit>(notice, "noticeText").toPlainText());
    }

    COwner owner;
    CNoticeQueue queue{sounds, owner, nullptr};
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
    EXPECT_TRUE(notice->isModal());
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
    EXPECT_EQ(ended, (std::vector<std::string>{"1=255.000000"}));
    EXPECT_FALSE(queue.Shown());
}

TEST_F(NoticeQueue, NewsAreReadAndArmedAgain) {
    Fire(News());
    CAlertsNotice* notice = Shown();
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
    EXPECT_EQ(ended.size(), 101u);
    Fire(Field());
    EXPECT_TRUE(Shown());
}

TEST_F(NoticeQueue, KeysMeantForSomethingElseDoNotCloseIt) {
    Fire(Field());
    CAlertsNotice* notice = Shown();
    QTest::keyClick(&Named<QPushButton>(*notice, "dismiss"), Qt::Key_Space);
    QTest::keyClick(notice, Qt::Key_Escape);
    EXPECT_TRUE(notice->isVisible());
    QElapsedTimer silence; // Who is still typing is typing something else.
    silence.start();
    EXPECT_TRUE(WaitUntil([&] { return silence.hasExpired(CAlertsNotice::kKeyGuardMs + 1); }));
    QTest::keyClick(notice, Qt::Key_Escape);
    EXPECT_FALSE(queue.Shown());
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
    SAlertNotice hostile = Field();
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
