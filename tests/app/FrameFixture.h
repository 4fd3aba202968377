// SPDX-License-Identifier: MIT
#pragma once

#include "app/WindowFixture.h"
#include "app/files/FileController.h"
#include "app/shell/MainFrame.h"

#include <sys/stat.h>

namespace vx::test {

/// A main frame.
class CFrameFixture : public CWindowFixture {
protected:
    /// Another frame takes the place of the one before.
    CMainFrame& Frame(const std::vector<std::string>& arguments = {}) {
        m_frame = std::make_unique<CMainFrame>(settings, CNorvCommandLineInfo(arguments));
        frame = m_frame.get();
        frame->KeepFeedClosed();
        frame->Files().SetPatienceMs(30'000);   // A save is done when its command returns.
        frame->LookupTables().SetTimes({0, 0}); // A scripted port cannot answer while this thread waits for it.
        Use(*frame, frame->Document(), frame->View(), frame->Commands());
        return *frame;
    }
    CMainFrame& ShownFrame(const std::vector<std::string>& arguments = {}, int width = 1300, int height = 600) {
        Frame(arguments);
        ShowWindow(width, height);
        return *frame;
    }
    /// The window goes without being asked anything, as at a crash.
    void DropFrame() { m_frame.reset(); }

    CMainFrame* frame = nullptr;

private:
    std::unique_ptr<CMainFrame> m_frame;
};

/// A main frame that finds programs of the test's own, which note how they were started.
class CSiblingFixture : public CFrameFixture {
protected:
    CSiblingFixture() : m_path(std::getenv("PATH")) { setenv("PATH", (folder.Path() + ":" + m_path).c_str(), 1); }
    ~CSiblingFixture() override { setenv("PATH", m_path.c_str(), 1); }

    void Install(const std::string& name = "zantrel-watchlist") {
        WriteFile(At(name), "#!/bin/sh\nfor a in \"$0\" \"$@\"; do printf '%s|' \"${a##*/}\"; done >> '" +
                                At("started.new") + "'\nmv '" + At("started.new") + "' '" + At("started") + "'\n");
        chmod(At(name).c_str(), S_IRWXU);
    }
    /// "vxchart|-symbol|IBM|", folders left out; empty when a command starts nothing.
    std::string StartedBy(ECommand command) {
        std::filesystem::remove(At("started"));
        boxes.shown.clear();
        Do(command);
        return Started();
    }
    std::string Started() {
        WaitUntil([&] { return std::filesystem::exists(At("started")) || !boxes.shown.empty(); }, 3000);
        return ReadFile(At("started"));
    }

private:
    std::string m_path;
};

} // namespace vx::test
