// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertDialogServices.h"
#include "alerts/ui/AlertSoundPlayer.h"
#include "alerts/ui/ResetAlert.h"
#include "settings/Settings.h"
#include "support/EventLoop.h"
#include "support/Gui.h"
#include "support/MemorySettings.h"
#include "support/MessageBoxes.h"
#include "support/TempFolder.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>

#include <gmock/gmock.h>

#include <utility>

namespace vx::test {

using namespace testing; // Its matchers.

using Texts = std::vector<std::string>;

/// Plays nothing and remembers everything. A sound counts as ended when the test says so, and is heard until it is
/// stopped.
class CRecordedSounds final : public CAlertSoundPlayer {
public:
    void Play(const SAlertSound& sound, std::function<void()> ended) override {
        played.push_back(sound);
        m_ended = std::move(ended);
        m_heard = true;
    }
    void Stop() override {
        m_ended = {};
        m_heard = false;
    }
    bool IsPlaying() const { return m_heard; }
    void End() { std::exchange(m_ended, {})(); }
    std::vector<SAlertSound> played;

private:
    std::function<void()> m_ended;
    bool m_heard = false;
};

/// What the alert windows need around them, and hands that use them.
class CAlertsUiFixture : public testing::Test {
protected:
    CSettingsInMemory store;
    CSettings settings{store};
    CRecordedSounds sounds;
    CMessageBoxes boxes;
    Texts symbols{"IBM", "MSFT"};
    SAlertDialogServices services{.settings = settings,
                                  .player = sounds,
                                  .symbols = [this] { return symbols; },
                                  .valueNow = [](std::string_view, int32_t) { return "190.25"; },
                                  .isMuted = [] { return false; }};

    static A_INFO Alert(const char* field, uint32_t condition, double value, bool noZero = false) {
        return {1, noZero, 0, value, AlertFieldId(field).value(), condition, 0, {}};
    }
    static void Choose(const QWidget& window, const char* list, const char* text) {
        auto& box = Named<QComboBox>(window, list);
        box.setCurrentIndex(box.findText(QString::fromLatin1(text)));
    }
    static int Chosen(const QWidget& window, const char* list) { return Named<QComboBox>(window, list).currentIndex(); }
    static void Type(const QWidget& window, const char* name, const char* text) {
        auto& box = Named<QLineEdit>(window, name);
        box.selectAll();
        QTest::keyClicks(&box, QString::fromLatin1(text));
    }
    static void Step(const QWidget& window, const char* box, int steps) { Named<CSpinEdit>(window, box).stepBy(steps); }
    static bool IsEnabled(const QWidget& window, const char* name) { return Named<QWidget>(window, name).isEnabled(); }
    /// The texts of a model's column.
    static Texts Column(const QAbstractItemModel& model, int column = 0) {
        Texts out;
        for (int row = 0; row < model.rowCount(); ++row)
            out.push_back(model.index(row, column).data().toString().toStdString());
        return out;
    }
    /// The texts of a list's entries.
    static Texts Entries(const QWidget& window, const char* name) {
        return Column(*Named<QComboBox>(window, name).model());
    }
    /// The visible window of a kind, null when there is none.
    template <class T> static T* Open() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<T*>(widget); window && window->isVisible()) return window;
        return nullptr;
    }
};

} // namespace vx::test
