#pragma once

#include "alerts/ui/AlertDialogServices.h"
#include "alerts/ui/AlertSoundPlayer.h"
#include "base/qt/QtText.h"
#include "settings/ConfigWriter.h"
#include "settings/Settings.h"
#include "support/EventLoop.h"
#include "support/Gui.h"
#include "support/MessageBoxes.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vx::test {

/// Settings that are nowhere but in the test.
class CSettingsInMemory final : public CConfigWriterMux {
public:
    std::string ReadString(std::string_view name, std::string_view defaultText) override {
        const auto found = texts.find(name);
        return found == texts.end() ? std::string(defaultText) : found->second;
    }
    bool WriteString(std::string_view name, std::string_view text) override {
        texts.insert_or_assign(std::string(name), std::string(text));
        return true;
    }
    std::map<std::string, std::string, std::less<>> texts;
};

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
    std::vector<std::string> symbols{"IBM", "MSFT"};
    bool muted = false;
    SAlertDialogServices services{.settings = settings,
                                  .player = sounds,
                                  .symbols = [this] { return symbols; },
                                  .valueNow = [](std::string_view, int32_t) { return "190.25"; },
                                  .isMuted = [this] { return muted; }};

    template <class T> static T& Named(const QWidget& window, const char* name) {
        T* found = window.findChild<T*>(QString::fromLatin1(name));
        if (!found) throw std::runtime_error(name);
        return *found;
    }
    static void Choose(const QWidget& window, const char* list, const char* text) {
        auto& box = Named<QComboBox>(window, list);
        box.setCurrentIndex(box.findText(QString::fromLatin1(text)));
    }
    static void Type(const QWidget& window, const char* name, const char* text) {
        auto& box = Named<QLineEdit>(window, name);
        box.selectAll();
        QTest::keyClicks(&box, QString::fromLatin1(text));
    }
    static void Click(const QWidget& window, const char* name) {
        auto& button = Named<QAbstractButton>(window, name);
        const QPoint mark(8, button.height() / 2); // A check box takes clicks on its mark and text only.
        QTest::mouseClick(&button, Qt::LeftButton, {}, mark);
    }
    static void ClickStandard(const QWidget& window, QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(window.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
    static std::string TextOf(const QString& text) { return text.toStdString(); }
    /// The texts of a list's entries.
    static std::vector<std::string> Entries(const QWidget& window, const char* name) {
        std::vector<std::string> out;
        const auto& list = Named<QComboBox>(window, name);
        for (int i = 0; i < list.count(); ++i) out.push_back(TextOf(list.itemText(i)));
        return out;
    }
    /// The visible window of a kind, null when there is none.
    template <class T> static T* Open() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<T*>(widget); window && window->isVisible()) return window;
        return nullptr;
    }
};

} // namespace vx::test
